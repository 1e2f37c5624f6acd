// Whether a COM port is taken, and which plugged-in port is free.
#include "frame/frame.h"
#include "frame/settings.h"
#include "frame/stack_walk.h"
#include "serial_parameter.h"
#include "vlcm/ports.h"

namespace vl::shortcuts {
namespace {

constexpr size_t kPortNameSize = 20;

bool used_by_server(int port) {
    const auto server = find_local_server([=](BtHandle handle, const ServerAttributes& found) {
        return found.serviceClass == kSerialPort && is_port(VlCm_GetLocalSPPSvrComPort(handle), port);
    });
    return server.handle != 0;
}

bool used_by_class(int port, uint16_t service_class) {
    const HandleList all = read_handles([=](BtHandle* handles, uint32_t count) {
        return Btsdk_GetShortCutByServiceClass(service_class, handles, count);
    });
    ParameterRoom room;
    for (const BtHandle shortcut : all) {
        if (shortcut != 0 && is_port(port_of_shortcut(shortcut, service_class, room), port)) return true;
    }
    return false;
}

bool used_by_shortcut(int port) {
    for (const SerialClass& row : kSerialClasses) {
        if (used_by_class(port, row.service_class)) return true;
    }
    return false;
}

// The number behind "COM": decimal digits alone, 0 without any. Nothing behind the text's end is looked at.
int64_t number_of_port_name(const char (&name)[kPortNameSize]) {
    constexpr size_t kPrefixLength = 3;
    if (bounded_length(name, kPrefixLength) < kPrefixLength) return 0;
    int64_t number = 0;
    for (size_t i = kPrefixLength; i < kPortNameSize && name[i] >= '0' && name[i] <= '9'; ++i) {
        number = number * 10 + (name[i] - '0');
    }
    return number;
}

bool claimed_by_virtual_device(int port) {
    const PathBuffer file = settings::common_file();
    // Read by Windows and not by the stack, as the programs that write it do.
    const int count =
        static_cast<int>(GetPrivateProfileIntA("LocalBluetooth", "VirtualDeviceNum", 0, file.text()));
    for (int i = 0; i < count; ++i) {
        char section[32];
        char name[kPortNameSize] = {};
        format_bounded(section, sizeof section, "VirtualDevice%d", i);
        settings::read_text(section, "VirtualDevice", "", name, sizeof name, file.text());
        if (number_of_port_name(name) == port) return true;
    }
    return false;
}

bool is_used(int port) {
    return used_by_server(port) || used_by_shortcut(port) || claimed_by_virtual_device(port);
}

// The list's values are a port times ten plus a state digit; state 0 is a port that is not plugged in.
int first_free_port() {
    constexpr int kLongestList = 254;
    const PathBuffer file = settings::common_file();
    for (int i = 1; i <= kLongestList; ++i) {
        char key[16];
        format_bounded(key, sizeof key, "SerialNum%d", i);
        const int value = settings::read_number("VComm enum info", key, 0, file);
        if (value == 0) break;
        const bool plugged_in = value > 0 && value % 10 != 0;
        if (plugged_in && !VlCm_IsComportBeenUsed(value / 10)) return value / 10;
    }
    return 0;
}

bool is_fixed_service_port(int port) {
    const PathBuffer file = settings::common_file();
    char wanted[kPortNameSize];
    format_bounded(wanted, sizeof wanted, "COM%d", port);
    for (int i = 0; i < 2; ++i) {
        char section[32];
        char name[kPortNameSize] = {};
        format_bounded(section, sizeof section, "LocalSPPService%d", i);
        settings::read_text(section, "VirtualDevice", "", name, sizeof name, file.text());
        if (strcmp(name, wanted) == 0) return true;
    }
    return false;
}

bool is_dynamic_service(BtHandle server) {
    ServerAttributes attributes{};
    if (Btsdk_GetServerAttributes(server, &attributes) != 0) return false;
    if (attributes.serviceClass != kSerialPort) return false;
    const int port = VlCm_GetLocalSPPSvrComPort(server);
    return port <= 0 || !is_fixed_service_port(port);
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" BOOL VlCm_IsComportBeenUsed(int port) {
    TraceScope scope("VlCm_IsComportBeenUsed");
    return shortcuts::is_used(port);
}

extern "C" int VlCm_GetPluginAndNotUsedComport() {
    TraceScope scope("VlCm_GetPluginAndNotUsedComport");
    return shortcuts::first_free_port();
}

extern "C" BOOL VlCm_IsDynamicLocSppSvc(uint32_t server) {
    TraceScope scope("VlCm_IsDynamicLocSppSvc");
    return shortcuts::is_dynamic_service(server);
}
