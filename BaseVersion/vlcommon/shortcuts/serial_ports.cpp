// Which COM port a server or a shortcut has, and which shortcuts a port serves.
#include "frame/frame.h"
#include "serial_parameter.h"
#include "vlcm/ports.h"

namespace vl::shortcuts {
namespace {

int port_of_server(BtHandle server) {
    constexpr size_t kPortByte = 6;  // of the extended-attribute block
    ServerAttributes attributes{};
    attributes.mask = kServerMaskExtension;
    if (Btsdk_GetServerAttributes(server, &attributes) != 0) return kNoPort;
    const UniqueSdkMemory block(attributes.extension);
    return block ? static_cast<const uint8_t*>(block.get())[kPortByte] : kNoPort;
}

// The caller's class decides, not the record's.
int port_of_shortcut(BtHandle shortcut, uint16_t service_class) {
    const SerialClass* row = serial_class(service_class);
    if (row == nullptr) return kNoPort;
    SerialParameter parameter(shortcut);
    if (!parameter.read_length() || !parameter.read_bytes()) return kNoPort;
    return parameter.port_at(row->port_byte);
}

// Looser than port_of_shortcut: either place counts, whatever the class.
bool mentions_port(BtHandle shortcut, int port) {
    SerialParameter parameter(shortcut);
    if (!parameter.read_length() || serial_class(parameter.service_class()) == nullptr) return false;
    if (!parameter.read_bytes()) return false;
    return is_port(parameter.port_at(5), port) || is_port(parameter.port_at(9), port);
}

// Counts every match and stores as many as there is room for.
bool shortcuts_of_port(BtHandle* found, int port, uint32_t& count) {
    const HandleList all = read_handles(Btsdk_GetAllShortCuts);
    if (!all.handles) return false;
    uint32_t matches = 0;
    for (const BtHandle shortcut : all) {
        if (shortcut == 0) break;
        if (!mentions_port(shortcut, port)) continue;
        if (found != nullptr && matches < count) found[matches] = shortcut;
        ++matches;
    }
    count = matches;
    return true;
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" int VlCm_GetLocalSPPSvrComPort(uint32_t server) { return shortcuts::port_of_server(server); }

extern "C" int VlCm_GetComPortByShortcut(uint32_t shortcut, uint16_t serviceClass) {
    TraceScope scope("VlCm_GetComPortByShortcut");
    return shortcuts::port_of_shortcut(shortcut, serviceClass);
}

extern "C" BOOL VlCm_GetShortcutsByComPort(uint32_t* shortcuts, int port, uint32_t* count) {
    TraceScope scope("VlCm_GetShortcutsByComPort");
    return count != nullptr && shortcuts::shortcuts_of_port(shortcuts, port, *count);
}
