// The windows of this process, message-only ones included.
#pragma once

#include <windows.h>

#include <set>
#include <string>
#include <vector>

namespace support {

class WindowCensus {
public:
    WindowCensus() : windows_(take()) {}

    // Made since this census was taken and not destroyed.
    [[nodiscard]] std::vector<HWND> opened() const;
    // One line for each: class and title.
    [[nodiscard]] std::vector<std::string> describe() const;

private:
    static std::set<HWND> take();
    std::set<HWND> windows_;
};

}  // namespace support
