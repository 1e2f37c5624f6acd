// Plays the suite's programs in the tests: copied into an installation folder under their names. Every
// start adds "name|arguments" as a line to "started.txt" beside the program and sets the event
// "ProcessTest.Started"; the tray agent and the dialer then have their windows.
#include <windows.h>

#include <stdio.h>
#include <string.h>

#include <string>

namespace {

void add_line(const std::string& file, const std::string& line) {
    HANDLE out = CreateFileA(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                             OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    const std::string text = line + "\n";
    DWORD written = 0;
    WriteFile(out, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(out);
}

void tell_started() {
    HANDLE event = OpenEventA(EVENT_MODIFY_STATE, FALSE, "ProcessTest.Started");
    if (event == nullptr) return;
    SetEvent(event);
    CloseHandle(event);
}

// Writes down the first posted message of the suite and ends with it, or after 30 seconds.
void wait_for_message(const char* title, const std::string& log) {
    HWND window = CreateWindowExA(0, "STATIC", title, 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    tell_started();
    SetTimer(window, 1, 30000, nullptr);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0 && message.message != WM_TIMER) {
        if (message.hwnd != window || message.message >= 0xC000) continue;
        char line[64];
        snprintf(line, sizeof line, "message 0x%x 0x%llx", message.message,
                 static_cast<unsigned long long>(message.wParam));
        if (message.message == 0x584 || message.message == WM_CLOSE || message.message >= 0x4000) {
            add_line(log, line);
            break;
        }
    }
    DestroyWindow(window);
}

}  // namespace

int main() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string whole = path;
    const std::string folder = whole.substr(0, whole.rfind('\\') + 1);
    const std::string name = whole.substr(folder.size());
    const std::string log = folder + "started.txt";
    add_line(log, name + "|" + GetCommandLineA());
    if (name == "VlTray.exe") {
        HANDLE mutex = CreateMutexA(nullptr, TRUE, "Veltrin2_VLTray");
        wait_for_message("{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}", log);
        CloseHandle(mutex);
    } else if (name == "VlDialer.exe") {
        wait_for_message("Veltrin Dialer", log);
    } else {
        tell_started();
    }
    return 0;
}
