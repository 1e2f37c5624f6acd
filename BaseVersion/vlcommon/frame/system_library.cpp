#include "system_library.h"

#include "bounded_text.h"

namespace vl {
namespace {

// Windows XP to 7 keep GDI+ among the side-by-side assemblies and not in the system folder. Asked for by its
// bare name, the loader takes it from there, before it looks into any folder.
bool is_side_by_side(const char* name) { return _stricmp(name, "gdiplus.dll") == 0; }

}  // namespace

HMODULE load_system_library(const char* name) {
    PathBuffer path;
    const UINT length = GetSystemDirectoryA(path.data(), PathBuffer::size());
    if (length == 0 || length + 1 + strlen(name) >= kPathSize) return nullptr;  // half a path is none
    path.append("\\").append(name);
    HMODULE library = LoadLibraryExA(path.text(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library == nullptr && is_side_by_side(name)) library = LoadLibraryExA(name, nullptr, 0);
    return library;
}

}  // namespace vl
