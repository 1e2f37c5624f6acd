// Readiness, features and live connections.
#include "VlSDK.h"
#include "enumerations.h"
#include "misuse.h"
#include "operation.h"
#include "records.h"
#include "results.h"
#include "state.h"
#include "wide_answer.h"

namespace vlsim {
namespace {

uint8_t is_ready() {
    const State state;
    return state->ready ? 1 : 0;
}

uint32_t audio_connection_exists(uint32_t* exists) {
    static constexpr const char* kName = "Btsdk_AGAP_IsAudioConnExisted";
    if (!present(kName, "flag", exists)) return kNullPointer;
    expect_zeroed(kName, exists, sizeof *exists);
    const State state;
    *reinterpret_cast<uint8_t*>(exists) = state->audio_connection ? 1 : 0;
    return kDone;
}

uint32_t mobile_active() {
    const State state;
    return state->mobile_active;
}

uint32_t ad_function() {
    const State state;
    return state->ad_function;
}

void fill(ConnectionProperty& record, const Connection& connection) {
    record.roleAndFlags = connection.role_and_flags;
    record.device = connection.device;
    record.service = connection.service;
    record.serviceClass = connection.service_class;
}

uint32_t property_of(BtHandle connection, ConnectionProperty* record) {
    static constexpr const char* kName = "Btsdk_GetConnectionProperty";
    if (!present(kName, "record", record)) return kNullPointer;
    expect_zeroed(kName, record, sizeof *record);
    const State state;
    const Connection* const found = state->connections.find(connection);
    if (!found) return kUnknownHandle;
    fill(*record, *found);
    return kDone;
}

int32_t incoming(BtHandle* out, uint32_t room) {
    const State state;
    std::vector<BtHandle> handles;
    for (const Connection& each : state->connections.all()) {
        if (each.incoming) handles.push_back(each.handle);
    }
    return static_cast<int32_t>(give_list(handles, out, room));
}

struct Connections {
    using Record = ConnectionProperty;
    static constexpr EnumerationKind kind = EnumerationKind::kConnections;
    static constexpr const char* name = "Btsdk_EnumConnection";
    static bool fill_item(BtHandle item, Record& record) {
        const State state;
        const Connection* const found = state->connections.find(item);
        if (found) fill(record, *found);
        return found != nullptr;
    }
};

BtHandle start() {
    const State state;
    std::vector<BtHandle> handles;
    for (const Connection& each : state->connections.all()) handles.push_back(each.handle);
    return start_enumeration(EnumerationKind::kConnections, std::move(handles));
}

uint32_t end(BtHandle enumeration) {
    return end_enumeration("Btsdk_EndEnumConnection", EnumerationKind::kConnections, enumeration);
}

}  // namespace
}  // namespace vlsim

using vlsim::call;

uint64_t Btsdk_IsBluetoothReady_wide() {
    return vlsim::wide_answer(call<"Btsdk_IsBluetoothReady">(vlsim::is_ready));
}

uint32_t Btsdk_AGAP_IsAudioConnExisted(uint32_t* exists) {
    return call<"Btsdk_AGAP_IsAudioConnExisted">(vlsim::audio_connection_exists, exists);
}

uint32_t Btsdk_IsMobileActive() { return call<"Btsdk_IsMobileActive">(vlsim::mobile_active); }

uint32_t Btsdk_IsSupportADFunction() { return call<"Btsdk_IsSupportADFunction">(vlsim::ad_function); }

BtHandle Btsdk_StartEnumConnection() { return call<"Btsdk_StartEnumConnection">(vlsim::start); }

BtHandle Btsdk_EnumConnection(BtHandle enumeration, ConnectionProperty* property) {
    return call<"Btsdk_EnumConnection">(vlsim::next_item<vlsim::Connections>, enumeration, property);
}

uint32_t Btsdk_EndEnumConnection(BtHandle enumeration) {
    return call<"Btsdk_EndEnumConnection">(vlsim::end, enumeration);
}

int32_t Btsdk_GetAllIncomingConnections(BtHandle* connections, uint32_t count) {
    return call<"Btsdk_GetAllIncomingConnections">(vlsim::incoming, connections, count);
}

uint32_t Btsdk_GetConnectionProperty(BtHandle connection, ConnectionProperty* property) {
    return call<"Btsdk_GetConnectionProperty">(vlsim::property_of, connection, property);
}
