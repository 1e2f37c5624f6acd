#include "hidden_window.h"

#include "text.h"

#include <utility>

namespace programs {
namespace {

// The owner's pointer lives in the window's extra bytes: the user-data word belongs to the protocol.
constexpr int kOwnerOffset = 0;

HWND make_window(WNDPROC procedure) {
    WNDCLASSEXA cls = {};
    cls.cbSize = sizeof cls;
    cls.lpfnWndProc = procedure;
    cls.cbWndExtra = sizeof(void*);
    cls.hInstance = GetModuleHandleA(nullptr);
    cls.lpszClassName = kWindowClass;
    RegisterClassExA(&cls);
    return CreateWindowExA(0, kWindowClass, "", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 480, 320,
                           nullptr, nullptr, cls.hInstance, nullptr);
}

}  // namespace

std::string described(const Message& message) {
    return "message " + hex(message.number, 4) + " wParam " + hex(message.wparam, 1) + " lParam " +
           hex(static_cast<UINT_PTR>(message.lparam), 1);
}

HiddenWindow::HiddenWindow(const EventLog& log, const char* title, Handler handler, LONG_PTR mark)
    : log_(log), handler_(std::move(handler)), window_(make_window(on_message)) {
    SetWindowLongPtrA(window_, kOwnerOffset, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrA(window_, GWLP_USERDATA, mark);
    SetWindowTextA(window_, title);
    log_.line(window_ ? "window \"" + utf8(wide_from_ansi(title)) + "\"" : "no window");
}

HiddenWindow::~HiddenWindow() {
    if (IsWindow(window_)) DestroyWindow(window_);
}

int HiddenWindow::run() const {
    if (!window_) return 1;
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    log_.line(described({window_, WM_QUIT, message.wParam, 0}));
    return static_cast<int>(message.wParam);
}

void HiddenWindow::handle_message(const Message& message) const {
    log_.line(described(message));
    if (handler_) handler_(message);
}

LRESULT CALLBACK HiddenWindow::on_message(HWND window, UINT number, WPARAM wparam, LPARAM lparam) {
    const auto* self = reinterpret_cast<HiddenWindow*>(GetWindowLongPtrA(window, kOwnerOffset));
    if (number == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    if (number >= WM_USER && self) {
        self->handle_message({window, number, wparam, lparam});
        return 0;
    }
    if (number == WM_CLOSE && self) self->log_.line(described({window, number, wparam, lparam}));
    return DefWindowProcA(window, number, wparam, lparam);
}

}  // namespace programs
