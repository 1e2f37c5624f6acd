// The registry operations as they are exported; the rules are in registry.cpp.
#include "VlSDK.h"
#include "operation.h"
#include "registry.h"

namespace vlsim {
namespace {

uint32_t open(HKEY root, const char* sub, HKEY* key) { return open_key("Btsdk_RegOpenKey", root, sub, key); }

uint32_t create(HKEY root, const char* sub, HKEY* key) {
    return create_key("Btsdk_RegCreateKey", root, sub, 0, key);
}

uint32_t create_64(HKEY root, const char* sub, HKEY* key) {
    return create_key("Btsdk_RegCreateKeyForX64Reg", root, sub, KEY_WOW64_64KEY, key);
}

uint32_t close(HKEY key) { return close_key("Btsdk_RegCloseKey", key); }

uint32_t close_64(HKEY key) { return close_key("Btsdk_RegCloseKeyForX64Reg", key); }

uint32_t values(HKEY key, uint32_t index, char* name, InOutLength name_length, uint32_t* type, void* data,
                InOutLength data_length) {
    return enum_value("Btsdk_RegEnumValue", key, index, name, name_length.at, type, data, data_length.at);
}

uint32_t values_64(HKEY key, uint32_t index, char* name, InOutLength name_length, uint32_t* type, void* data,
                   InOutLength data_length) {
    return enum_value("Btsdk_RegEnumValueForX64Reg", key, index, name, name_length.at, type, data,
                      data_length.at);
}

uint32_t binary(HKEY key, const char* value, void* data, InOutLength size) {
    return query_binary(key, value, data, size.at);
}

}  // namespace
}  // namespace vlsim

using vlsim::call;
using vlsim::InOutLength;

uint32_t Btsdk_RegOpenKey(HKEY root, const char* sub, HKEY* key) {
    return call<"Btsdk_RegOpenKey">(vlsim::open, root, sub, key);
}

uint32_t Btsdk_RegCreateKey(HKEY root, const char* sub, HKEY* key) {
    return call<"Btsdk_RegCreateKey">(vlsim::create, root, sub, key);
}

uint32_t Btsdk_RegCloseKey(HKEY key) { return call<"Btsdk_RegCloseKey">(vlsim::close, key); }

uint32_t Btsdk_RegEnumKey(HKEY key, uint32_t index, char* name, uint32_t size) {
    return call<"Btsdk_RegEnumKey">(vlsim::enum_key, key, index, name, size);
}

uint32_t Btsdk_RegEnumValue(HKEY key, uint32_t index, char* name, uint32_t* nameLength, uint32_t* type,
                            void* data, uint32_t* dataLength) {
    return call<"Btsdk_RegEnumValue">(vlsim::values, key, index, name, InOutLength{nameLength}, type, data,
                                      InOutLength{dataLength});
}

uint32_t Btsdk_RegQueryInfoKey(HKEY key, uint32_t* subKeys, uint32_t* values) {
    return call<"Btsdk_RegQueryInfoKey">(vlsim::query_info, key, subKeys, values);
}

uint32_t Btsdk_RegQueryStringValue(HKEY key, const char* value, char* text, uint32_t size) {
    return call<"Btsdk_RegQueryStringValue">(vlsim::query_string, key, value, text, size);
}

uint32_t Btsdk_RegQueryIntValue(HKEY key, const char* value, uint32_t* number) {
    return call<"Btsdk_RegQueryIntValue">(vlsim::query_int, key, value, number);
}

uint32_t Btsdk_RegQueryBinaryValue(HKEY key, const char* value, void* data, uint32_t* size) {
    return call<"Btsdk_RegQueryBinaryValue">(vlsim::binary, key, value, data, InOutLength{size});
}

uint32_t Btsdk_RegCreateKeyForX64Reg(HKEY root, const char* sub, HKEY* key) {
    return call<"Btsdk_RegCreateKeyForX64Reg">(vlsim::create_64, root, sub, key);
}

uint32_t Btsdk_RegEnumValueForX64Reg(HKEY key, uint32_t index, char* name, uint32_t* nameLength,
                                     uint32_t* type, void* data, uint32_t* dataLength) {
    return call<"Btsdk_RegEnumValueForX64Reg">(vlsim::values_64, key, index, name, InOutLength{nameLength},
                                               type, data, InOutLength{dataLength});
}

uint32_t Btsdk_RegCloseKeyForX64Reg(HKEY key) {
    return call<"Btsdk_RegCloseKeyForX64Reg">(vlsim::close_64, key);
}
