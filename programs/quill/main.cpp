// "Veltrin Quill.exe": the send tool. Without arguments it waits hidden until WM_QUIT is posted to its
// window. "Veltrin Quill.exe WAY DEVICE FILE..." sends files and ends; WAY is push, ftp or print, DEVICE
// the device handle. Exit code 0: all were handed over; 2: wrong arguments; 3: not all.
#include "hand_over.h"
#include "hidden_window.h"
#include "protocol.h"
#include "send_list.h"
#include "text.h"

#include <shellapi.h>
#include <stdlib.h>

using namespace programs;

namespace {

std::vector<std::wstring> arguments() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::wstring> result(words + (count > 0 ? 1 : 0), words + count);
    LocalFree(words);
    return result;
}

// Under this program's file name the library sends the first record of a list only: each hand-off gets
// what is still to be sent.
int send_files(const EventLog& log, const SendWay& way, uint32_t device,
               const std::vector<std::string>& paths) {
    const SendList list(way.service_class, paths);
    bool all = true;
    for (size_t i = 0; i < list.size(); ++i) {
        const uint32_t status = hand_over(list.from(i), device);
        log.line("handed over " + paths[i] + ": " + std::to_string(status));
        all = all && status == VLCM_OK;
    }
    return all ? 0 : 3;
}

int send_by_arguments(const EventLog& log, const std::vector<std::wstring>& words) {
    const SendWay* way = find_send_way(utf8(words[0]));
    if (!way || words.size() < 3) return 2;
    std::vector<std::string> paths;
    for (size_t i = 2; i < words.size(); ++i) paths.push_back(record_path(full_path(words[i])));
    return send_files(log, *way, wcstoul(words[1].c_str(), nullptr, 0), paths);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const EventLog log;
    const std::vector<std::wstring> words = arguments();
    if (!words.empty()) return send_by_arguments(log, words);
    const HiddenWindow window(log, kQuillTitle);
    return window.run();
}
