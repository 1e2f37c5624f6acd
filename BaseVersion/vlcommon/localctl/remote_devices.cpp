// Remote devices: their kinds, services, shortcuts.
#include "device_kind_table.h"
#include "frame/frame.h"
#include "frame/stack_walk.h"
#include "shortcuts/shortcut_record.h"
#include "vlcm/localctl.h"

namespace vl::localctl {
namespace {

constexpr uint16_t kHandsFree = 4382;
constexpr uint16_t kHeadset = 4360;

uint32_t kind_of_class(uint32_t device_class) {
    constexpr uint32_t kComparedBits = 0x1FFF;
    for (const DeviceKind& row : kDeviceKinds) {
        if ((device_class & kComparedBits & row.mask) == row.mask) return row.kind;
    }
    return 0;
}

uint32_t kind_of(BtHandle device) {
    constexpr uint32_t kSpecialType = 1;  // of the stack
    constexpr uint32_t kSpecialKind = 22;
    if (Btsdk_GetRemoteDeviceType(device) == kSpecialType) return kSpecialKind;
    uint32_t device_class = 0;
    if (Btsdk_GetRemoteDeviceClass(device, &device_class) != 0) device_class = 0;
    return kind_of_class(device_class);
}

bool has_service(BtHandle device, uint16_t service_class) {
    const auto service =
        find_remote_service(device, [=](BtHandle /*service*/, const ServerAttributes& found) {
            return found.serviceClass == service_class;
        });
    return service.handle != 0;
}

// Headset and hands-free stand in for each other.
BtHandle default_shortcut(uint16_t service_class) {
    const BtHandle shortcut = Btsdk_GetDefaultShortCut(service_class);
    if (shortcut != 0) return shortcut;
    if (service_class == kHandsFree) return Btsdk_GetDefaultShortCut(kHeadset);
    return service_class == kHeadset ? Btsdk_GetDefaultShortCut(kHandsFree) : 0;
}

BtHandle default_device(uint16_t service_class) {
    const BtHandle shortcut = default_shortcut(service_class);
    if (shortcut == 0) return 0;
    ShortcutProperty record = shortcuts::record_of(shortcut);
    return shortcuts::read(record) ? shortcuts::device_of(record) : 0;
}

}  // namespace
}  // namespace vl::localctl

using namespace vl;

extern "C" unsigned int VlCm_GetRemoteDeviceTypeByDevHandle(unsigned int device) {
    return localctl::kind_of(device);
}

extern "C" BOOL VlCm_IsAddedDevice(unsigned int device) {
    return Btsdk_GetShortCutByDeviceHandle(device, 0, nullptr, 0) != 0;
}

extern "C" BOOL VlCm_IsInstalledService(unsigned int device, unsigned int service) {
    return Btsdk_GetShortCutByServiceHandle(device, service, nullptr, 0) != 0;
}

extern "C" unsigned int VlCm_SetSelectedService(unsigned int service, BOOL selected) {
    TraceScope scope(" VlCm_SetSelectedService");  // trace readers look for the name with its blank
    Btsdk_SetRemoteServiceParam(service, selected != FALSE);
    return 0;
}

extern "C" BOOL VlCm_IsSupportService(unsigned int device, unsigned short serviceClass) {
    if (device == 0) return FALSE;
    return Btsdk_GetShortCutByDeviceHandle(device, serviceClass, nullptr, 0) != 0 ||
           localctl::has_service(device, serviceClass);
}

extern "C" unsigned int VlCm_GetDefaultDevByServiceClass(unsigned short serviceClass) {
    TraceScope scope("VlCm_GetDefaultDevByServiceClass");
    return localctl::default_device(serviceClass);
}

extern "C" BOOL VlCm_IsDefaultDevice(unsigned int device) {
    return device != 0 && VlCm_GetDefaultDevByServiceClass(localctl::kHandsFree) == device;
}
