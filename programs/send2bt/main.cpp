// "VlSend2bt.exe [-DEV_ADDR=XX:XX:XX:XX:XX:XX] FILE...": what the links of the Send-To menu start. Hands the
// files over for the device and keeps its link in step; without a device it brings up the main window, where
// one can be chosen. Exit code 0: all were handed over; 1: not all, or no such device; 2: no files.
#include "devices.h"
#include "event_log.h"
#include "protocol.h"
#include "sending.h"
#include "text.h"

#include "VlCommon.h"

#include <windows.h>

#include <shellapi.h>

using namespace programs;

namespace {

enum ExitCode : int { kAll = 0, kNotAll = 1, kUsage = 2 };

constexpr wchar_t kDeviceArgument[] = L"-DEV_ADDR=";
constexpr size_t kDeviceArgumentLength = std::size(kDeviceArgument) - 1;

struct Request {
    std::string address;  // as printed; empty: none
    std::vector<std::wstring> files;
};

Request read_arguments() {
    Request request;
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const std::wstring word = words[i];
        if (word.rfind(kDeviceArgument, 0) == 0) {
            request.address = utf8(word.substr(kDeviceArgumentLength));
        } else {
            request.files.push_back(word);
        }
    }
    LocalFree(words);
    return request;
}

int send_files(const EventLog& log, BtHandle device, const std::vector<std::wstring>& files) {
    int result = kAll;
    for (const auto& [path, status] : send_each(sendable_paths(files), kObjectPush, device)) {
        log.line(path + ": " + meaning_of(status));
        if (status != VLCM_OK) result = kNotAll;
    }
    return result;
}

// The link of a device that is gone goes as well.
int send_to_device(const EventLog& log, const Request& request) {
    uint8_t address[6] = {};
    VlCm_ParseDeviceAddressFromString(request.address.c_str(), address, sizeof address);
    const BtHandle device = Btsdk_GetRemoteDeviceHandle(address);
    VlCm_SyncSend2btShc(address, device != 0);
    if (device == 0) {
        log.line("no device " + request.address);
        return kNotAll;
    }
    log.line("to " + display_name(address));
    return send_files(log, device, request.files);
}

int run(const EventLog& log, const Request& request) {
    if (request.files.empty()) {
        log.line("no files");
        return kUsage;
    }
    if (request.address.empty()) {
        log.line("no device is named: opening the main window");
        VlCm_OpenVluiExe();
        return kNotAll;
    }
    return send_to_device(log, request);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const EventLog log;
    try {
        return run(log, read_arguments());
    } catch (const CannotSend& reason) {
        log.line(reason.what());
        return kNotAll;
    }
}
