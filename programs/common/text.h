// Conversions between the narrow text of the suite's interfaces and UTF-16. Log and console are UTF-8.
#pragma once

#include <windows.h>

#include <string>

namespace programs {

[[nodiscard]] std::wstring wide(const std::string& utf8);
[[nodiscard]] std::string utf8(const std::wstring& text);
// Settings files and window titles are in the ANSI code page.
[[nodiscard]] std::wstring wide_from_ansi(const std::string& ansi);
// Empty when a character does not exist in the ANSI code page.
[[nodiscard]] std::string ansi(const std::wstring& text);
// Whether `text` is well-formed UTF-8.
[[nodiscard]] bool is_utf8(const std::string& text);
// For settings and other narrow text of unsure origin: UTF-8 stays, anything else is ANSI.
[[nodiscard]] std::string utf8_from_narrow(const std::string& text);
// "0x0000002a"
[[nodiscard]] std::string hex(UINT_PTR value, int digits = 8);
// Absolute form of a path; a relative one is seen from the current folder. Empty on failure.
[[nodiscard]] std::wstring full_path(const std::wstring& path);

}  // namespace programs
