// What the plain and the wide form of a rule do differently: one overload each.
#pragma once

#include <limits.h>
#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>
#include <wchar.h>
#include <windows.h>

namespace vl::text {

inline size_t length_of(const char* text) { return strlen(text); }
inline size_t length_of(const wchar_t* text) { return wcslen(text); }

// Windows takes a signed size, and a negative one not alike in both forms.
inline int resource_size(size_t size) { return size < INT_MAX ? static_cast<int>(size) : INT_MAX; }

// Loads at most `size` characters, terminator included; a text that is missing leaves the buffer.
inline void load_string(HMODULE library, UINT id, char* buffer, size_t size) {
    LoadStringA(library, id, buffer, resource_size(size));
}
inline void load_string(HMODULE library, UINT id, wchar_t* buffer, size_t size) {
    LoadStringW(library, id, buffer, resource_size(size));
}

inline int show_message(HWND owner, const char* message, const char* caption, UINT type) {
    return MessageBoxA(owner, message, caption, type);
}
inline int show_message(HWND owner, const wchar_t* message, const wchar_t* caption, UINT type) {
    return MessageBoxW(owner, message, caption, type);
}

// Formats a text that came from a resource; what does not fit is cut, the result terminated.
template <size_t size, typename... Values>
void format(char (&buffer)[size], const char* pattern, Values... values) {
    _snprintf(buffer, size, pattern, values...);
    buffer[size - 1] = 0;
}
template <size_t size, typename... Values>
void format(wchar_t (&buffer)[size], const wchar_t* pattern, Values... values) {
    _snwprintf(buffer, size, pattern, values...);
    buffer[size - 1] = 0;
}

// Appends to a terminated text, cut to the buffer.
template <typename Char, size_t size>
void append(Char (&buffer)[size], const Char* text) {
    const size_t used = length_of(buffer);
    const size_t wanted = length_of(text);
    const size_t length = wanted < size - used ? wanted : size - used - 1;
    memcpy(buffer + used, text, length * sizeof(Char));
    buffer[used + length] = 0;
}

}  // namespace vl::text
