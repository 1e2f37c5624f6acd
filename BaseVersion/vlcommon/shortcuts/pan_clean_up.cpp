#include "pan_clean_up.h"

#include "frame/stack_walk.h"
#include "frame/trace.h"

#include <stddef.h>

#include <iterator>

namespace vl::shortcuts {
namespace {

constexpr uint16_t kRoles[] = {0x1117, 0x1116, 0x1115};  // in the order of the clean-up

size_t role_index(uint16_t service_class) {
    size_t index = 0;
    while (index < std::size(kRoles) && kRoles[index] != service_class) ++index;
    return index;
}

void delete_first_shortcut(BtHandle device, uint16_t service_class) {
    BtHandle shortcut = 0;
    if (Btsdk_GetShortCutByDeviceHandle(device, service_class, &shortcut, 1) == 1) {
        Btsdk_DeleteShortCut(shortcut);
    }
}

}  // namespace

bool is_pan(uint16_t service_class) { return role_index(service_class) < std::size(kRoles); }

void delete_other_pan_shortcuts(BtHandle device, uint16_t kept) {
    TraceScope scope("DeleteOtherPANShc");
    bool offered[std::size(kRoles)] = {};
    const auto services =
        find_remote_service(device, [&](BtHandle /*service*/, const ServerAttributes& found) {
            const size_t index = role_index(found.serviceClass);
            if (index < std::size(kRoles)) offered[index] = true;
            return false;
        });
    if (!services.started) return;
    for (size_t i = 0; i < std::size(kRoles); ++i) {
        if (!offered[i] && kRoles[i] != kept) delete_first_shortcut(device, kRoles[i]);
    }
}

}  // namespace vl::shortcuts
