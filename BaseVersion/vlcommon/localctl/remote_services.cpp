// What services a remote device offers.
#include "frame/frame.h"
#include "vlcm/localctl.h"

namespace vl::localctl {
namespace {

bool has_service(BtHandle device, uint16_t service_class) {
    RemoteServiceEnum services(Btsdk_StartEnumRemoteService(device));
    if (!services) return false;
    for (;;) {
        ServerAttributes attributes{};
        if (Btsdk_EnumRemoteService(services.get(), &attributes) == 0) return false;
        if (attributes.serviceClass == service_class) return true;
    }
}

}  // namespace
}  // namespace vl::localctl

using namespace vl;

extern "C" BOOL VlCm_IsSupportService(unsigned int device, unsigned short serviceClass) {
    if (device == 0) return FALSE;
    return Btsdk_GetShortCutByDeviceHandle(device, serviceClass, nullptr, 0) != 0 ||
           localctl::has_service(device, serviceClass);
}
