// Questions to the list of live connections.
#include "frame/frame.h"
#include "frame/stack_walk.h"
#include "vlcm/shortcuts.h"

namespace vl::shortcuts {
namespace {

bool exists_with_role(uint16_t service_class, uint32_t mask) {
    const auto connection = find_connection([=](BtHandle /*connection*/, const ConnectionProperty& found) {
        return found.serviceClass == service_class && (role_of(found) & mask) != 0;
    });
    if (!connection.started) trace_line("Fail to Btsdk_StartEnumConnection\r\n");
    return connection.handle != 0;
}

uint32_t count_of_device(BtHandle device) {
    uint32_t count = 0;
    find_connection([&](BtHandle /*connection*/, const ConnectionProperty& found) {
        if (found.device == device) ++count;
        return false;
    });
    return count;
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" BOOL VlCm_ExistSameSvcClsConnection(uint16_t serviceClass, uint32_t mask) {
    TraceScope scope("VlCm_ExistSameSvcClsConnection");
    return shortcuts::exists_with_role(serviceClass, mask);
}

extern "C" uint32_t VlCm_GetConnectionNumByDevHdl(uint32_t device) {
    return shortcuts::count_of_device(device);
}
