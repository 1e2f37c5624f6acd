// Settings files: the Win32 operations themselves.
#include "VlSDK.h"
#include "operation.h"

#include <string>

namespace vlsim {
namespace {

uint32_t get_string(const char* section, const char* key, const char* fallback, char* text, uint32_t size,
                    const char* path) {
    return GetPrivateProfileStringA(section, key, fallback, text, size, path);
}

uint32_t get_int(const char* section, const char* key, int32_t fallback, const char* path) {
    return GetPrivateProfileIntA(section, key, fallback, path);
}

uint32_t get_section(const char* section, char* text, uint32_t size, const char* path) {
    return GetPrivateProfileSectionA(section, text, size, path);
}

BOOL write_string(const char* section, const char* key, const char* value, const char* path) {
    return WritePrivateProfileStringA(section, key, value, path);
}

BOOL write_int(const char* section, const char* key, int32_t value, const char* path) {
    return WritePrivateProfileStringA(section, key, std::to_string(value).c_str(), path);
}

BOOL get_struct(const char* section, const char* key, void* record, uint32_t size, const char* path) {
    return GetPrivateProfileStructA(section, key, record, size, path);
}

BOOL write_struct(const char* section, const char* key, void* record, uint32_t size, const char* path) {
    return WritePrivateProfileStructA(section, key, record, size, path);
}

}  // namespace
}  // namespace vlsim

using vlsim::call;

uint32_t Btsdk_GetPrivateProfileString(const char* section, const char* key, const char* fallback, char* text,
                                       uint32_t size, const char* path) {
    return call<"Btsdk_GetPrivateProfileString">(vlsim::get_string, section, key, fallback, text, size, path);
}

uint32_t Btsdk_GetPrivateProfileInt(const char* section, const char* key, int32_t fallback,
                                    const char* path) {
    return call<"Btsdk_GetPrivateProfileInt">(vlsim::get_int, section, key, fallback, path);
}

uint32_t Btsdk_GetPrivateProfileSection(const char* section, char* text, uint32_t size, const char* path) {
    return call<"Btsdk_GetPrivateProfileSection">(vlsim::get_section, section, text, size, path);
}

BOOL Btsdk_WritePrivateProfileString(const char* section, const char* key, const char* value,
                                     const char* path) {
    return call<"Btsdk_WritePrivateProfileString">(vlsim::write_string, section, key, value, path);
}

BOOL Btsdk_WritePrivateProfileInt(const char* section, const char* key, int32_t value, const char* path) {
    return call<"Btsdk_WritePrivateProfileInt">(vlsim::write_int, section, key, value, path);
}

BOOL Btsdk_GetPrivateProfileStruct(const char* section, const char* key, void* record, uint32_t size,
                                   const char* path) {
    return call<"Btsdk_GetPrivateProfileStruct">(vlsim::get_struct, section, key, record, size, path);
}

BOOL Btsdk_WritePrivateProfileStruct(const char* section, const char* key, void* record, uint32_t size,
                                     const char* path) {
    return call<"Btsdk_WritePrivateProfileStruct">(vlsim::write_struct, section, key, record, size, path);
}
