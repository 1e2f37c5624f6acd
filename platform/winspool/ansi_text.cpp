#include "ansi_text.h"

#include <windows.h>

namespace vlspool {
namespace {

std::string converted(const std::string& text, UINT from, UINT to) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), 0);
    wide.resize(static_cast<size_t>(MultiByteToWideChar(from, 0, text.data(), length, wide.data(), length)));
    std::string result(wide.size() * 3, 0);
    result.resize(static_cast<size_t>(WideCharToMultiByte(to, 0, wide.data(), static_cast<int>(wide.size()),
                                                          result.data(), static_cast<int>(result.size()),
                                                          nullptr, nullptr)));
    return result;
}

}  // namespace

std::string ansi_text(const std::string& utf8) { return converted(utf8, CP_UTF8, CP_ACP); }

std::string utf8_text(const char* ansi) { return ansi ? converted(ansi, CP_ACP, CP_UTF8) : std::string(); }

}  // namespace vlspool
