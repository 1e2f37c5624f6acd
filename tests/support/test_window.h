// A real window on a thread of its own that keeps every message it gets: the tray agent's or a
// companion's window, as far as the library can tell.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace support {

struct WindowMessage {
    HWND window;
    UINT message;
    WPARAM wparam;
    LPARAM lparam;
    bool operator==(const WindowMessage&) const = default;
};

class TestWindow {
public:
    static constexpr DWORD kDeadlineMs = 10000;

    struct Options {
        std::string title{};
        std::string class_name = "VlcmTestWindow";
        LONG_PTR user_data = 0;  // GWLP_USERDATA
        DWORD style = WS_OVERLAPPED;
        std::map<UINT, LRESULT> answers{};  // to sent messages; others go to DefWindowProc
    };

    explicit TestWindow(const Options& options);
    ~TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    [[nodiscard]] HWND handle() const { return window_; }
    // All messages since it was made, or since forget().
    [[nodiscard]] std::vector<WindowMessage> messages() const;
    [[nodiscard]] std::vector<WindowMessage> messages(UINT message) const;
    void forget();
    // Waits until so many messages of a number have come.
    [[nodiscard]] bool wait_for(UINT message, size_t count = 1, DWORD deadline_ms = kDeadlineMs) const;
    // Waits until it has handled all that was posted before this call.
    void drain() const;

private:
    static DWORD WINAPI run(void* self);
    static LRESULT CALLBACK on_message(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void keep(const WindowMessage& message);
    void register_class() const;

    Options options_;
    HWND window_ = nullptr;
    mutable SRWLOCK lock_ = SRWLOCK_INIT;
    mutable CONDITION_VARIABLE more_ = CONDITION_VARIABLE_INIT;
    std::vector<WindowMessage> messages_;
    HANDLE ready_, thread_;
};

}  // namespace support
