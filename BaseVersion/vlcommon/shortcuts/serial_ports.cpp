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

// Looser than port_of_shortcut: either place counts, whatever the class.
bool mentions_port(BtHandle shortcut, int port, ParameterRoom& room) {
    SerialParameter parameter(shortcut, room);
    if (!parameter.read_length() || serial_class(parameter.service_class()) == nullptr) return false;
    if (!parameter.read_bytes()) return false;
    return is_port(parameter.port_at(5), port) || is_port(parameter.port_at(9), port);
}

// Counts every match and stores as many as there is room for.
bool shortcuts_of_port(BtHandle* found, int port, uint32_t& count) {
    const HandleList all = read_handles(Btsdk_GetAllShortCuts);
    if (!all.handles) return false;
    ParameterRoom room;
    uint32_t matches = 0;
    for (const BtHandle shortcut : all) {
        if (shortcut == 0) break;
        if (!mentions_port(shortcut, port, room)) continue;
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
    shortcuts::ParameterRoom room;
    return shortcuts::port_of_shortcut(shortcut, serviceClass, room);
}

extern "C" BOOL VlCm_GetShortcutsByComPort(uint32_t* shortcuts, int port, uint32_t* count) {
    TraceScope scope("VlCm_GetShortcutsByComPort");
    return count != nullptr && shortcuts::shortcuts_of_port(shortcuts, port, *count);
}
