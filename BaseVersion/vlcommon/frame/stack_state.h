// What the stack says of itself and of its local servers.
#pragma once

#include "VlSDK.h"

namespace vl {

// The answer is 8 bits wide; whatever else it may hold, only 1 means ready.
inline bool is_bluetooth_ready() { return Btsdk_IsBluetoothReady() == 1; }

// Any other status is one of a server that runs.
enum ServerStatus : uint32_t {
    kServerUnknown = 0,
    kServerIdle = 1,
    kServerStopped = 2,
    kServerConnected = 3,
};

inline uint32_t server_status(BtHandle server) {
    uint32_t status = kServerUnknown;
    return Btsdk_GetServerStatus(server, &status) == 0 ? status : uint32_t{kServerUnknown};
}

inline bool is_running(uint32_t server_status) {
    return server_status != kServerUnknown && server_status != kServerStopped;
}

}  // namespace vl
