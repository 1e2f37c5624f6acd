// The state of adapter, services and devices at this moment, as names and icons show it.
#pragma once

#include "VlSDK.h"

namespace vl::presentation {

bool is_ready();
// Whether the stack has a connection to enumerate.
bool has_connection();
// The status of a local server; 0 when it cannot be read.
uint32_t server_status(BtHandle server);
bool is_connected_device(BtHandle device);
bool is_paired_device(BtHandle device);
// Whether a shortcut's service is connected, from either side.
bool is_connected_service(BtHandle shortcut);

// Of a local server, from server_status(); any other value is not running.
inline constexpr uint32_t kServerIdle = 1;
inline constexpr uint32_t kServerConnected = 3;

}  // namespace vl::presentation
