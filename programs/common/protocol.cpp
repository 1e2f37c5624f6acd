#include "protocol.h"

#include "VlSDK.h"

namespace programs {
namespace {

std::string setting(const char* section, const char* key, const char* fallback, const char* file) {
    char text[1024] = "";
    const uint32_t length = Btsdk_GetPrivateProfileString(section, key, fallback, text, sizeof text, file);
    return length == 0 ? "" : text;
}

}  // namespace

std::string common_setting(const char* section, const char* key, const char* fallback) {
    char file[VLCM_PATH_SIZE] = "";
    VlCm_GetCommonSettingFilePath(file, sizeof file);
    return setting(section, key, fallback, file);
}

std::string personal_setting(const char* section, const char* key) {
    char file[VLCM_PATH_SIZE] = "";
    VlCm_GetPersonalSettingFilePath(file, sizeof file);
    return setting(section, key, "", file);
}

}  // namespace programs
