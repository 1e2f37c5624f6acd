// Files that the user chooses, in a dialog or by dropping them on the window.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace veltrin {

// Asks for one or more files; none when the user thinks better of it.
[[nodiscard]] std::vector<std::wstring> choose_files(HWND owner, const std::wstring& title);

struct DroppedFiles {
    std::vector<std::wstring> files;
    POINT point;  // in the window's client area
};
// Takes what was dropped and frees it.
[[nodiscard]] DroppedFiles take_drop(HDROP drop);

}  // namespace veltrin
