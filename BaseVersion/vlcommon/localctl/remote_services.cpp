// What services a remote device offers.
#include "frame/stack_walk.h"
#include "vlcm/localctl.h"

namespace vl::localctl {
namespace {

bool has_service(BtHandle device, uint16_t service_class) {
    const auto service =
        find_remote_service(device, [=](BtHandle /*service*/, const ServerAttributes& found) {
            return found.serviceClass == service_class;
        });
    return service.handle != 0;
}

}  // namespace
}  // namespace vl::localctl

using namespace vl;

extern "C" BOOL VlCm_IsSupportService(unsigned int device, unsigned short serviceClass) {
    if (device == 0) return FALSE;
    return Btsdk_GetShortCutByDeviceHandle(device, serviceClass, nullptr, 0) != 0 ||
           localctl::has_service(device, serviceClass);
}
