#include "home_folder.h"

#include <windows.h>

#include <filesystem>

namespace vlsim {
namespace {

std::wstring environment(const wchar_t* name) {
    wchar_t value[MAX_PATH];
    const DWORD length = GetEnvironmentVariableW(name, value, MAX_PATH);
    return length < MAX_PATH ? std::wstring(value, length) : std::wstring();
}

std::wstring make_home_folder() {
    std::wstring folder = environment(L"VLSIM_HOME");
    if (folder.empty()) folder = environment(L"LOCALAPPDATA") + L"\\vlsim";
    std::error_code ignored;  // a folder that cannot be made shows when the file is written
    std::filesystem::create_directories(folder, ignored);
    return std::filesystem::absolute(folder, ignored).wstring();
}

}  // namespace

const std::wstring& home_folder() {
    static const std::wstring folder = make_home_folder();
    return folder;
}

}  // namespace vlsim
