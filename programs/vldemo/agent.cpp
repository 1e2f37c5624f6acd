#include "agent.h"

#include "VlSDK.h"
#include "event_log.h"
#include "frame/unique.h"
#include "hand_over.h"
#include "protocol.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

HWND agent_window() { return FindWindowA(nullptr, kTrayTitle); }

// The folder in the ANSI code page, in its short form when the code page lacks a character.
std::string ansi_folder() {
    const std::wstring folder = program_folder();
    std::string text = ansi(folder);
    if (!text.empty()) return text;
    wchar_t shorter[VLCM_PATH_SIZE];
    const DWORD length = GetShortPathNameW(folder.c_str(), shorter, VLCM_PATH_SIZE);
    return length < VLCM_PATH_SIZE ? ansi({shorter, length}) : std::string();
}

// The stack's 32-bit parts keep their settings there; a 64-bit Windows without them lacks the folder.
void make_settings_folder(const std::string& file) {
    CreateDirectoryA(file.substr(0, file.find_last_of('\\')).c_str(), nullptr);
}

}  // namespace

int install_here() {
    char file[VLCM_PATH_SIZE] = "";
    VlCm_GetCommonSettingFilePath(file, sizeof file);
    make_settings_folder(file);
    const std::string folder = ansi_folder();
    if (folder.empty() || !Btsdk_WritePrivateProfileString("General", "InstallDir", folder.c_str(), file)) {
        fprintf(stderr, "cannot write the installation folder to %s\n", file);
        return 1;
    }
    printf("installed in %s\n", utf8(program_folder()).c_str());
    return 0;
}

int start_agent() {
    const DWORD process = run_agent();
    if (process == 0) {
        fprintf(stderr, "the tray agent did not start\n");
        return 1;
    }
    printf("tray agent runs, process %lu\n", process);
    return 0;
}

int stop_agent() {
    constexpr DWORD kDeadline_ms = 30000;
    const HWND window = agent_window();
    if (!window) return 0;
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const vl::UniqueHandle process(OpenProcess(SYNCHRONIZE, FALSE, id));
    PostMessageA(window, WM_CLOSE, 0, 0);
    if (process && WaitForSingleObject(process.get(), kDeadline_ms) != WAIT_OBJECT_0) {
        fprintf(stderr, "the tray agent does not end\n");
        return 1;
    }
    printf("tray agent closed\n");
    return 0;
}

}  // namespace programs
