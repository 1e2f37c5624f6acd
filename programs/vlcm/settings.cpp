#include "VlCommon.h"
#include "VlSDK.h"
#include "commands.h"
#include "protocol.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

struct Path {
    const char* name;
    void (*query)(char*, unsigned int);
};
const Path kPaths[] = {
    {"installation folder", VlCm_GetInstallDir},
    {"COM service folder", VlCm_GetCOMServiceDir},
    {"common settings", VlCm_GetCommonSettingFilePath},
    {"personal settings", VlCm_GetPersonalSettingFilePath},
    {"remote devices", VlCm_GetRmoteDeviniPath},
    {"shortcuts", VlCm_GetShortCutPath},
    {"provider data", VlCm_GetQVNProviderPath},
    {"mobile data", VlCm_GetQVNMobilePath},
};

struct Key {
    const char* section;
    const char* key;
    bool personal = false;
};
struct Switch {
    const char* name;
    int (*query)();
    std::vector<Key> keys;  // the deciding one first; none: it is fixed or the stack's
    const char* otherwise;  // where the value comes from without a key
};

// While the stack offers the function, only the user's own flag counts.
std::vector<Key> extended_information_keys() {
    const Key flag = {"IsSupportADFunction", "Flag", true};
    if (Btsdk_IsSupportADFunction() == 1) return {flag};
    return {flag, {"VlConfig", "DisableExtendVLInfoFunc"}, {"General", "CurrentVersion"}};
}

std::vector<Switch> switches() {
    return {
        {"edition", VlCm_GetCustomVersion, {{"General", "VlCustomVersion"}}, "default 0"},
        {"UART devices",
         VlCm_SupportUartDeviceFlag,
         {{"VLConfig", "NeedSupportUARTDevice"}},
         "default of the edition"},
        {"dialer window", VlCm_ShouldShowDialerUI, {{"vlconfig", "IsSupportDialerFunction"}}, "default 0"},
        {"basic printing", VlCm_IsSupportBPPFunction, {{"VlConfig", "IsSupportBPPFunction"}}, "default 0"},
        {"dial-up through a phone",
         VlCm_IsMobileDUNActive,
         {{"VLConfig", "NeedSupportMobileDUNFunc"}},
         "default of edition and mobile support"},
        {"mobile file transfer", VlCm_IsMobileFTPActive, {}, "fixed"},
        {"extended information", VlCm_IsSupportADFunction, extended_information_keys(),
         "the stack and the version"},
        {"mobile support", [] { return static_cast<int>(VlCm_IsMobileActive()); }, {}, "the stack"},
        {"64-bit library", VlCm_IsX64Platform, {}, "fixed"},
        {"Windows Vista or later", VlCm_IsWindowsVistaAbove, {}, "Windows"},
    };
}

Json path_facts(const Path& path) {
    char text[VLCM_PATH_SIZE] = "";
    path.query(text, sizeof text);
    return {{"name", path.name}, {"path", utf8(wide_from_ansi(text))}};
}

Json key_facts(const Key& key) {
    const std::string text =
        key.personal ? personal_setting(key.section, key.key) : common_setting(key.section, key.key, "");
    return {{"file", key.personal ? "personal settings" : "common settings"},
            {"section", key.section},
            {"key", key.key},
            {"text", text.empty() ? Json(nullptr) : Json(utf8_from_narrow(text))}};
}

// The first key that is set, as "[section] key".
Json origin(const Json& keys, const char* otherwise) {
    for (const Json& key : keys) {
        if (!key.at("text").is_null()) return "[" + shown(key, "section") + "] " + shown(key, "key");
    }
    return otherwise;
}

Json switch_facts(const Switch& each) {
    Json keys = Json::array();
    for (const Key& key : each.keys) keys.push_back(key_facts(key));
    Json from = origin(keys, each.otherwise);
    return {
        {"name", each.name}, {"value", each.query()}, {"from", std::move(from)}, {"keys", std::move(keys)}};
}

void print_key(const Json& key) {
    printf("    [%s] %s = %s (%s)\n", shown(key, "section").c_str(), shown(key, "key").c_str(),
           shown(key, "text").c_str(), shown(key, "file").c_str());
}

}  // namespace

Answer ask_settings() {
    Json paths = Json::array();
    for (const Path& path : kPaths) paths.push_back(path_facts(path));
    Json values = Json::array();
    for (const Switch& each : switches()) values.push_back(switch_facts(each));
    return {{{"paths", std::move(paths)}, {"switches", std::move(values)}}, kYes};
}

void print_settings(const Json& facts) {
    for (const Json& path : facts.at("paths")) {
        printf("%-24s %s\n", shown(path, "name").c_str(), shown(path, "path").c_str());
    }
    for (const Json& each : facts.at("switches")) {
        printf("%-24s %s (from: %s)\n", shown(each, "name").c_str(), shown(each, "value").c_str(),
               shown(each, "from").c_str());
        for (const Json& key : each.at("keys")) print_key(key);
    }
}

}  // namespace programs
