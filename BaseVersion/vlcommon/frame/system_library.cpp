#include "system_library.h"

#include <string.h>

namespace vl {

HMODULE load_system_library(const char* name) {
    char path[MAX_PATH];
    const UINT length = GetSystemDirectoryA(path, MAX_PATH);
    if (length == 0 || length + 1 + strlen(name) >= MAX_PATH) return nullptr;
    path[length] = '\\';
    memcpy(path + length + 1, name, strlen(name) + 1);
    return LoadLibraryExA(path, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace vl
