#include "support/test_window.h"

#include <algorithm>

namespace support {
namespace {

// The window's user data belongs to the test: its object is found by a property.
constexpr char kProperty[] = "vlcm test window";
constexpr UINT kClose = WM_APP + 0x3FFE, kDrained = WM_APP + 0x3FFF;

}  // namespace

TestWindow::TestWindow(const Options& options)
    : options_(options),
      ready_(CreateEventA(nullptr, TRUE, FALSE, nullptr)),
      thread_(CreateThread(nullptr, 0, run, this, 0, nullptr)) {
    WaitForSingleObject(ready_, INFINITE);
}

TestWindow::~TestWindow() {
    PostMessageA(window_, kClose, 0, 0);
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
    CloseHandle(ready_);
}

void TestWindow::register_class() const {
    WNDCLASSA window_class{};
    window_class.lpfnWndProc = on_message;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.lpszClassName = options_.class_name.c_str();
    RegisterClassA(&window_class);
}

DWORD WINAPI TestWindow::run(void* self_value) {
    const auto self = static_cast<TestWindow*>(self_value);
    self->register_class();
    HWND window = CreateWindowExA(0, self->options_.class_name.c_str(), self->options_.title.c_str(),
                                  self->options_.style, 0, 0, 100, 100, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    SetWindowLongPtrA(window, GWLP_USERDATA, self->options_.user_data);
    SetPropA(window, kProperty, self);
    self->window_ = window;
    SetEvent(self->ready_);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0 && message.message != kClose) DispatchMessageA(&message);
    RemovePropA(window, kProperty);
    DestroyWindow(window);
    UnregisterClassA(self->options_.class_name.c_str(), GetModuleHandleA(nullptr));
    return 0;
}

LRESULT CALLBACK TestWindow::on_message(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const auto self = static_cast<TestWindow*>(GetPropA(window, kProperty));
    if (message == kDrained) return SetEvent(reinterpret_cast<HANDLE>(wparam));
    if (self != nullptr) {
        self->keep({window, message, wparam, lparam});
        const auto answer = self->options_.answers.find(message);
        if (answer != self->options_.answers.end()) return answer->second;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

void TestWindow::keep(const WindowMessage& message) {
    AcquireSRWLockExclusive(&lock_);
    messages_.push_back(message);
    ReleaseSRWLockExclusive(&lock_);
    WakeAllConditionVariable(&more_);
}

std::vector<WindowMessage> TestWindow::messages() const {
    AcquireSRWLockShared(&lock_);
    std::vector<WindowMessage> copy = messages_;
    ReleaseSRWLockShared(&lock_);
    return copy;
}

std::vector<WindowMessage> TestWindow::messages(UINT message) const {
    std::vector<WindowMessage> chosen = messages();
    std::erase_if(chosen, [message](const WindowMessage& m) { return m.message != message; });
    return chosen;
}

void TestWindow::forget() {
    AcquireSRWLockExclusive(&lock_);
    messages_.clear();
    ReleaseSRWLockExclusive(&lock_);
}

bool TestWindow::wait_for(UINT message, size_t count, DWORD deadline_ms) const {
    const ULONGLONG end = GetTickCount64() + deadline_ms;
    const auto come = [&] {
        return count <= static_cast<size_t>(std::count_if(
                            messages_.begin(), messages_.end(),
                            [message](const WindowMessage& m) { return m.message == message; }));
    };
    AcquireSRWLockExclusive(&lock_);
    while (!come()) {
        const ULONGLONG now = GetTickCount64();
        if (now >= end) break;
        SleepConditionVariableSRW(&more_, &lock_, static_cast<DWORD>(end - now), 0);
    }
    const bool result = come();
    ReleaseSRWLockExclusive(&lock_);
    return result;
}

// Posted messages come before this one only if it is posted as well: sent ones overtake them.
void TestWindow::drain() const {
    HANDLE drained = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    PostMessageA(window_, kDrained, reinterpret_cast<WPARAM>(drained), 0);
    WaitForSingleObject(drained, kDeadlineMs);
    CloseHandle(drained);
}

}  // namespace support
