// Serial-port shortcuts whose service the device no longer lists.
#include "frame/frame.h"
#include "frame/stack_walk.h"
#include "serial_parameter.h"
#include "vlcm/ports.h"
#include "vlcm/shortcuts.h"

#include <algorithm>

namespace vl::shortcuts {
namespace {

// The shortcuts of the services that a device lists: the first 16, one for each service.
class LiveShortcuts {
public:
    void add(BtHandle shortcut) {
        if (shortcut != 0 && count_ < kRoom) shortcuts_[count_++] = shortcut;
    }
    [[nodiscard]] bool contains(BtHandle shortcut) const {
        return std::find(shortcuts_, shortcuts_ + count_, shortcut) != shortcuts_ + count_;
    }

private:
    static constexpr size_t kRoom = 16;
    BtHandle shortcuts_[kRoom] = {};
    size_t count_ = 0;
};

BtHandle first_shortcut_of_service(BtHandle device, BtHandle service) {
    BtHandle shortcut = 0;
    Btsdk_GetShortCutByServiceHandle(device, service, &shortcut, 1);
    return shortcut;
}

void release_port(BtHandle shortcut) {
    constexpr uint32_t kPlugOutFlag = 16;
    const int port = VlCm_GetComPortByShortcut(shortcut, kSerialPort);
    if (port <= 0) return;
    Btsdk_DeinitCommObj(static_cast<uint8_t>(port));
    Btsdk_PlugOutVComm(Btsdk_CommNumToSerialNum(port), kPlugOutFlag);
}

// Only serial ports are tidied; for another class all questions are asked and nothing is done.
void delete_if_stale(BtHandle shortcut, uint16_t service_class, const LiveShortcuts& live) {
    if (VlCm_IsShortcutConnected(shortcut) || live.contains(shortcut)) return;
    if (service_class != kSerialPort) return;
    release_port(shortcut);
    VlCm_DeleteShortCut(shortcut);
}

void delete_stale(BtHandle device, uint16_t service_class) {
    LiveShortcuts live;
    const auto services = find_remote_service(device, [&](BtHandle service, const ServerAttributes& found) {
        if (found.serviceClass == service_class) live.add(first_shortcut_of_service(device, service));
        return false;
    });
    if (!services.started) return;
    const HandleList all = read_handles([=](BtHandle* handles, uint32_t count) {
        return Btsdk_GetShortCutByDeviceHandle(device, service_class, handles, count);
    });
    for (const BtHandle shortcut : all) {
        if (shortcut != 0) delete_if_stale(shortcut, service_class, live);
    }
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" void VlCm_DelAllShortcutsBySvcClsForSpecialDevice(uint32_t device, uint16_t serviceClass) {
    TraceScope scope("VlCm_DelAllShortcutsBySvcClsForSpecialDevice");
    shortcuts::delete_stale(device, serviceClass);
}
