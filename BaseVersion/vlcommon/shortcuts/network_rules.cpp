// Which shortcut to use for networking.
#include "frame/frame.h"
#include "frame/stack_state.h"
#include "frame/stack_walk.h"
#include "pan_clean_up.h"
#include "vlcm/audio_network.h"
#include "vlcm/shortcuts.h"

namespace vl::shortcuts {
namespace {

constexpr uint16_t kPanUser = 0x1115;
constexpr uint16_t kAccessPoint = 0x1116;
constexpr uint16_t kGroupNetwork = 0x1117;

// The status of the first local network server; unknown when there is none.
uint32_t network_server_status() {
    const LocalServerEnum servers(Btsdk_StartEnumLocalServer());
    const auto server = walk<ServerAttributes>(
        servers, Btsdk_EnumLocalServer, [](BtHandle /*server*/, const ServerAttributes& found) {
            return found.serviceClass == kGroupNetwork || found.serviceClass == kAccessPoint;
        });
    return server.handle != 0 ? server_status(server.handle) : uint32_t{kServerUnknown};
}

bool has_network_client() {
    const auto client = find_connection([](BtHandle /*connection*/, const ConnectionProperty& found) {
        return role_of(found) == 2 && found.serviceClass == kPanUser;
    });
    return client.handle != 0;
}

bool is_serving(uint32_t status) {
    return status == kServerConnected || (status == kServerIdle && has_network_client());
}

// A device's network shortcuts, by the role of the other side; of several the last one stands.
struct NetworkShortcuts {
    BtHandle access_point = 0;
    BtHandle group = 0;
    BtHandle user = 0;

    // The incomplete conversion is part of the lines.
    void consider(BtHandle shortcut, uint16_t service_class) {
        const uint32_t traced_class = service_class;
        if (service_class == kAccessPoint) {
            access_point = shortcut;
            trace_line("remote NAP svc cls is %l\r\n", traced_class);
        } else if (service_class == kGroupNetwork) {
            group = shortcut;
            trace_line("remote GN svc cls is %l\r\n", traced_class);
        } else if (service_class == kPanUser) {
            user = shortcut;
            trace_line("remote PANU svc cls is %l\r\n", traced_class);
        }
    }
    [[nodiscard]] BtHandle best(bool serving) const {
        const BtHandle network = access_point != 0 ? access_point : group;
        const BtHandle first = serving ? user : network;
        return first != 0 ? first : serving ? network : user;
    }
};

BtHandle network_shortcut(BtHandle device) {
    constexpr uint16_t kShortcutHandle = VLCM_HANDLE_SHORTCUT;
    const uint32_t status = network_server_status();
    trace_line("Local GN(NAP)' status is %ld\r\n", static_cast<long>(status));
    const bool serving = is_serving(status);
    const HandleList all = read_handles([=](BtHandle* handles, uint32_t count) {
        return Btsdk_GetShortCutByDeviceHandle(device, 0, handles, count);
    });
    NetworkShortcuts network;
    for (const BtHandle shortcut : all) {
        uint16_t service_class = 0;
        if (shortcut == 0 || VlCm_GetServiceClass(shortcut, kShortcutHandle, &service_class) != 0) continue;
        network.consider(shortcut, service_class);
    }
    return network.best(serving);
}

bool is_connecting(BtHandle device) {
    const auto connection = find_connection([=](BtHandle /*connection*/, const ConnectionProperty& found) {
        return found.device == device && is_pan(found.serviceClass);
    });
    if (!connection.started) trace_line("Can not enum connection Handle\r\n");
    return connection.handle != 0;
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" uint32_t VlCm_GetCurrPanShc(uint32_t device) {
    TraceScope scope("VlCm_GetCurrPanShc");
    return shortcuts::network_shortcut(device);
}

// The answer has 8 bits, but callers read the whole register: it is made as 32 bits.
uint32_t is_connecting_pan_on_this_device(uint32_t device) __asm__("VlCm_IsConnectingPANOnThisDevice");

uint32_t is_connecting_pan_on_this_device(uint32_t device) {
    TraceScope scope("VlCm_IsConnectingPANOnThisDevice");
    return shortcuts::is_connecting(device) ? 1 : 0;
}
