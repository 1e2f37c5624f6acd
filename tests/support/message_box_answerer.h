// While it lives, a thread answers the first message box of this process with the given button and
// keeps its title and text.
#pragma once

#include <windows.h>

#include <string>

namespace support {

class MessageBoxAnswerer {
public:
    explicit MessageBoxAnswerer(int button);
    ~MessageBoxAnswerer();
    MessageBoxAnswerer(const MessageBoxAnswerer&) = delete;
    MessageBoxAnswerer& operator=(const MessageBoxAnswerer&) = delete;

    // Each of these ends the watch first: ask after the call that shows the box.
    [[nodiscard]] bool answered() { return join(), answered_; }
    [[nodiscard]] const std::wstring& title() { return join(), title_; }
    [[nodiscard]] const std::wstring& text() { return join(), text_; }

private:
    void join();
    static BOOL CALLBACK try_window(HWND window, LPARAM self_value);
    static DWORD WINAPI run(void* self_value);

    int button_;
    bool answered_ = false;
    std::wstring title_, text_;
    HANDLE stop_, thread_;
};

}  // namespace support
