// Shortcuts of network roles that a device no longer offers.
#pragma once

#include "VlSDK.h"

namespace vl::shortcuts {

// Whether a service class is one of the network roles.
bool is_pan(uint16_t service_class);

// After a shortcut of the role `kept` was made: deletes the device's shortcuts of the other roles, but for
// those that the device still offers. Does nothing when its services cannot be walked.
void delete_other_pan_shortcuts(BtHandle device, uint16_t kept);

}  // namespace vl::shortcuts
