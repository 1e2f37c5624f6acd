// Which shortcut, connection and service to use for audio.
#include "audio_rule_table.h"
#include "frame/frame.h"
#include "frame/settings.h"
#include "frame/stack_walk.h"
#include "shortcut_record.h"
#include "vlcm/audio_network.h"
#include "vlcm/localctl.h"
#include "vlcm/shortcuts.h"
#include "vlcm/visibility.h"

namespace vl::shortcuts {
namespace {

// Shortcuts that could carry a device's voice; of several the last one stands.
struct VoiceShortcuts {
    BtHandle hands_free = 0;
    BtHandle headset = 0;

    void consider(BtHandle shortcut, uint16_t service_class) {
        if (shortcut == 0) return;
        if (service_class == kHandsFree) hands_free = shortcut;
        if (service_class == kHeadset) headset = shortcut;
    }
    [[nodiscard]] BtHandle best() const { return hands_free != 0 ? hands_free : headset; }
};

BtHandle shortcut_of_service(BtHandle device, BtHandle service) {
    BtHandle shortcut = 0;
    if (Btsdk_GetShortCutByServiceHandle(device, service, nullptr, 0) != 0) {
        Btsdk_GetShortCutByServiceHandle(device, service, &shortcut, 1);
    } else {
        VlCm_CreateShortCut(device, service, &shortcut);
    }
    return shortcut;
}

// Every service of the device gets a shortcut on the way, not the audio services alone.
VoiceShortcuts from_services(BtHandle device) {
    VoiceShortcuts voice;
    find_remote_service(device, [&](BtHandle service, const ServerAttributes& found) {
        voice.consider(shortcut_of_service(device, service), found.serviceClass);
        return false;
    });
    return voice;
}

VoiceShortcuts from_shortcuts(BtHandle device) {
    VoiceShortcuts voice;
    const HandleList all = read_handles([=](BtHandle* handles, uint32_t count) {
        return Btsdk_GetShortCutByDeviceHandle(device, 0, handles, count);
    });
    for (const BtHandle shortcut : all) {
        ShortcutProperty record = record_of(shortcut);
        if (shortcut != 0 && read(record)) voice.consider(shortcut, record.serviceClass);
    }
    return voice;
}

BtHandle voice_shortcut(BtHandle device) {
    constexpr uint32_t kTakeServiceList = 0x80000000;
    uint32_t parameter = 0;
    if (Btsdk_GetRemoteDeviceParam(device, &parameter) != 0) parameter = 0;
    const bool services = (parameter & kTakeServiceList) != 0;
    return (services ? from_services(device) : from_shortcuts(device)).best();
}

bool both_directions_at_once(const PathBuffer& file) {
    return settings::read_number("VLConfig", "IsSupportBothA2dpSinkSource", 0, file) == 1;
}

bool is_audio_device(BtHandle device) {
    constexpr uint32_t kAudioVideo = 4;
    uint32_t device_class = 0;
    if (Btsdk_GetRemoteDeviceClass(device, &device_class) != 0) return false;
    return ((device_class >> 8) & 0x1F) == kAudioVideo;
}

bool other_audio_device_connected(BtHandle device) {
    const auto other = find_connection([=](BtHandle /*connection*/, const ConnectionProperty& found) {
        return is_audio_device(found.device) && found.device != device;
    });
    return other.handle != 0;
}

bool audio_link_up() {
    const auto link = find_connection([](BtHandle /*connection*/, const ConnectionProperty& found) {
        return is_forbidding(found.serviceClass, role_of(found));
    });
    return link.handle != 0;
}

bool is_a2dp_forbidden(BtHandle device) {
    const PathBuffer file = settings::common_file();
    const bool one_device_only =
        settings::read_number("VlConfig", "IsSupportMultiAudioConnected", 1, file) == 0;
    if (one_device_only && other_audio_device_connected(device)) return true;
    return !both_directions_at_once(file) && audio_link_up();
}

// The gateway's own link, or, from the other side, a headset's: even for a hands-free shortcut.
BtHandle link_of(const ShortcutProperty& record) {
    const uint16_t gateway = record.serviceClass == kHeadset ? kHeadsetGateway : kHandsFreeGateway;
    const BtHandle device = device_of(record);
    const auto link = find_connection([=](BtHandle /*connection*/, const ConnectionProperty& found) {
        const uint32_t role = role_of(found);
        if (role == 1) return found.serviceClass == gateway;
        return role == 2 && device != 0 && found.device == device && found.serviceClass == kHeadset;
    });
    return link.handle;
}

BtHandle service_level_connection(BtHandle shortcut) {
    const auto record = new_record_of(shortcut);
    if (!record) {
        trace_line("Fail to new memory!\r\n");
        return 0;
    }
    if (!read(*record)) return 0;
    return record->connection != 0 ? record->connection : link_of(*record);
}

// Changes the service only when it is not yet so; what the stack answers to that is not looked at.
bool switch_service(BtHandle server, uint16_t service_class, bool start) {
    if (static_cast<bool>(VlCm_IsServiceStarted(service_class)) == start) return false;
    start ? Btsdk_StartServer(server) : Btsdk_StopServer(server);
    return true;
}

bool switch_a2dp(uint16_t service_class, bool start) {
    if (both_directions_at_once(settings::common_file())) return false;
    if (service_class != kA2dpSink && service_class != kA2dpSource) return false;
    return switch_service(VlCm_GetLocSvcHdlBySvcCls(service_class), service_class, start);
}

bool switch_any(uint16_t service_class, bool start) {
    const BtHandle server = VlCm_GetLocSvcHdlBySvcCls(service_class);
    return server != 0 && switch_service(server, service_class, start);
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" uint32_t VlCm_GetCurrHFHSShc(uint32_t device) {
    return device != 0 ? shortcuts::voice_shortcut(device) : 0;
}

extern "C" BOOL VlCm_IsA2DPConnectionForbid(uint32_t device) { return shortcuts::is_a2dp_forbidden(device); }

extern "C" uint32_t VlCm_GetHSHFSLCConnHdl(uint32_t /*unused*/, uint32_t shortcut) {
    TraceScope scope("VlCm_GetHSHFSLCConnHdl");
    return shortcut != 0 ? shortcuts::service_level_connection(shortcut) : 0;
}

extern "C" BOOL VlCm_ControlA2DPService(uint16_t serviceClass, BOOL start) {
    return shortcuts::switch_a2dp(serviceClass, start != FALSE);
}

extern "C" BOOL VlCm_ControlA2DPHFPService(uint16_t serviceClass, BOOL start) {
    return shortcuts::switch_any(serviceClass, start != FALSE);
}
