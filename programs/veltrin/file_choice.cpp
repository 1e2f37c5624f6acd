#include "file_choice.h"

#include "resources.h"
#include "texts.h"

#include <commdlg.h>

namespace veltrin {
namespace {

// One file is a path; more are a folder and then names, each with its terminator.
std::vector<std::wstring> split_choice(const wchar_t* chosen) {
    std::vector<std::wstring> parts;
    for (const wchar_t* part = chosen; *part != L'\0'; part += parts.back().size() + 1)
        parts.emplace_back(part);
    if (parts.size() < 2) return parts;
    const std::wstring folder = parts.front().back() == L'\\' ? parts.front() : parts.front() + L"\\";
    parts.erase(parts.begin());
    for (std::wstring& name : parts) name.insert(0, folder);
    return parts;
}

std::wstring dropped_file(HDROP drop, UINT index) {
    std::wstring path(DragQueryFileW(drop, index, nullptr, 0) + size_t{1}, L'\0');
    path.resize(DragQueryFileW(drop, index, path.data(), static_cast<UINT>(path.size())));
    return path;
}

}  // namespace

std::vector<std::wstring> choose_files(HWND owner, const std::wstring& title) {
    constexpr DWORD kRoom = 32768;
    std::wstring chosen(kRoom, L'\0');
    const std::wstring filter = text(IDS_ALL_FILES) + L'\0' + L"*" + L'\0';
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = chosen.data();
    dialog.nMaxFile = kRoom;
    dialog.lpstrTitle = title.c_str();
    dialog.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_ALLOWMULTISELECT |
                   OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (!GetOpenFileNameW(&dialog)) return {};
    return split_choice(chosen.c_str());
}

DroppedFiles take_drop(HDROP drop) {
    DroppedFiles dropped = {};
    DragQueryPoint(drop, &dropped.point);
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) dropped.files.push_back(dropped_file(drop, i));
    DragFinish(drop);
    return dropped;
}

}  // namespace veltrin
