// The settings that the library read in a test, as the simulated stack saw it.
#pragma once

#include "support/sdk_log.h"
#include "support/settings_scope.h"

#include <string>
#include <vector>

// A read of a number or of a text: `Btsdk_...("General", "VlCustomVersion", 0, "C:\...\vlcs.ini")`.
inline std::string number_read(const char* section, const char* key, int fallback,
                               support::SettingsFile file = support::SettingsFile::kCommon) {
    return std::string("Btsdk_GetPrivateProfileInt(\"") + section + "\", \"" + key + "\", " +
           std::to_string(fallback) + ", \"" + support::settings_path(file) + "\")";
}
inline std::string text_read(
    const char* section, const char* key, unsigned size,
    const std::string& path = support::settings_path(support::SettingsFile::kCommon)) {
    return std::string("Btsdk_GetPrivateProfileString(\"") + section + "\", \"" + key + "\", \"\", out, " +
           std::to_string(size) + ", \"" + path + "\")";
}

// All calls of the stack since the test began, without their results.
inline std::vector<std::string> calls_made() {
    std::vector<std::string> calls = support::sdk_calls();
    for (std::string& call : calls) call.resize(call.rfind(" = "));
    return calls;
}
