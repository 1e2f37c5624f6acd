#include "event_log.h"

#include "frame/unique.h"
#include "text.h"

#include <stdio.h>
#include <windows.h>

namespace programs {
namespace {

std::wstring program_path() {
    wchar_t path[1024];
    const DWORD length = GetModuleFileNameW(nullptr, path, 1024);
    return {path, length};
}

// "C:\suite\VlTray.exe" -> "VlTray"
std::wstring program_name() {
    const std::wstring path = program_path();
    const std::wstring file = path.substr(path.find_last_of(L'\\') + 1);
    return file.substr(0, file.find_last_of(L'.'));
}

std::wstring environment(const wchar_t* name) {
    wchar_t value[MAX_PATH];
    const DWORD length = GetEnvironmentVariableW(name, value, MAX_PATH);
    return length < MAX_PATH ? std::wstring(value, length) : std::wstring();
}

// The same folder as the simulated stack's.
std::wstring home_folder() {
    const std::wstring home = environment(L"VLSIM_HOME");
    return home.empty() ? environment(L"LOCALAPPDATA") + L"\\vlsim" : home;
}

std::string stamp() {
    SYSTEMTIME now;
    GetSystemTime(&now);
    char text[64];
    snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u:%02u.%03uZ %lu ", now.wYear, now.wMonth, now.wDay,
             now.wHour, now.wMinute, now.wSecond, now.wMilliseconds, GetCurrentProcessId());
    return text;
}

}  // namespace

std::wstring program_folder() {
    const std::wstring path = program_path();
    return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring log_folder() {
    const std::wstring home = home_folder();
    std::wstring folder = home + L"\\log";
    CreateDirectoryW(home.c_str(), nullptr);
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

std::wstring log_path(const std::wstring& program) { return log_folder() + L"\\" + program + L".log"; }

EventLog::EventLog() : path_(log_path(program_name())) { line("started " + utf8(GetCommandLineW())); }

EventLog::~EventLog() { line("ended"); }

void EventLog::line(const std::string& text) const {
    std::string whole = stamp() + text;
    for (char& c : whole) {
        if (c == '\r' || c == '\n') c = ' ';
    }
    whole += "\r\n";
    vl::UniqueFile file(CreateFileW(path_.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    if (file) WriteFile(file.get(), whole.data(), static_cast<DWORD>(whole.size()), &written, nullptr);
}

}  // namespace programs
