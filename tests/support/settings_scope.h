// Settings files and registry values that a test sets; the destructors put back what was there.
#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace support {

enum class SettingsFile {
    kCommon,         // vlcs.ini
    kPersonal,       // vlps.ini
    kRemoteDevices,  // REMOTEDEVICE.ini
    kShortcuts,      // SHORTCUT.ini
};

// The file's path as the library tells it.
std::string settings_path(SettingsFile file);

class SettingsScope {
public:
    SettingsScope() = default;
    ~SettingsScope();
    SettingsScope(const SettingsScope&) = delete;
    SettingsScope& operator=(const SettingsScope&) = delete;

    // Takes the suite's four files away until the end.
    void clear_all();

    void set(SettingsFile file, const char* section, const char* key, const std::string& value);
    void common(const char* section, const char* key, const std::string& value) {
        set(SettingsFile::kCommon, section, key, value);
    }
    void personal(const char* section, const char* key, const std::string& value) {
        set(SettingsFile::kPersonal, section, key, value);
    }
    // Any other settings file.
    void set(const std::string& path, const char* section, const char* key, const std::string& value);
    // The whole content of a file; nullopt: no such file.
    void content(const std::string& path, const std::optional<std::string>& bytes);

    // What a key holds now; "" when there is none.
    [[nodiscard]] static std::string get(const std::string& path, const char* section, const char* key);
    [[nodiscard]] static std::string get(SettingsFile file, const char* section, const char* key) {
        return get(settings_path(file), section, key);
    }

private:
    void keep(const std::string& path);
    std::map<std::string, std::optional<std::string>> kept_;  // path -> content of before
};

// The content of a file; nullopt when there is none.
std::optional<std::string> read_file(const std::string& path);
// Makes the folders above it as well.
void write_file(const std::string& path, const std::string& bytes);

class RegistryScope {
public:
    RegistryScope() = default;
    ~RegistryScope();
    RegistryScope(const RegistryScope&) = delete;
    RegistryScope& operator=(const RegistryScope&) = delete;

    // name: null is the key's default value. Makes the key when it is missing.
    void set(HKEY root, const char* key, const char* name, const std::string& text);
    void set(HKEY root, const char* key, const char* name, DWORD number);
    void set(HKEY root, const char* key, const char* name, DWORD type, const std::vector<BYTE>& bytes);
    void make_key(HKEY root, const char* key);
    void remove_value(HKEY root, const char* key, const char* name);

private:
    struct Value {
        HKEY root;
        std::string key;
        std::optional<std::string> name;
        bool existed;
        DWORD type;
        std::vector<BYTE> bytes;
    };
    void keep_value(HKEY root, const char* key, const char* name);

    std::vector<std::pair<HKEY, std::string>> made_keys_;  // the highest key that was missing
    std::vector<Value> values_;
};

}  // namespace support
