// The shortcut that serves an OBEX connection.
#include "obex_target_table.h"

#include "VlSDK.h"
#include "vlcm/shortcuts.h"

#include <string.h>

namespace vl::shortcuts {
namespace {

bool matches(const ObexTarget& row, const VlObexConnection& connection) {
    if (row.length != connection.targetLength) return false;
    if (row.length == 0) return true;
    return connection.target != nullptr && memcmp(row.bytes.data(), connection.target, row.length) == 0;
}

BtHandle shortcut_for(const VlObexConnection& connection) {
    for (const ObexTarget& row : kObexTargets) {
        if (!matches(row, connection)) continue;
        BtHandle shortcut = 0;
        Btsdk_GetShortCutByDeviceHandle(connection.device, row.service_class, &shortcut, 1);
        return shortcut;
    }
    return 0;
}

}  // namespace
}  // namespace vl::shortcuts

extern "C" uint32_t VlCm_GetShcHdlByObexProp(const VlObexConnection* connection) {
    return connection != nullptr ? vl::shortcuts::shortcut_for(*connection) : 0;
}
