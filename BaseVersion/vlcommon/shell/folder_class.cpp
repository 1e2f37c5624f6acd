#include "folder_class.h"

#include "frame/frame.h"
#include "text/wide_text.h"

#include <objbase.h>

#include <array>

namespace vl::shell {
namespace {

constexpr char kCacheKey[] = "Software\\VLShellFolderCache";

using Address = std::array<uint8_t, 6>;

// A value of the cache: a class identifier as its name, a device address as its data.
struct CacheValue {
    char name[kPathSize] = {};
    Address data = {};
    uint32_t data_length = Address{}.size();
};

// One look at a value. Longer names and data do not fit and give ERROR_MORE_DATA.
uint32_t read_value(HKEY cache, uint32_t index, CacheValue& value) {
    uint32_t name_length = sizeof value.name;
    uint32_t type = 0;
    return Btsdk_RegEnumValueForX64Reg(cache, index, value.name, &name_length, &type, value.data.data(),
                                       &value.data_length);
}

bool belongs_to(const CacheValue& value, const uint8_t* address) {
    return value.data_length == value.data.size() &&
           memcmp(value.data.data(), address, value.data.size()) == 0;
}

// Leaves the device's value in `value`; false when the cache ends without one.
bool find_value(HKEY cache, const uint8_t* address, CacheValue& value) {
    for (uint32_t index = 0;; ++index) {
        value = {};
        const uint32_t result = read_value(cache, index, value);
        if (result == ERROR_MORE_DATA) continue;
        if (result != ERROR_SUCCESS) return false;
        if (belongs_to(value, address)) return true;
    }
}

CLSID class_of_name(const char* name) {
    wchar_t text[kPathSize] = {};
    text::local_to_wide(text, kPathSize, name);
    CLSID id{};
    return SUCCEEDED(CLSIDFromString(text, &id)) ? id : CLSID{};
}

#pragma pack(push, 1)
// An item that the shell itself understands: a class behind two bytes that tell where it is registered.
struct ClassItem {
    uint16_t size;
    uint8_t kind[2];
    CLSID id;
};
struct DeviceFolderList {
    ClassItem computer;
    ClassItem folder;
    uint16_t terminator;
};
#pragma pack(pop)
static_assert(sizeof(ClassItem) == 20 && sizeof(DeviceFolderList) == 42);

constexpr CLSID kMyComputer = {0x20D04FE0, 0x3AEA, 0x1069, {0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D}};

}  // namespace

// The 64-bit library runs on 64-bit Windows alone: the cache is in the 64-bit view.
BOOL FindShellFolderClsid(const uint8_t* address, uint32_t length, CLSID* found) {
    if (address == nullptr || length != Address{}.size()) return FALSE;
    UniqueSdkRegistryKey64 cache;
    if (Btsdk_RegCreateKeyForX64Reg(HKEY_LOCAL_MACHINE, kCacheKey, cache.receive()) != ERROR_SUCCESS) {
        (void)cache.release();
        return FALSE;
    }
    CacheValue value;
    if (!find_value(cache.get(), address, value)) return FALSE;
    if (found != nullptr) *found = class_of_name(value.name);
    return TRUE;
}

UniqueItemList GetDeviceFolderPidl(const uint8_t* address, uint32_t length) {
    if (address == nullptr || length != Address{}.size()) return {};
    DeviceFolderList folder{};
    folder.computer = {sizeof(ClassItem), {0x1F, 0x50}, kMyComputer};
    folder.folder = {sizeof(ClassItem), {0x2E, 0x80}, {}};
    CLSID id{};
    if (FindShellFolderClsid(address, length, &id)) folder.folder.id = id;
    UniqueItemList list(static_cast<LPITEMIDLIST>(Vlcm_SHAlloc(sizeof folder)));
    if (list) memcpy(list.get(), &folder, sizeof folder);
    return list;
}

}  // namespace vl::shell
