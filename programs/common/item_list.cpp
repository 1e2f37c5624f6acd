#include "item_list.h"

#include "devices.h"
#include "text.h"

#include <objbase.h>
#include <string.h>

namespace programs {
namespace {

struct Kind {
    uint32_t type;
    const char* text;
};

// clang-format off
constexpr Kind kKinds[] = {
    {VLCM_ITEM_PHONE_FOLDER_OTHER,  "phone folder"},
    {VLCM_ITEM_SERVICE_OF_DEVICE,   "service of a device"},
    {VLCM_ITEM_SPECIAL_DEVICE,      "device"},
    {VLCM_ITEM_SERVICE,             "service"},
    {VLCM_ITEM_SEND_TO,             "Send-To target"},
    {VLCM_ITEM_DEVICE,              "device"},
    {VLCM_ITEM_FILES_OF_DEVICE,     "files of a device"},
    {VLCM_ITEM_FILES,               "files"},
    {VLCM_ITEM_PHONEBOOK_FOLDER,    "phonebook folder"},
    {VLCM_ITEM_PHONEBOOK_OF_DEVICE, "phonebook of a device"},
    {VLCM_ITEM_MESSAGE_FOLDER,      "message folder"},
    {VLCM_ITEM_MESSAGES_OF_DEVICE,  "messages of a device"},
};
// clang-format on

constexpr size_t kSizeField = sizeof(uint16_t);

size_t size_at(const Bytes& bytes, size_t at) { return bytes[at] | static_cast<size_t>(bytes[at + 1]) << 8; }

std::optional<VlShellItem> suite_item(const Bytes& bytes) {
    VlShellItem item = {};
    if (bytes.size() != offsetof(VlShellItem, terminator)) return std::nullopt;
    memcpy(&item, bytes.data(), bytes.size());
    if (item.signature != VLCM_SHELL_ITEM_SIGNATURE) return std::nullopt;
    return item;
}

// The shell's items of a class: size, where the class is registered, a sort order, the class.
std::optional<std::string> shell_class(const Bytes& bytes) {
    constexpr size_t kClassOffset = 4;
    CLSID id;
    if (bytes.size() != kClassOffset + sizeof id) return std::nullopt;
    if (bytes[kSizeField] != 0x1F && bytes[kSizeField] != 0x2E) return std::nullopt;
    memcpy(&id, &bytes[kClassOffset], sizeof id);
    wchar_t text[40] = L"";
    StringFromGUID2(id, text, 40);
    return utf8(text);
}

std::string suite_text(const VlShellItem& item) {
    std::string text = kind_of(item) + " " + hex(item.type);
    if (item.type == VLCM_ITEM_SEND_TO) return text;
    text += " " + address_text(item.address) + " class " + hex(item.deviceClass, 6);
    if (item.serviceClass != 0) text += " service " + hex(item.serviceClass, 4);
    const std::string name = service_name(item);
    return name.empty() ? text : text + " \"" + name + "\"";
}

}  // namespace

ItemList decode_item_list(const Bytes& bytes) {
    ItemList list;
    size_t at = 0;
    while (bytes.size() - at >= kSizeField) {
        const size_t size = size_at(bytes, at);
        list.terminated = size == 0;
        if (size < kSizeField || size > bytes.size() - at) break;
        const auto first = bytes.begin() + static_cast<ptrdiff_t>(at);
        ListItem item{{first, first + static_cast<ptrdiff_t>(size)}, {}, {}};
        item.suite = suite_item(item.bytes);
        item.shell_class = shell_class(item.bytes);
        list.items.push_back(std::move(item));
        at += size;
    }
    return list;
}

std::string kind_of(const VlShellItem& item) {
    for (const Kind& row : kKinds) {
        if (row.type == item.type) return row.text;
    }
    return "unknown";
}

std::string service_name(const VlShellItem& item) {
    return utf8_from_narrow({item.serviceName, strnlen(item.serviceName, sizeof item.serviceName)});
}

std::string item_text(const ListItem& item) {
    if (item.suite) return suite_text(*item.suite);
    if (item.shell_class) return "shell class " + *item.shell_class;
    return "another's, " + std::to_string(item.bytes.size()) + " bytes";
}

std::string hex_digits(const Bytes& bytes) {
    std::string text;
    for (const uint8_t byte : bytes) text += hex(byte, 2).substr(2);
    return text;
}

}  // namespace programs
