// Windows' own DLLs, loaded by full path: a file of the same name beside the program or on the search
// path is never taken.
#pragma once

#include <windows.h>

namespace vl {

// Loads `name` ("user32.dll") from the system folder, GDI+ also from Windows' side-by-side assemblies; null
// when it is missing. The caller frees it.
HMODULE load_system_library(const char* name);

}  // namespace vl
