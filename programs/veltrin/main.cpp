// Veltrin.exe: the suite's main window. Its title is a setting; its mark tells it from other windows.
#include "main_window.h"
#include "protocol.h"
#include "text.h"

#include <commctrl.h>
#include <objbase.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int show_command) {
    constexpr INITCOMMONCONTROLSEX kControls = {sizeof kControls, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&kControls);
    const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // the file dialog is the shell's
    int result = 0;
    {
        const programs::EventLog log;
        const std::string title = programs::common_setting("General", "VLUI_WINDOW_TEXT", "QVN Veltrin");
        veltrin::MainWindow window(log, programs::wide_from_ansi(title));
        result = window.run(show_command);
    }
    if (SUCCEEDED(com)) CoUninitialize();
    return result;
}
