#include "menu.h"

#include "text/wide_text.h"

#include <shlobj.h>

namespace vl::sendto {
namespace {

PathBuffer shell_folder(int id, DWORD which) {
    PathBuffer path;
    if (FAILED(SHGetFolderPathA(nullptr, id, nullptr, which, path.data()))) return {};
    return path;
}

bool has_character_of_no_file(const wchar_t* name) {
    for (; *name != 0; ++name) {
        if (*name < L' ' || wcschr(L"\\/:?*\"<>|", *name) != nullptr) return true;
    }
    return false;
}

// Whether Windows takes the path's last part as it stands: not "COM1.lnk", which is a port.
bool ends_in(const WidePath& path, const wchar_t* name) {
    wchar_t whole[kPathSize];
    wchar_t* last = nullptr;
    const DWORD length = GetFullPathNameW(path.text(), static_cast<DWORD>(kPathSize), whole, &last);
    return length > 0 && length < kPathSize && last != nullptr && wcscmp(last, name) == 0;
}

}  // namespace

WidePath wide(const char* local) {
    wchar_t text[kPathSize] = {};
    text::local_to_wide(text, kPathSize, local);
    return WidePath(text);
}

PathBuffer menu_folder() { return shell_folder(CSIDL_SENDTO, SHGFP_TYPE_DEFAULT); }

PathBuffer system_file(const char* rest) {
    PathBuffer path = shell_folder(CSIDL_SYSTEM, SHGFP_TYPE_CURRENT);
    if (path.text()[0] != 0) path.append(rest);
    return path;
}

PathBuffer send_program() { return settings::install_path("\\VlSend2bt.exe"); }

WidePath file_in(const WidePath& folder, const wchar_t* name) {
    if (!folder || has_character_of_no_file(name)) return {};
    WidePath path = folder;
    path.append(L"\\").append(name);
    return path && ends_in(path, name) ? path : WidePath();
}

WidePath send_folder(const WidePath& menu, const FolderName& name) {
    return name.text[0] != 0 ? file_in(menu, wide(name.text).text()) : WidePath();
}

WidePath namespace_link(const WidePath& menu, const FolderName& name) {
    return name.text[0] != 0 ? file_in(menu, wide(name.text).append(L".lnk").text()) : WidePath();
}

}  // namespace vl::sendto
