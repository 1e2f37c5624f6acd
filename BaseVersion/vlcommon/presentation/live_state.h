// The state of adapter, services and devices at this moment, as names and icons show it.
#pragma once

#include "VlSDK.h"

namespace vl::presentation {

// Whether the stack has a connection to enumerate.
bool has_connection();
bool is_connected_device(BtHandle device);
bool is_paired_device(BtHandle device);
// Whether a shortcut's service is connected, from either side.
bool is_connected_service(BtHandle shortcut);

}  // namespace vl::presentation
