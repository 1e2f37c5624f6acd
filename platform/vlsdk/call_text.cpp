#include "call_text.h"

#include <cstdio>

namespace vlsim {
namespace {

constexpr size_t kLongestText = 400;

struct RootName {
    uint32_t low;
    const char* name;
};
constexpr RootName kRoots[] = {
    {0x80000000, "HKEY_CLASSES_ROOT"},
    {0x80000001, "HKEY_CURRENT_USER"},
    {0x80000002, "HKEY_LOCAL_MACHINE"},
    {0x80000003, "HKEY_USERS"},
};

// `{shortcut 7, mask 16}`: the members that are not zero.
class Members {
public:
    explicit Members(std::string& text) : text_(text) { text_ += '{'; }
    ~Members() { text_ += '}'; }
    Members(const Members&) = delete;
    Members& operator=(const Members&) = delete;

    void number(const char* name, uint32_t value) {
        if (value != 0) start(name) += std::to_string(value);
    }
    void quoted(const char* name, const char* value, size_t room) {
        const std::string bounded(value, strnlen(value, room));
        if (!bounded.empty()) append_value(start(name), bounded.c_str());
    }

private:
    std::string& start(const char* name) {
        if (text_.back() != '{') text_ += ", ";
        return (text_ += name) += ' ';
    }
    std::string& text_;
};

}  // namespace

void append_value(std::string& text, const char* value) {
    if (!value) {
        text += "null";
        return;
    }
    text += '"';
    text.append(value, strnlen(value, kLongestText));
    text += '"';
}

void append_value(std::string& text, const uint8_t* address) {
    if (!address) {
        text += "null";
        return;
    }
    char shown[18];
    std::snprintf(shown, sizeof shown, "%02X:%02X:%02X:%02X:%02X:%02X", address[5], address[4], address[3],
                  address[2], address[1], address[0]);
    text += shown;
}

void append_value(std::string& text, const void* value) {
    text += !value ? "null" : value == INVALID_HANDLE_VALUE ? "invalid" : "pointer";
}

void append_value(std::string& text, HKEY key) {
    for (const RootName& root : kRoots) {
        if (static_cast<uint32_t>(reinterpret_cast<uintptr_t>(key)) == root.low) {
            text += root.name;
            return;
        }
    }
    text += key ? "key" : "null";
}

void append_value(std::string& text, InOutLength length) {
    text += length.at ? '{' + std::to_string(*length.at) + '}' : "null";
}

void append_value(std::string& text, const ShortcutProperty* record) {
    if (!record) {
        text += "null";
        return;
    }
    Members members(text);
    members.number("shortcut", record->shortcut);
    members.number("device", record->device);
    members.number("service", record->service);
    members.number("class", record->serviceClass);
    members.number("mask", record->mask);
    members.quoted("name", record->name, sizeof record->name);
    members.quoted("serviceName", record->serviceName, sizeof record->serviceName);
    members.number("deviceClass", record->deviceClass);
    members.number("default", record->isDefault);
    members.number("parameterLength", record->parameterLength);
}

void append_value(std::string& text, const ServerAttributes* record) {
    if (!record) {
        text += "null";
        return;
    }
    Members members(text);
    members.number("mask", record->mask);
}

}  // namespace vlsim
