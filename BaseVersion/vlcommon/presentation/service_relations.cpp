// Remote services and the local services that serve the same links.
#include "frame/frame.h"
#include "frame/stack_walk.h"
#include "visibility_tables.h"
#include "vlcm/visibility.h"

namespace vl::presentation {
namespace {

const ServiceRelation* relation_of(uint16_t ServiceRelation::*side, uint16_t service_class) {
    for (const ServiceRelation& row : kServiceRelations) {
        if (row.*side == service_class) return &row;
    }
    return nullptr;
}

BtHandle first_local_server(uint16_t service_class) {
    const auto server = find_local_server([=](BtHandle /*server*/, const ServerAttributes& found) {
        return found.serviceClass == service_class;
    });
    return server.handle;
}

bool is_of(BtHandle connection, BtHandle device, uint16_t service_class) {
    ConnectionProperty property{};
    return connection != 0 && Btsdk_GetConnectionProperty(connection, &property) == 0 &&
           property.device == device && property.serviceClass == service_class;
}

BtHandle incoming_connection(BtHandle device, uint16_t service_class) {
    const HandleList incoming = read_handles([](BtHandle* handles, uint32_t count) {
        const int32_t answer = Btsdk_GetAllIncomingConnections(handles, count);
        return answer > 0 ? static_cast<uint32_t>(answer) : 0U;
    });
    for (const BtHandle connection : incoming) {
        if (is_of(connection, device, service_class)) return connection;
    }
    return 0;
}

BOOL find_incoming_connection(BtHandle device, uint16_t service_class, uint32_t* connection) {
    if (device == 0) return FALSE;
    const BtHandle found = incoming_connection(device, service_class);
    if (connection != nullptr) *connection = found;
    return found != 0;
}

}  // namespace
}  // namespace vl::presentation

using namespace vl;
using presentation::ServiceRelation;

extern "C" BOOL VlCm_ShouldRefreshThisRmtSvcByLocSvcConn(uint16_t serviceClass) {
    return presentation::relation_of(&ServiceRelation::remote, serviceClass) != nullptr;
}

extern "C" BOOL VlCm_ShouldRefreshRmtSvcByThisLocSvcConn(uint16_t serviceClass) {
    return presentation::relation_of(&ServiceRelation::local, serviceClass) != nullptr;
}

extern "C" uint16_t VlCm_GetRmtSvcClsByRelevantLocSvcCls(uint16_t localClass) {
    const ServiceRelation* row = presentation::relation_of(&ServiceRelation::local, localClass);
    return row ? row->remote : uint16_t{0};
}

extern "C" uint16_t VlCm_GetLocSvcClsByRelevantRmtSvcCls(uint16_t remoteClass) {
    const ServiceRelation* row = presentation::relation_of(&ServiceRelation::remote, remoteClass);
    return row ? row->local : uint16_t{0};
}

extern "C" uint32_t VlCm_GetLocSvcHdlBySvcCls(uint16_t serviceClass) {
    return presentation::first_local_server(serviceClass);
}

extern "C" BOOL VlCm_IsSpecialIncomingConnectionExist(uint32_t device, uint16_t localClass,
                                                      uint32_t* connection) {
    return presentation::find_incoming_connection(device, localClass, connection);
}
