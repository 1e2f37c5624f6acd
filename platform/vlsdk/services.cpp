// Services of remote devices, and the stack's own servers.
#include "VlSDK.h"
#include "edits.h"
#include "enumerations.h"
#include "memory.h"
#include "misuse.h"
#include "operation.h"
#include "records.h"
#include "results.h"
#include "state.h"

namespace vlsim {
namespace {

constexpr uint32_t kServerStarted = 1;
constexpr uint32_t kServerStopped = 2;

// Services and servers are described by the same record.
template <typename Item>
uint32_t describe(const char* name, const Items<Item>& items, BtHandle handle, ServerAttributes* record) {
    if (!present(name, "record", record)) return kNullPointer;
    expect_zeroed(name, record, sizeof *record, {{offsetof(ServerAttributes, mask), 2}});
    const Item* const found = items.find(handle);
    if (!found) return kUnknownHandle;
    record->serviceClass = found->service_class;
    if (record->mask & kServerMaskName) set_text(record->name, found->name);
    if (record->mask & kServerMaskExtension) record->extension = new_block(found->extension);
    return kDone;
}

uint32_t service_attributes(BtHandle service, ServerAttributes* record) {
    const State state;
    return describe("Btsdk_GetRemoteServiceAttributes", state->services, service, record);
}

uint32_t server_attributes(BtHandle server, ServerAttributes* record) {
    const State state;
    return describe("Btsdk_GetServerAttributes", state->servers, server, record);
}

uint32_t set_parameter(BtHandle service, uint32_t parameter) {
    return set_service_parameter(service, parameter) ? kDone : kUnknownHandle;
}

uint32_t server_status(BtHandle server, uint32_t* status) {
    if (!present("Btsdk_GetServerStatus", "status", status)) return kNullPointer;
    const State state;
    const Server* const found = state->servers.find(server);
    if (!found) return kUnknownHandle;
    *status = found->status;
    return kDone;
}

uint32_t start_server(BtHandle server) {
    return set_server_status(server, kServerStarted) ? kDone : kUnknownHandle;
}

uint32_t stop_server(BtHandle server) {
    return set_server_status(server, kServerStopped) ? kDone : kUnknownHandle;
}

struct RemoteServices {
    using Record = ServerAttributes;
    static constexpr EnumerationKind kind = EnumerationKind::kRemoteServices;
    static constexpr const char* name = "Btsdk_EnumRemoteService";
    static bool fill_item(BtHandle item, Record& record) {
        const State state;
        const Service* const found = state->services.find(item);
        if (found) record.serviceClass = found->service_class;
        return found != nullptr;
    }
};

struct LocalServers {
    using Record = ServerAttributes;
    static constexpr EnumerationKind kind = EnumerationKind::kLocalServers;
    static constexpr const char* name = "Btsdk_EnumLocalServer";
    static bool fill_item(BtHandle item, Record& record) {
        const State state;
        const Server* const found = state->servers.find(item);
        if (found) record.serviceClass = found->service_class;
        return found != nullptr;
    }
};

BtHandle start_services(BtHandle device) {
    const State state;
    const Device* const found = state->devices.find(device);
    return found ? start_enumeration(EnumerationKind::kRemoteServices, found->services) : 0;
}

uint32_t end_services(BtHandle enumeration) {
    return end_enumeration("Btsdk_EndEnumRemoteService", EnumerationKind::kRemoteServices, enumeration);
}

BtHandle start_servers() {
    const State state;
    std::vector<BtHandle> handles;
    for (const Server& each : state->servers.all()) handles.push_back(each.handle);
    return start_enumeration(EnumerationKind::kLocalServers, std::move(handles));
}

uint32_t end_servers(BtHandle enumeration) {
    return end_enumeration("Btsdk_EndEnumLocalServer", EnumerationKind::kLocalServers, enumeration);
}

}  // namespace
}  // namespace vlsim

using vlsim::call;

BtHandle Btsdk_StartEnumRemoteService(BtHandle device) {
    return call<"Btsdk_StartEnumRemoteService">(vlsim::start_services, device);
}

BtHandle Btsdk_EnumRemoteService(BtHandle enumeration, ServerAttributes* attributes) {
    return call<"Btsdk_EnumRemoteService">(vlsim::next_item<vlsim::RemoteServices>, enumeration, attributes);
}

uint32_t Btsdk_EndEnumRemoteService(BtHandle enumeration) {
    return call<"Btsdk_EndEnumRemoteService">(vlsim::end_services, enumeration);
}

uint32_t Btsdk_GetRemoteServiceAttributes(BtHandle service, ServerAttributes* attributes) {
    return call<"Btsdk_GetRemoteServiceAttributes">(vlsim::service_attributes, service, attributes);
}

uint32_t Btsdk_SetRemoteServiceParam(BtHandle service, uint32_t parameter) {
    return call<"Btsdk_SetRemoteServiceParam">(vlsim::set_parameter, service, parameter);
}

BtHandle Btsdk_StartEnumLocalServer() { return call<"Btsdk_StartEnumLocalServer">(vlsim::start_servers); }

BtHandle Btsdk_EnumLocalServer(BtHandle enumeration, ServerAttributes* attributes) {
    return call<"Btsdk_EnumLocalServer">(vlsim::next_item<vlsim::LocalServers>, enumeration, attributes);
}

uint32_t Btsdk_EndEnumLocalServer(BtHandle enumeration) {
    return call<"Btsdk_EndEnumLocalServer">(vlsim::end_servers, enumeration);
}

uint32_t Btsdk_GetServerStatus(BtHandle server, uint32_t* status) {
    return call<"Btsdk_GetServerStatus">(vlsim::server_status, server, status);
}

uint32_t Btsdk_GetServerAttributes(BtHandle server, ServerAttributes* attributes) {
    return call<"Btsdk_GetServerAttributes">(vlsim::server_attributes, server, attributes);
}

uint32_t Btsdk_StartServer(BtHandle server) { return call<"Btsdk_StartServer">(vlsim::start_server, server); }

uint32_t Btsdk_StopServer(BtHandle server) { return call<"Btsdk_StopServer">(vlsim::stop_server, server); }
