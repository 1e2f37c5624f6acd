#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

int room(const std::string& text) { return static_cast<int>(text.size()); }

std::wstring widened(UINT code_page, const std::string& text) {
    std::wstring result(text.size(), L'\0');  // never more UTF-16 units than bytes
    const int units = MultiByteToWideChar(code_page, 0, text.data(), room(text), result.data(), room(text));
    result.resize(static_cast<size_t>(units));
    return result;
}

std::string narrowed(UINT code_page, const std::wstring& text, BOOL* replaced) {
    std::string result(text.size() * 4, '\0');
    const int bytes = WideCharToMultiByte(code_page, 0, text.data(), static_cast<int>(text.size()),
                                          result.data(), room(result), nullptr, replaced);
    result.resize(static_cast<size_t>(bytes));
    return result;
}

}  // namespace

std::wstring wide(const std::string& utf8) { return widened(CP_UTF8, utf8); }

std::string utf8(const std::wstring& text) { return narrowed(CP_UTF8, text, nullptr); }

std::wstring wide_from_ansi(const std::string& ansi) { return widened(CP_ACP, ansi); }

std::string ansi(const std::wstring& text) {
    BOOL replaced = FALSE;
    std::string result = narrowed(CP_ACP, text, GetACP() == CP_UTF8 ? nullptr : &replaced);
    return replaced ? std::string() : result;
}

bool is_utf8(const std::string& text) {
    return text.empty() ||
           MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), room(text), nullptr, 0) != 0;
}

std::string utf8_from_narrow(const std::string& text) {
    return is_utf8(text) ? text : utf8(wide_from_ansi(text));
}

std::string hex(UINT_PTR value, int digits) {
    char text[32];
    snprintf(text, sizeof text, "0x%0*llx", digits, static_cast<unsigned long long>(value));
    return text;
}

std::wstring full_path(const std::wstring& path) {
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring result(size, L'\0');
    result.resize(size == 0 ? 0 : GetFullPathNameW(path.c_str(), size, result.data(), nullptr));
    return result;
}

}  // namespace programs
