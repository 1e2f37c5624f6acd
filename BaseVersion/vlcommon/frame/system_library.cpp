#include "system_library.h"

#include "bounded_text.h"

namespace vl {

HMODULE load_system_library(const char* name) {
    PathBuffer path;
    const UINT length = GetSystemDirectoryA(path.data(), PathBuffer::size());
    if (length == 0 || length + 1 + strlen(name) >= kPathSize) return nullptr;  // half a path is none
    path.append("\\").append(name);
    return LoadLibraryExA(path.text(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace vl
