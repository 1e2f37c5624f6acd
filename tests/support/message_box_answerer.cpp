#include "support/message_box_answerer.h"

#include <wchar.h>

namespace support {
namespace {

std::wstring text_of(HWND window) {
    wchar_t buffer[1024];
    const int length = GetWindowTextW(window, buffer, 1024);
    return {buffer, static_cast<size_t>(length)};
}

// The box is ready when it is visible: its texts are set by then.
bool is_ready_box(HWND window) {
    DWORD process = 0;
    wchar_t class_name[16] = L"";
    GetWindowThreadProcessId(window, &process);
    GetClassNameW(window, class_name, 16);
    return process == GetCurrentProcessId() && wcscmp(class_name, L"#32770") == 0 && IsWindowVisible(window);
}

}  // namespace

MessageBoxAnswerer::MessageBoxAnswerer(int button)
    : button_(button),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      thread_(CreateThread(nullptr, 0, run, this, 0, nullptr)) {}

MessageBoxAnswerer::~MessageBoxAnswerer() {
    join();
    CloseHandle(thread_);
    CloseHandle(stop_);
}

void MessageBoxAnswerer::join() {
    SetEvent(stop_);
    WaitForSingleObject(thread_, INFINITE);
}

BOOL CALLBACK MessageBoxAnswerer::try_window(HWND window, LPARAM self_value) {
    const auto self = reinterpret_cast<MessageBoxAnswerer*>(self_value);
    if (!is_ready_box(window)) return TRUE;
    constexpr int kTextControl = 0xFFFF;
    self->title_ = text_of(window);
    self->text_ = text_of(GetDlgItem(window, kTextControl));
    self->answered_ = PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(self->button_), 0);
    return FALSE;
}

DWORD WINAPI MessageBoxAnswerer::run(void* self_value) {
    const auto self = static_cast<MessageBoxAnswerer*>(self_value);
    do {
        EnumWindows(try_window, reinterpret_cast<LPARAM>(self));
    } while (!self->answered_ && WaitForSingleObject(self->stop_, 2) == WAIT_TIMEOUT);
    return 0;
}

}  // namespace support
