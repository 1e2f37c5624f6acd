// Calls in words, for the log. What differs from run to run (addresses, handle values) is not shown.
#pragma once

#include "VlSDK.h"

#include <concepts>
#include <string>
#include <utility>

namespace vlsim {

// A 32-bit length that the caller sets and the operation overwrites. It travels like the pointer that
// it holds; its type lets the log show the length given.
struct InOutLength {
    uint32_t* at;
};

void append_value(std::string& text, const char* value);       // "quoted", or null
void append_value(std::string& text, const uint8_t* address);  // device address, byte 5 first
void append_value(std::string& text, const void* value);       // null, invalid or pointer
void append_value(std::string& text, HKEY key);                // a root's name, or key
void append_value(std::string& text, InOutLength length);      // {100}
void append_value(std::string& text, const ShortcutProperty* record);
void append_value(std::string& text, const ServerAttributes* record);

template <std::integral Number>
void append_value(std::string& text, Number value) {
    text += std::to_string(value);
}

// What an operation writes is not shown: null or out.
template <typename Written>
requires(!std::is_const_v<Written> && !std::is_void_v<Written> &&
         !std::is_same_v<Written, ShortcutProperty> && !std::is_same_v<Written, ServerAttributes> &&
         !std::is_same_v<Written, std::remove_pointer_t<HKEY>>) void append_value(std::string& text,
                                                                                  Written* value) {
    text += value ? "out" : "null";
}

inline void append_value(std::string& text, void* value) {
    append_value(text, static_cast<const void*>(value));
}
inline void append_value(std::string& text, ShortcutProperty* record) {
    append_value(text, static_cast<const ShortcutProperty*>(record));
}
inline void append_value(std::string& text, ServerAttributes* record) {
    append_value(text, static_cast<const ServerAttributes*>(record));
}

// `Btsdk_DeleteShortCut(7)`
template <typename... Values>
std::string call_text(const char* name, const Values&... values) {
    std::string text = name;
    [[maybe_unused]] const char* separator = "(";  // unused by a call without arguments
    ((text += std::exchange(separator, ", "), append_value(text, values)), ...);
    return text += sizeof...(values) == 0 ? "()" : ")";
}

}  // namespace vlsim
