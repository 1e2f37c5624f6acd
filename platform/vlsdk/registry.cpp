#include "registry.h"

#include "live.h"
#include "misuse.h"
#include "results.h"

#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace vlsim {
namespace {

constexpr DWORD kNameRoom = 16384;  // longer than any name of a value

Ledger<HKEY, bool> keys;

uint32_t code(LSTATUS status) { return static_cast<uint32_t>(status); }

bool is_root(HKEY key) { return (reinterpret_cast<uintptr_t>(key) & 0x80000000) != 0; }

struct Value {
    DWORD type;
    std::vector<uint8_t> data;
};

uint32_t read_value(HKEY key, const char* name, Value& value) {
    DWORD size = 0;
    LSTATUS status = RegQueryValueExA(key, name, nullptr, &value.type, nullptr, &size);
    if (status != ERROR_SUCCESS) return code(status);
    value.data.resize(size);
    status = RegQueryValueExA(key, name, nullptr, &value.type, value.data.data(), &size);
    value.data.resize(size);
    return code(status);
}

}  // namespace

uint32_t open_key(const char* operation, HKEY root, const char* sub, HKEY* out) {
    if (!present(operation, "key", out)) return kNullPointer;
    HKEY opened = nullptr;
    LSTATUS status = RegOpenKeyExA(root, sub, 0, KEY_READ | KEY_WRITE, &opened);
    if (status == ERROR_ACCESS_DENIED) status = RegOpenKeyExA(root, sub, 0, KEY_READ, &opened);
    if (status != ERROR_SUCCESS) return code(status);
    keys.add(opened, true);
    *out = opened;
    return kDone;
}

uint32_t create_key(const char* operation, HKEY root, const char* sub, REGSAM view, HKEY* out) {
    if (!present(operation, "key", out) || !present(operation, "sub-key", sub)) return kNullPointer;
    HKEY created = nullptr;
    const LSTATUS status =
        RegCreateKeyExA(root, sub, 0, nullptr, 0, KEY_READ | KEY_WRITE | view, nullptr, &created, nullptr);
    if (status != ERROR_SUCCESS) return code(status);
    keys.add(created, true);
    *out = created;
    return kDone;
}

uint32_t close_key(const char* operation, HKEY key) {
    if (is_root(key)) return kDone;
    if (keys.remove(key)) return code(RegCloseKey(key));
    report_misuse(operation, "key closed twice or not opened here");
    return ERROR_INVALID_HANDLE;
}

uint32_t enum_key(HKEY key, uint32_t index, char* name, uint32_t size) {
    if (!present("Btsdk_RegEnumKey", "name", name)) return kNullPointer;
    char found[kNameRoom];
    DWORD length = kNameRoom;
    const LSTATUS status = RegEnumKeyExA(key, index, found, &length, nullptr, nullptr, nullptr, nullptr);
    if (status != ERROR_SUCCESS) return code(status);
    if (length >= size) return ERROR_MORE_DATA;
    std::memcpy(name, found, length + 1);
    return kDone;
}

uint32_t enum_value(const char* operation, HKEY key, uint32_t index, char* name, uint32_t* name_length,
                    uint32_t* type, void* data, uint32_t* data_length) {
    if (!present(operation, "name", name) || !present(operation, "name length", name_length)) {
        return kNullPointer;
    }
    if (data && !present(operation, "data length", data_length)) return kNullPointer;
    std::vector<char> found(kNameRoom);
    DWORD found_length = kNameRoom;
    DWORD found_type = 0;
    DWORD size = 0;
    const LSTATUS status =
        RegEnumValueA(key, index, found.data(), &found_length, nullptr, &found_type, nullptr, &size);
    if (status != ERROR_SUCCESS) return code(status);
    Value value{};
    const uint32_t read = read_value(key, found.data(), value);
    if (read != kDone) return read;
    if (found_length >= *name_length) return ERROR_MORE_DATA;
    if (data && value.data.size() > *data_length) return ERROR_MORE_DATA;
    std::memcpy(name, found.data(), found_length + 1);
    *name_length = found_length;
    if (type) *type = value.type;
    if (data && !value.data.empty()) std::memcpy(data, value.data.data(), value.data.size());
    if (data_length) *data_length = static_cast<uint32_t>(value.data.size());
    return kDone;
}

uint32_t query_info(HKEY key, uint32_t* sub_keys, uint32_t* values) {
    DWORD sub_key_count = 0;
    DWORD value_count = 0;
    const LSTATUS status = RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &sub_key_count, nullptr, nullptr,
                                            &value_count, nullptr, nullptr, nullptr, nullptr);
    if (status != ERROR_SUCCESS) return code(status);
    if (sub_keys) *sub_keys = sub_key_count;
    if (values) *values = value_count;
    return kDone;
}

uint32_t query_string(HKEY key, const char* value, char* text, uint32_t size) {
    if (!present("Btsdk_RegQueryStringValue", "text", text)) return kNullPointer;
    Value found{};
    const uint32_t status = read_value(key, value, found);
    if (status != kDone) return status;
    if (found.type != REG_SZ && found.type != REG_EXPAND_SZ) return ERROR_INVALID_DATATYPE;
    const auto* bytes = reinterpret_cast<const char*>(found.data.data());
    const std::string whole(bytes, strnlen(bytes, found.data.size()));
    if (whole.size() >= size) return ERROR_MORE_DATA;
    std::memcpy(text, whole.c_str(), whole.size() + 1);
    return kDone;
}

uint32_t query_int(HKEY key, const char* value, uint32_t* number) {
    if (!present("Btsdk_RegQueryIntValue", "number", number)) return kNullPointer;
    Value found{};
    const uint32_t status = read_value(key, value, found);
    if (status != kDone) return status;
    if (found.type != REG_DWORD || found.data.size() != sizeof *number) return ERROR_INVALID_DATATYPE;
    std::memcpy(number, found.data.data(), sizeof *number);
    return kDone;
}

uint32_t query_binary(HKEY key, const char* value, void* data, uint32_t* size) {
    static constexpr const char* kName = "Btsdk_RegQueryBinaryValue";
    if (!present(kName, "data", data) || !present(kName, "size", size)) return kNullPointer;
    Value found{};
    const uint32_t status = read_value(key, value, found);
    if (status != kDone) return status;
    if (found.data.size() > *size) return ERROR_MORE_DATA;
    if (!found.data.empty()) std::memcpy(data, found.data.data(), found.data.size());
    *size = static_cast<uint32_t>(found.data.size());
    return kDone;
}

uint32_t live_keys() { return keys.count(); }

}  // namespace vlsim
