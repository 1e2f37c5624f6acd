// The icon that shows a state: one of the five variants behind each base icon.
#include "frame/stack_state.h"
#include "frame/stack_walk.h"
#include "live_state.h"
#include "vlcm/catalogue.h"
#include "vlcm/localctl.h"
#include "vlcm/states.h"

namespace vl::presentation {
namespace {

constexpr uint32_t kAdapterIcon = 26;
constexpr uint32_t kUnknownIcon = 1;

// Variants, added to a base icon.
constexpr uint32_t kIdle = 0;
constexpr uint32_t kConnected = 1;
constexpr uint32_t kNotReady = 2;
constexpr uint32_t kPaired = 3;        // a device
constexpr uint32_t kWithoutAudio = 3;  // a connected headset or hands-free service
constexpr uint32_t kDefaultDevice = 4;

uint32_t adapter_variant() {
    if (!is_bluetooth_ready()) return kNotReady;
    return has_connection() ? kConnected : kIdle;
}

uint32_t local_service_variant(BtHandle server) {
    if (!is_bluetooth_ready()) return kNotReady;
    switch (server_status(server)) {
        case kServerConnected:
            return kConnected;
        case kServerIdle:
            return kIdle;
        default:
            return kNotReady;
    }
}

// The first that holds decides.
uint32_t device_variant(BtHandle device) {
    if (!is_bluetooth_ready()) return kNotReady;
    if (is_connected_device(device)) return kConnected;
    if (VlCm_IsDefaultDevice(device)) return kDefaultDevice;
    return is_paired_device(device) ? kPaired : kIdle;
}

bool uses_audio_link(uint32_t service_class) { return service_class == 0x111E || service_class == 0x1108; }

bool has_audio_link() {
    uint32_t exists = 0;
    return Btsdk_AGAP_IsAudioConnExisted(&exists) == 0 && (exists & 0xFF) == 1;
}

uint32_t shortcut_variant(BtHandle shortcut, uint32_t service_class) {
    if (!is_connected_service(shortcut)) return kIdle;
    return uses_audio_link(service_class) && !has_audio_link() ? kWithoutAudio : kConnected;
}

uint32_t service_variant(BtHandle service) {
    const auto connection = find_connection(
        [=](BtHandle /*connection*/, const ConnectionProperty& found) { return found.service == service; });
    return connection.handle != 0 ? kConnected : kIdle;
}

uint32_t remote_service_variant(BtHandle handle, uint32_t service_class, bool is_shortcut) {
    if (!is_bluetooth_ready()) return kNotReady;
    if (handle == 0) return kIdle;
    return is_shortcut ? shortcut_variant(handle, service_class) : service_variant(handle);
}

}  // namespace
}  // namespace vl::presentation

using namespace vl;

extern "C" uint32_t VlCm_GetLocDevIconIDEx() {
    return presentation::kAdapterIcon + presentation::adapter_variant();
}

extern "C" uint32_t VlCm_GetLocSvcIconIDEx(uint32_t server, uint16_t serviceClass) {
    const uint32_t base = VlCm_GetSvcIconID(serviceClass);
    return base != presentation::kUnknownIcon ? base + presentation::local_service_variant(server) : 0;
}

extern "C" uint32_t VlCm_GetRmtDevIconIDEx(uint32_t device, uint32_t deviceClass) {
    return VlCm_GetDeviceIconID(deviceClass) + presentation::device_variant(device);
}

extern "C" uint32_t VlCm_GetRmtSvcIconIDEx(uint32_t handle, uint16_t serviceClass, BOOL isShortcut) {
    const uint32_t base = VlCm_GetSvcIconID(serviceClass);
    if (base == presentation::kUnknownIcon) return 0;
    return base + presentation::remote_service_variant(handle, serviceClass, isShortcut != FALSE);
}
