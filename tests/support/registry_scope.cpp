#include "support/settings_scope.h"

namespace support {
namespace {

// An open key for the length of a scope.
class Key {
public:
    Key(HKEY root, const char* path) { RegOpenKeyExA(root, path, 0, KEY_ALL_ACCESS, &key_); }
    ~Key() {
        if (key_) RegCloseKey(key_);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    [[nodiscard]] HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
};

bool exists(HKEY root, const std::string& path) { return Key(root, path.c_str()).get() != nullptr; }

// "A\B" of "A\B\C\D" when A exists and A\B does not.
std::string highest_missing(HKEY root, const std::string& path) {
    for (size_t end = path.find('\\'); end != std::string::npos; end = path.find('\\', end + 1)) {
        if (!exists(root, path.substr(0, end))) return path.substr(0, end);
    }
    return path;
}

}  // namespace

RegistryScope::~RegistryScope() {
    for (auto value = values_.rbegin(); value != values_.rend(); ++value) {
        const Key key(value->root, value->key.c_str());
        const char* name = value->name ? value->name->c_str() : nullptr;
        if (value->existed) {
            RegSetValueExA(key.get(), name, 0, value->type, value->bytes.data(),
                           static_cast<DWORD>(value->bytes.size()));
        } else {
            RegDeleteValueA(key.get(), name);
        }
    }
    for (auto key = made_keys_.rbegin(); key != made_keys_.rend(); ++key) {
        RegDeleteTreeA(key->first, key->second.c_str());
    }
}

void RegistryScope::make_key(HKEY root, const char* key) {
    if (exists(root, key)) return;
    made_keys_.emplace_back(root, highest_missing(root, key));
    HKEY made = nullptr;
    if (RegCreateKeyExA(root, key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &made, nullptr) == ERROR_SUCCESS) {
        RegCloseKey(made);
    }
}

void RegistryScope::keep_value(HKEY root, const char* key, const char* name) {
    Value value{root, key, std::nullopt, false, 0, {}};
    if (name) value.name = name;
    const Key open(root, key);
    DWORD size = 0;
    value.existed = RegQueryValueExA(open.get(), name, nullptr, &value.type, nullptr, &size) == ERROR_SUCCESS;
    value.bytes.resize(size);
    if (value.existed) RegQueryValueExA(open.get(), name, nullptr, nullptr, value.bytes.data(), &size);
    values_.push_back(value);
}

void RegistryScope::set(HKEY root, const char* key, const char* name, DWORD type,
                        const std::vector<BYTE>& bytes) {
    make_key(root, key);
    keep_value(root, key, name);
    const Key open(root, key);
    RegSetValueExA(open.get(), name, 0, type, bytes.data(), static_cast<DWORD>(bytes.size()));
}

void RegistryScope::set(HKEY root, const char* key, const char* name, const std::string& text) {
    set(root, key, name, REG_SZ, std::vector<BYTE>(text.c_str(), text.c_str() + text.size() + 1));
}

void RegistryScope::set(HKEY root, const char* key, const char* name, DWORD number) {
    const auto bytes = reinterpret_cast<const BYTE*>(&number);
    set(root, key, name, REG_DWORD, std::vector<BYTE>(bytes, bytes + sizeof number));
}

void RegistryScope::remove_value(HKEY root, const char* key, const char* name) {
    keep_value(root, key, name);
    const Key open(root, key);
    RegDeleteValueA(open.get(), name);
}

}  // namespace support
