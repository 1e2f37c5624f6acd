// Registry access that keeps the stack's promise: an operation that fails has written nothing.
#pragma once

#include <windows.h>

#include <cstdint>

namespace vlsim {

uint32_t open_key(const char* operation, HKEY root, const char* sub, HKEY* out);
uint32_t create_key(const char* operation, HKEY root, const char* sub, REGSAM view, HKEY* out);
uint32_t close_key(const char* operation, HKEY key);
uint32_t enum_key(HKEY key, uint32_t index, char* name, uint32_t size);
uint32_t enum_value(const char* operation, HKEY key, uint32_t index, char* name, uint32_t* name_length,
                    uint32_t* type, void* data, uint32_t* data_length);
uint32_t query_info(HKEY key, uint32_t* sub_keys, uint32_t* values);
uint32_t query_string(HKEY key, const char* value, char* text, uint32_t size);
uint32_t query_int(HKEY key, const char* value, uint32_t* number);
uint32_t query_binary(HKEY key, const char* value, void* data, uint32_t* size);

}  // namespace vlsim
