#include "live_state.h"

#include "frame/unique.h"
#include "shortcuts/shortcut_record.h"
#include "vlcm/shortcuts.h"
#include "vlcm/visibility.h"

namespace vl::presentation {
namespace {

// A headset or hands-free unit may have opened the link to the local gateway itself.
bool is_connected_from_there(const ShortcutProperty& record) {
    if (!VlCm_ShouldRefreshThisRmtSvcByLocSvcConn(record.serviceClass)) return false;
    const uint16_t local_class = VlCm_GetLocSvcClsByRelevantRmtSvcCls(record.serviceClass);
    uint32_t connection = 0;
    return VlCm_IsSpecialIncomingConnectionExist(shortcuts::device_of(record), local_class, &connection);
}

}  // namespace

bool has_connection() { return static_cast<bool>(ConnectionEnum(Btsdk_StartEnumConnection())); }

bool is_connected_device(BtHandle device) { return Btsdk_IsDeviceConnected(device) == 1; }

bool is_paired_device(BtHandle device) {
    uint32_t paired = 0;
    return Btsdk_IsDevicePaired(device, &paired) == 0 && (paired & 0xFF) == 1;
}

bool is_connected_service(BtHandle shortcut) {
    ShortcutProperty record = shortcuts::record_of(shortcut);
    if (!shortcuts::read(record)) return false;  // nobody else can tell either
    return is_connected_from_there(record) || VlCm_IsShortcutConnected(shortcut);
}

}  // namespace vl::presentation
