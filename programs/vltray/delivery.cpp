#include "delivery.h"

#include "send_list.h"
#include "text.h"

#include <windows.h>

namespace programs {
namespace {

std::string reason(DWORD error) {
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return missing ? "no such file" : "error " + std::to_string(error);
}

// "a.txt" -> "a (2).txt"
std::wstring numbered(const std::wstring& name, unsigned number) {
    const size_t dot = name.find_last_of(L'.');
    const size_t stem = dot == std::wstring::npos || dot == 0 ? name.size() : dot;
    return name.substr(0, stem) + L" (" + std::to_wstring(number) + L")" + name.substr(stem);
}

// Gives `file` the first free name. Moving never replaces a file, so that two deliveries at once get
// two names. Empty on failure.
std::wstring move_to_free_name(const std::wstring& file, const std::wstring& inbox,
                               const std::wstring& name) {
    constexpr unsigned kMost = 10000;
    for (unsigned number = 1; number <= kMost; ++number) {
        std::wstring target = inbox + L"\\" + (number == 1 ? name : numbered(name, number));
        if (MoveFileW(file.c_str(), target.c_str())) return target;
        const DWORD error = GetLastError();
        if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) return {};
    }
    return {};
}

}  // namespace

Delivery deliver(const std::wstring& source, const std::wstring& inbox) {
    wchar_t part[MAX_PATH];
    if (GetTempFileNameW(inbox.c_str(), L"in", 0, part) == 0) return {{}, "no room in the inbox"};
    Delivery result;
    if (!CopyFileW(source.c_str(), part, FALSE)) {
        result.failure = reason(GetLastError());
    } else {
        result.arrived = move_to_free_name(part, inbox, file_name(source));
        if (result.arrived.empty()) result.failure = reason(GetLastError());
    }
    if (result.arrived.empty()) DeleteFileW(part);
    return result;
}

}  // namespace programs
