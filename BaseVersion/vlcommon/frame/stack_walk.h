// Walks over the stack's enumerations. A record is zeroed before each call that fills it, and End is
// called once on every path after a Start that gave a handle.
#pragma once

#include "unique.h"

namespace vl {

// The role bits of a connection; which side each value stands for is the stack's.
inline uint32_t role_of(const ConnectionProperty& connection) { return connection.roleAndFlags & 3; }

// The item at which a walk stopped.
template <typename Record>
struct Found {
    bool started = false;  // false: the stack could not start the walk
    BtHandle handle = 0;   // 0: no item was wanted
    Record record{};
};

// next(enumeration, record) is the stack's Enum operation; wanted(handle, record) tells where to stop.
template <typename Record, typename Enumeration, typename Next, typename Wanted>
Found<Record> walk(const Enumeration& enumeration, Next next, Wanted wanted) {
    Found<Record> found;
    found.started = static_cast<bool>(enumeration);
    while (found.started) {
        found.record = Record{};
        found.handle = next(enumeration.get(), &found.record);
        if (found.handle == 0 || wanted(found.handle, found.record)) break;
    }
    return found;
}

template <typename Wanted>
Found<ConnectionProperty> find_connection(Wanted wanted) {
    return walk<ConnectionProperty>(ConnectionEnum(Btsdk_StartEnumConnection()), Btsdk_EnumConnection,
                                    wanted);
}

template <typename Wanted>
Found<ServerAttributes> find_local_server(Wanted wanted) {
    return walk<ServerAttributes>(LocalServerEnum(Btsdk_StartEnumLocalServer()), Btsdk_EnumLocalServer,
                                  wanted);
}

template <typename Wanted>
Found<ServerAttributes> find_remote_service(BtHandle device, Wanted wanted) {
    return walk<ServerAttributes>(RemoteServiceEnum(Btsdk_StartEnumRemoteService(device)),
                                  Btsdk_EnumRemoteService, wanted);
}

template <typename Wanted>
Found<RemoteDeviceProperty> find_remote_device(Wanted wanted) {
    return walk<RemoteDeviceProperty>(RemoteDeviceEnum(Btsdk_StartEnumRemoteDevice(0, 0)),
                                      Btsdk_EnumRemoteDevice, wanted);
}

}  // namespace vl
