#include "VlCommon.h"
#include "commands.h"
#include "facts.h"
#include "protocol.h"

#include <stdio.h>
#include <stdlib.h>

namespace programs {
namespace {

Json shortcut_or_null(BtHandle shortcut) { return shortcut == 0 ? Json(nullptr) : shortcut_facts(shortcut); }

// The other devices with sound or pictures that are connected, as they are shown.
Json other_audio_devices(BtHandle device) {
    constexpr uint32_t kMajorClass = 0x1F00;
    constexpr uint32_t kAudioVideo = 0x0400;
    Json names = Json::array();
    for (const auto& [handle, property] : all_devices()) {
        if (handle == device || (property.deviceClass & kMajorClass) != kAudioVideo) continue;
        if (VlCm_GetConnectionNumByDevHdl(handle) != 0) names.push_back(display_name(property.address));
    }
    return names;
}

bool one_audio_device_only() {
    return atoi(common_setting("VlConfig", "IsSupportMultiAudioConnected", "1").c_str()) == 0;
}

// The rules in the library's order: the first one that forbids is the reason.
Json a2dp_facts(BtHandle device) {
    const bool forbidden = VlCm_IsA2DPConnectionForbid(device) != FALSE;
    Json others = other_audio_devices(device);
    Json facts = {{"forbidden", forbidden}, {"rule", nullptr}, {"setting", nullptr}};
    if (!forbidden) return facts;
    if (one_audio_device_only() && !others.empty()) {
        facts["rule"] = "another audio device is connected";
        facts["setting"] = "[VlConfig] IsSupportMultiAudioConnected";
        facts["others"] = std::move(others);
    } else {
        facts["rule"] = "an audio link is up";
        facts["setting"] = "[VLConfig] IsSupportBothA2dpSinkSource";
    }
    return facts;
}

void print_shortcut(const char* title, const Json& shortcut) {
    if (shortcut.is_null()) {
        printf("%-8s no shortcut\n", title);
        return;
    }
    printf("%-8s shortcut %s, %s %s: %s\n", title, shown(shortcut, "handle").c_str(),
           shown(shortcut, "class").c_str(), shown(shortcut, "name").c_str(),
           shown(shortcut, "status").c_str());
}

}  // namespace

Answer ask_connectable(const std::string& address_or_name) {
    const auto& [handle, property] = device_of(address_or_name);
    const BtHandle audio = VlCm_GetCurrHFHSShc(handle);
    const BtHandle network = VlCm_GetCurrPanShc(handle);
    return {{{"address", address_text(property.address)},
             {"name", display_name(property.address)},
             {"audio", shortcut_or_null(audio)},
             {"network", shortcut_or_null(network)},
             {"networkConnected", VlCm_IsConnectingPANOnThisDevice(handle) != 0},
             {"a2dp", a2dp_facts(handle)}},
            audio != 0 || network != 0 ? kYes : kNo};
}

void print_connectable(const Json& facts) {
    printf("%s  %s\n", shown(facts, "address").c_str(), shown(facts, "name").c_str());
    print_shortcut("audio", facts.at("audio"));
    print_shortcut("network", facts.at("network"));
    if (facts.at("networkConnected").get<bool>()) printf("         a network connection is live\n");
    const Json& a2dp = facts.at("a2dp");
    if (a2dp.at("forbidden").get<bool>()) {
        printf("A2DP     forbidden: %s (%s)\n", shown(a2dp, "rule").c_str(), shown(a2dp, "setting").c_str());
    } else {
        printf("A2DP     allowed\n");
    }
}

}  // namespace programs
