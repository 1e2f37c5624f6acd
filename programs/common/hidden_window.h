// The hidden main window by which the suite's programs find each other, and its message loop.
#pragma once

#include "event_log.h"

#include <windows.h>

#include <functional>
#include <string>

namespace programs {

// One message of the suite's protocol: WM_USER or above.
struct Message {
    HWND window;
    UINT number;
    WPARAM wparam;
    LPARAM lparam;
};
// The line of the log for a message.
[[nodiscard]] std::string described(const Message& message);

// Every message of the protocol is logged and then handled. WM_QUIT, posted to the window, and WM_CLOSE
// end the program; WM_QUIT is logged too.
class HiddenWindow {
public:
    using Handler = std::function<void(const Message&)>;

    // `mark` is the window's user-data word; it is set before the title, so that whoever finds the
    // window by its title sees the mark.
    HiddenWindow(const EventLog& log, const char* title, Handler handler = {}, LONG_PTR mark = 0);
    ~HiddenWindow();
    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;

    [[nodiscard]] HWND handle() const { return window_; }
    // Runs until the program is told to end. Returns its exit code; 1 when there is no window.
    [[nodiscard]] int run() const;

private:
    static LRESULT CALLBACK on_message(HWND window, UINT number, WPARAM wparam, LPARAM lparam);
    void handle_message(const Message& message) const;

    const EventLog& log_;
    Handler handler_;
    HWND window_;
};

// Window class of all hidden windows; titles tell them apart. The main window has a class of its own.
inline constexpr char kWindowClass[] = "VeltrinHiddenWindow";
inline constexpr wchar_t kMainWindowClass[] = L"VeltrinMainWindow";

}  // namespace programs
