// The main window program: brought to the front, or started.
#include "frame/frame.h"
#include "frame/settings.h"
#include "vlcm/companions.h"

#include <shellapi.h>

namespace vl::process {
namespace {

constexpr LONG kIdentityMark = 0x396;  // in the user-data word: tells the window from one of its title
constexpr UINT kShowYourself = 0x586;

HWND main_window() {
    PathBuffer title;
    const PathBuffer file = settings::common_file();
    settings::read_text("General", "VLUI_WINDOW_TEXT", "QVN Veltrin", title.data(), PathBuffer::size(),
                        file.text());
    const HWND window = FindWindowA(nullptr, title.text());
    if (window == nullptr || Vlcm_GetWindowLong(window, GWLP_USERDATA) != kIdentityMark) return nullptr;
    return window;
}

// The pair lifts the window over all others without leaving it topmost.
void lift(HWND window) {
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
}

void open_main_window() {
    const HWND window = main_window();
    if (window != nullptr) {
        PostMessageA(window, kShowYourself, 0, 0);
        lift(window);
    } else {
        ShellExecuteA(nullptr, "open", "Veltrin.exe", nullptr, settings::install_path("").text(), SW_SHOW);
    }
}

}  // namespace
}  // namespace vl::process

extern "C" void VlCm_OpenVluiExe() {
    vl::TraceScope scope("Vlcm_OpenVluiExe");  // the older spelling, which trace readers look for
    vl::process::open_main_window();
}
