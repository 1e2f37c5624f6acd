// Memory handed between programs and shell code.
#include "vlcm/companions.h"

#include <objbase.h>

extern "C" void* Vlcm_SHAlloc(uint32_t size) { return CoTaskMemAlloc(size); }

extern "C" void Vlcm_SHFree(void* block) { CoTaskMemFree(block); }
