// Veltrin.exe: the suite's main window. Its title is a setting; its mark tells it from other windows.
#include "hidden_window.h"
#include "protocol.h"

using namespace programs;

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const EventLog log;
    const std::string title = common_setting("General", "VLUI_WINDOW_TEXT", "QVN Veltrin");
    const auto handle = [&log](const Message& message) {
        if (message.number != kShowYourself) return;
        ShowWindow(message.window, SW_SHOWNORMAL);
        log.line("shown");
    };
    const HiddenWindow window(log, title.c_str(), handle, kMainWindowMark);
    return window.run();
}
