// The local device's class and its servers.
#include "frame/frame.h"
#include "frame/settings.h"
#include "frame/stack_state.h"
#include "frame/stack_walk.h"
#include "presentation/language_library.h"
#include "tray_requests.h"
#include "vlcm/localctl.h"

namespace vl::localctl {
namespace {

constexpr uint32_t kServiceBits = ~0x1FFFU;  // what kinds 0 and 1 keep of the current class
constexpr uint32_t kDesktop = 0x104;
constexpr uint32_t kLaptop = 0x10C;
constexpr uint32_t kAsHeadset = 0x240404;
constexpr uint32_t kAsPrinter = 0x140680;

uint32_t kind_of_class(uint32_t device_class) {
    if ((device_class & kAsHeadset) == kAsHeadset) return 2;
    if ((device_class & kAsPrinter) == kAsPrinter) return 3;
    return (device_class & 0x1FFC) == kLaptop ? 1 : 0;
}

uint32_t current_kind() {
    uint32_t device_class = 0;
    return Btsdk_GetLocalDeviceClass(&device_class) == 0 ? kind_of_class(device_class) : 0;
}

uint32_t class_of_kind(uint32_t kind, uint32_t current) {
    switch (kind) {
        case 1:
            return kLaptop | (current & kServiceBits);
        case 2:
            return kAsHeadset;
        case 3:
            return kAsPrinter;
        default:
            return kDesktop | (current & kServiceBits);
    }
}

BOOL set_kind(uint32_t kind) {
    const PathBuffer file = settings::common_file();
    uint32_t current = 0;
    if (Btsdk_GetLocalDeviceClass(&current) != 0) current = 0;
    Btsdk_SetLocalDeviceClass(class_of_kind(kind, current));
    return Btsdk_WritePrivateProfileInt("LocalBluetooth", "DEFAULT_DEVCLASS", static_cast<int32_t>(kind),
                                        file.text());
}

bool is_started(uint16_t service_class) {
    if (!is_bluetooth_ready()) return false;
    LocalServerEnum servers(Btsdk_StartEnumLocalServer());
    const auto server = walk<ServerAttributes>(servers, Btsdk_EnumLocalServer,
                                               [=](BtHandle /*server*/, const ServerAttributes& found) {
                                                   return found.serviceClass == service_class;
                                               });
    return server.handle != 0 && is_running(server_status(server.handle));
}

enum class Answer { kYes, kNo, kCannotAsk };

// The question is refused by No alone: a box that cannot be shown does not hold the server up.
Answer ask_to_stop(HWND owner) {
    const LanguageLibrary texts;
    if (!texts) return Answer::kCannotAsk;
    char caption[100] = {};
    char question[200] = {};
    texts.load(1211, caption);
    texts.load(1212, question);
    const int button = MessageBoxA(owner, question, caption, MB_YESNO | MB_ICONQUESTION);
    return button == IDNO ? Answer::kNo : Answer::kYes;
}

BOOL refuse(const char* line) {
    trace_line(line);
    return FALSE;
}

BOOL stop_server(HWND owner, BtHandle server) {
    uint32_t status = 0;
    if (Btsdk_GetServerStatus(server, &status) != 0) {
        return refuse("error!!! Can not get the server's status.\r\n");
    }
    if (status == kServerConnected) {
        const Answer answer = ask_to_stop(owner);
        if (answer == Answer::kCannotAsk) return refuse("error!!! Can not load resource library.\r\n");
        if (answer == Answer::kNo) return FALSE;
    }
    trace_line("Stop Server: 0x%08x\r\n", server);
    request_from_tray(kStopServer, server);
    return TRUE;
}

}  // namespace
}  // namespace vl::localctl

using namespace vl;

extern "C" BOOL VlCm_StopServer(HWND owner, unsigned int server) {
    TraceScope scope("VlCm_StopServer");
    if (server == 0) return localctl::refuse("error!!! Invalid service handle.\r\n");
    return localctl::stop_server(owner, server);
}

extern "C" unsigned int VlCm_GetLocalDeviceClass() { return localctl::current_kind(); }

extern "C" BOOL VlCm_SetLocalDeviceClass(unsigned int kind) { return localctl::set_kind(kind); }

extern "C" BOOL VlCm_IsServiceStarted(unsigned short serviceClass) {
    return localctl::is_started(serviceClass);
}
