// Messages to the hidden windows of the suite's programs, which are known by their titles.
#pragma once

#include <windows.h>

namespace vl::process {

// Posts a message without parameters; false when there is no such window. A null class is any class.
inline bool post_to_window(const char* window_class, const char* title, UINT message) {
    const HWND window = FindWindowA(window_class, title);
    if (window != nullptr) PostMessageA(window, message, 0, 0);
    return window != nullptr;
}

}  // namespace vl::process
