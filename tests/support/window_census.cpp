#include "support/window_census.h"

#include <string.h>

namespace support {
namespace {

std::string class_of(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

// The system's own: it makes one for each thread that has windows, when it likes.
bool of_the_system(HWND window) {
    const std::string name = class_of(window);
    return name == "IME" || name == "MSCTFIME UI" || name == "OleMainThreadWndClass";
}

bool own(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId() && !of_the_system(window);
}

BOOL CALLBACK collect(HWND window, LPARAM windows) {
    if (own(window)) reinterpret_cast<std::set<HWND>*>(windows)->insert(window);
    return TRUE;
}

}  // namespace

std::set<HWND> WindowCensus::take() {
    std::set<HWND> windows;
    EnumWindows(collect, reinterpret_cast<LPARAM>(&windows));
    HWND window = nullptr;
    while ((window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr) {
        if (own(window)) windows.insert(window);
    }
    return windows;
}

std::vector<HWND> WindowCensus::opened() const {
    std::vector<HWND> opened;
    for (HWND window : take()) {
        if (windows_.count(window) == 0) opened.push_back(window);
    }
    return opened;
}

std::vector<std::string> WindowCensus::describe() const {
    std::vector<std::string> lines;
    for (HWND window : opened()) {
        char title[256] = "";
        GetWindowTextA(window, title, sizeof title);
        lines.push_back("class \"" + class_of(window) + "\", title \"" + title + "\"");
    }
    return lines;
}

}  // namespace support
