#include "main_window.h"

#include "TrayRelay.h"
#include "VlCommon.h"
#include "protocol.h"
#include "resources.h"
#include "text.h"

#include <windowsx.h>

namespace veltrin {
namespace {

// The owner's pointer lives in the window's extra bytes: the user-data word belongs to the protocol.
constexpr int kOwnerOffset = 0;
// Something that the user started has ended. Between the window and itself, so it is not logged.
constexpr UINT kActionDone = WM_APP + 1;

constexpr int kWidth = 780, kHeight = 720;            // at 96 dots per inch
constexpr int kLeastWidth = 520, kLeastHeight = 380;  // likewise

HINSTANCE program() { return GetModuleHandleW(nullptr); }

HWND make_window(WNDPROC procedure) {
    WNDCLASSEXW cls = {};
    cls.cbSize = sizeof cls;
    cls.lpfnWndProc = procedure;
    cls.cbWndExtra = sizeof(void*);
    cls.hInstance = program();
    cls.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
    cls.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    cls.lpszMenuName = MAKEINTRESOURCEW(IDR_MAIN);
    cls.lpszClassName = programs::kMainWindowClass;
    RegisterClassExW(&cls);
    return CreateWindowExW(0, programs::kMainWindowClass, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                           CW_USEDEFAULT, CW_USEDEFAULT, kWidth, kHeight, nullptr, nullptr, program(),
                           nullptr);
}

// Messages that other programs may send although this one runs with more rights than they do.
void let_messages_in() {
    constexpr UINT kCopyGlobalData = 0x0049;  // carries what is dropped
    for (const UINT message :
         {UINT{WM_DROPFILES}, kCopyGlobalData, UINT{programs::kShowYourself}, UINT{VLSIM_RELAY_MESSAGE}}) {
        VlCm_ChangeMsgFiter(message, TRUE);
    }
}

}  // namespace

MainWindow::MainWindow(const programs::EventLog& log, const std::wstring& title)
    : log_(log), window_(make_window(on_message)) {
    if (window_) make_parts();
    SetWindowLongPtrW(window_, kOwnerOffset, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_USERDATA, programs::kMainWindowMark);
    SetWindowTextW(window_, title.c_str());
    log_.line(window_ ? "window \"" + programs::utf8(title) + "\"" : "no window");
}

MainWindow::~MainWindow() {
    actions_.reset();  // waits for what is still under way
    if (IsWindow(window_)) DestroyWindow(window_);
}

void MainWindow::make_parts() {
    const UINT dpi = dpi_of(window_);
    SetWindowPos(window_, nullptr, 0, 0, scaled(kWidth, dpi), scaled(kHeight, dpi),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    panes_.emplace(window_);
    panes_->lay_out();
    actions_.emplace(window_, kActionDone, *panes_, log_);
    DragAcceptFiles(window_, TRUE);
    let_messages_in();
    refresh();
}

int MainWindow::run(int show_command) {
    if (!window_) return 1;
    ShowWindow(window_, show_command);
    const HACCEL keys = LoadAcceleratorsW(program(), MAKEINTRESOURCEW(IDR_MAIN));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (TranslateAcceleratorW(window_, keys, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    log_.line(programs::described({window_, WM_QUIT, message.wParam, 0}));
    return static_cast<int>(message.wParam);
}

LRESULT CALLBACK MainWindow::on_message(HWND window, UINT number, WPARAM wparam, LPARAM lparam) {
    auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, kOwnerOffset));
    if (number == WM_DESTROY) {
        VlCm_UnregisterWindowToVltray(window);
        PostQuitMessage(0);
        return 0;
    }
    if (self && self->handle(number, wparam, lparam)) return 0;
    return DefWindowProcW(window, number, wparam, lparam);
}

bool MainWindow::handle(UINT number, WPARAM wparam, LPARAM lparam) {
    switch (number) {
        case WM_CLOSE:
            log_.line(programs::described({window_, number, wparam, lparam}));
            return false;
        case WM_SIZE:
            panes_->lay_out();
            return true;
        case WM_GETMINMAXINFO: {
            const UINT dpi = dpi_of(window_);
            reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {scaled(kLeastWidth, dpi),
                                                                     scaled(kLeastHeight, dpi)};
            return true;
        }
        case WM_DPICHANGED:
            take_resolution(LOWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
            return true;
        case WM_SETFOCUS:
            panes_->focus();
            return true;
        case WM_COMMAND:
            handle_command(LOWORD(wparam));
            return true;
        case WM_NOTIFY:
            handle_notice(*reinterpret_cast<const NMHDR*>(lparam));
            return true;
        case WM_INITMENUPOPUP:
            enable_commands(reinterpret_cast<HMENU>(wparam));
            return true;
        case WM_CONTEXTMENU:
            show_menu({GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
            return true;
        case WM_DROPFILES:
            actions_->send_dropped(reinterpret_cast<HDROP>(wparam));
            return true;
        case kActionDone:
            refresh();
            actions_->finish();
            return true;
        default:
            if (number < WM_USER) return false;
            handle_protocol({window_, number, wparam, lparam});
            return true;
    }
}

// The agent tells registered windows what is relayed to it: anything may have changed then.
void MainWindow::handle_protocol(const programs::Message& message) {
    log_.line(programs::described(message));
    if (message.number == programs::kShowYourself) bring_forward();
    if (message.number == VLSIM_RELAY_MESSAGE) refresh();
}

void MainWindow::handle_notice(const NMHDR& notice) {
    DeviceList& devices = panes_->devices();
    const bool of_devices = notice.hwndFrom == devices.view().window();
    switch (notice.code) {
        case NM_SETFOCUS:
            panes_->note_focus(notice.hwndFrom);
            break;
        case LVN_ITEMACTIVATE:
            handle_command(IDC_CONNECT);
            break;
        case LVN_ITEMCHANGED: {
            const auto& change = reinterpret_cast<const NMLISTVIEW&>(notice);
            const bool chosen = (change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0;
            if (of_devices && chosen && !devices.view().is_filling()) panes_->refresh_services();
            break;
        }
        default:
            break;
    }
}

void MainWindow::handle_command(int command) {
    switch (command) {
        case IDC_CONNECT:
            actions_->connect();
            break;
        case IDC_SEND:
        case IDC_SEND_TRANSFER:
        case IDC_SEND_PRINT:
            actions_->choose_and_send(command);
            break;
        case IDC_REFRESH:
            refresh();
            break;
        case IDC_NEXT_LIST:
            panes_->focus_next();
            break;
        case IDC_EXIT:
            PostMessageW(window_, WM_CLOSE, 0, 0);
            break;
        default:
            break;
    }
}

// The agent may have come since the last time; it counts a window once.
void MainWindow::refresh() {
    VlCm_RegisterWindowToVltray(window_);
    panes_->refresh();
}

void MainWindow::bring_forward() const {
    ShowWindow(window_, IsIconic(window_) ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow(window_);
    log_.line("shown");
}

void MainWindow::take_resolution(UINT dpi, const RECT& area) {
    panes_->set_resolution(dpi);
    SetWindowPos(window_, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    panes_->lay_out();
    panes_->refresh();
}

void MainWindow::enable_commands(HMENU menu) const {
    for (const int command : {IDC_CONNECT, IDC_SEND, IDC_SEND_TRANSFER, IDC_SEND_PRINT}) {
        const bool can = actions_->can(command);
        EnableMenuItem(menu, static_cast<UINT>(command), can ? UINT{MF_ENABLED} : UINT{MF_GRAYED});
    }
}

// The menu of devices, at the pointer; by the keyboard (-1, -1), at the window's corner.
void MainWindow::show_menu(POINT point) const {
    if (point.x == -1 && point.y == -1) {
        point = {};
        ClientToScreen(window_, &point);
    }
    TrackPopupMenu(GetSubMenu(GetMenu(window_), 0), TPM_RIGHTBUTTON, point.x, point.y, 0, window_, nullptr);
}

}  // namespace veltrin
