#include "support/settings_scope.h"

#include <stdio.h>

namespace support {
namespace {

using PathExport = void (*)(char*, unsigned int);

const char* export_of(SettingsFile file) {
    switch (file) {
        case SettingsFile::kCommon:
            return "VlCm_GetCommonSettingFilePath";
        case SettingsFile::kPersonal:
            return "VlCm_GetPersonalSettingFilePath";
        case SettingsFile::kRemoteDevices:
            return "VlCm_GetRmoteDeviniPath";
        case SettingsFile::kShortcuts:
            return "VlCm_GetShortCutPath";
    }
    return "";
}

void make_folders_above(const std::string& path) {
    for (size_t end = path.find('\\', 3); end != std::string::npos; end = path.find('\\', end + 1)) {
        CreateDirectoryA(path.substr(0, end).c_str(), nullptr);
    }
}

}  // namespace

std::string settings_path(SettingsFile file) {
    HMODULE library = LoadLibraryA("VlCommon.dll");
    const auto query =
        reinterpret_cast<PathExport>(reinterpret_cast<void*>(GetProcAddress(library, export_of(file))));
    char path[MAX_PATH] = "";
    if (query) query(path, MAX_PATH);
    if (library) FreeLibrary(library);
    return path;
}

std::optional<std::string> read_file(const std::string& path) {
    FILE* file = fopen(path.c_str(), "rb");
    if (!file) return std::nullopt;
    std::string bytes;
    char part[4096];
    size_t got = 0;
    while ((got = fread(part, 1, sizeof part, file)) != 0) bytes.append(part, got);
    fclose(file);
    return bytes;
}

void write_file(const std::string& path, const std::string& bytes) {
    make_folders_above(path);
    FILE* file = fopen(path.c_str(), "wb");
    if (!file) return;
    fwrite(bytes.data(), 1, bytes.size(), file);
    fclose(file);
}

SettingsScope::~SettingsScope() {
    const auto kept = kept_;
    for (const auto& [path, bytes] : kept) content(path, bytes);
}

void SettingsScope::clear_all() {
    for (SettingsFile file : {SettingsFile::kCommon, SettingsFile::kPersonal, SettingsFile::kRemoteDevices,
                              SettingsFile::kShortcuts}) {
        content(settings_path(file), std::nullopt);
    }
}

void SettingsScope::keep(const std::string& path) { kept_.try_emplace(path, read_file(path)); }

void SettingsScope::content(const std::string& path, const std::optional<std::string>& bytes) {
    keep(path);
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, path.c_str());  // forget what is cached
    if (bytes) {
        write_file(path, *bytes);
    } else {
        DeleteFileA(path.c_str());
    }
}

void SettingsScope::set(SettingsFile file, const char* section, const char* key, const std::string& value) {
    set(settings_path(file), section, key, value);
}

void SettingsScope::set(const std::string& path, const char* section, const char* key,
                        const std::string& value) {
    keep(path);
    make_folders_above(path);
    WritePrivateProfileStringA(section, key, value.c_str(), path.c_str());
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, path.c_str());  // out to the disk
}

std::string SettingsScope::get(const std::string& path, const char* section, const char* key) {
    char value[1024] = "";
    GetPrivateProfileStringA(section, key, "", value, sizeof value, path.c_str());
    return value;
}

}  // namespace support
