// Windows that asked to be told of the agent's events.
#pragma once

#include "TrayRelay.h"
#include "event_log.h"
#include "text.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

namespace programs {

class Registrations {
public:
    explicit Registrations(const EventLog& log) : log_(log) {}

    void add(HWND window) {
        remove_entry(window);
        windows_.push_back(window);
        report("registered", window);
    }
    void remove(HWND window) {
        remove_entry(window);
        report("unregistered", window);
    }
    // Every registered window gets what was relayed, as the stack's own window message.
    void tell(WPARAM message, LPARAM parameter) {
        std::erase_if(windows_, [](HWND window) { return !IsWindow(window); });
        for (HWND window : windows_) PostMessageA(window, VLSIM_RELAY_MESSAGE, message, parameter);
    }

private:
    void remove_entry(HWND window) { std::erase(windows_, window); }
    void report(const char* what, HWND window) const {
        log_.line(std::string(what) + " window " + hex(reinterpret_cast<UINT_PTR>(window), 1) + ", " +
                  std::to_string(windows_.size()) + " registered");
    }

    const EventLog& log_;
    std::vector<HWND> windows_;
};

}  // namespace programs
