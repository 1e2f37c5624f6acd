#include "commands.h"
#include "facts.h"
#include "frame/unique_com.h"
#include "item_list.h"
#include "shell_link.h"
#include "text.h"

#include <shlobj.h>
#include <stdio.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace programs {
namespace {

using vl::UniqueTaskMemory;

bool is_link(const std::filesystem::path& path) { return _wcsicmp(path.extension().c_str(), L".lnk") == 0; }

// A copy of a list of the shell or of the library, which is freed.
Bytes owned_list(LPITEMIDLIST list) {
    const UniqueTaskMemory owner(list);
    const auto* const first = reinterpret_cast<const uint8_t*>(list);
    return list == nullptr ? Bytes() : Bytes(first, first + ILGetSize(list));
}

// The target of a shell link; empty when the shell cannot read it.
Bytes list_of_link(const std::filesystem::path& path) {
    const vl::ComApartment apartment;
    const auto link = load_link(path.wstring());
    if (!link) return {};
    LPITEMIDLIST list = nullptr;
    return SUCCEEDED(link.get()->GetIDList(&list)) ? owned_list(list) : Bytes();
}

Bytes content_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Null for what is no pair of hexadecimal digits after another.
std::optional<Bytes> bytes_of_digits(const std::string& digits) {
    const bool all = digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    if (!all || digits.empty() || digits.size() % 2 != 0) return std::nullopt;
    Bytes bytes;
    for (size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<uint8_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

// The place of a device below an empty root, as the library builds it.
Bytes list_of_place(const std::string& device, const std::string& place) {
    const uint8_t root[] = {0, 0};
    const auto empty = reinterpret_cast<LPCITEMIDLIST>(root);
    const BtHandle handle = device_of(device).handle;
    if (place == "files") return owned_list(VlCm_GetAbsoluteFTPSvcPidlOf(handle, empty));
    const uint32_t flag = place == "phonebook" ? VLCM_PHONE_FOLDER_PHONEBOOK : VLCM_PHONE_FOLDER_MESSAGES;
    return owned_list(VlCm_GetAbsoluteMobileFolderPidlOf(handle, empty, flag));
}

Bytes list_of(const ItemSource& source) {
    if (!source.device.empty()) return list_of_place(source.device, source.place);
    const std::filesystem::path path(wide(source.list));
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) {
        return is_link(path) ? list_of_link(path) : content_of(path);
    }
    const std::optional<Bytes> bytes = bytes_of_digits(source.list);
    if (!bytes) throw NotFound("neither a file nor hexadecimal digits: \"" + source.list + "\"");
    return *bytes;
}

Json item_facts(const ListItem& item) {
    Json facts = {{"size", item.bytes.size()}};
    if (item.suite) {
        const VlShellItem& suite = *item.suite;
        facts["kind"] = kind_of(suite);
        facts["type"] = hex(suite.type);
        facts["deviceClass"] = hex(suite.deviceClass, 6);
        facts["serviceClass"] = hex(suite.serviceClass, 4);
        facts["address"] = address_text(suite.address);
        facts["serviceName"] = service_name(suite);
    } else if (item.shell_class) {
        facts["kind"] = "shell class";
        facts["class"] = *item.shell_class;
    } else {
        facts["kind"] = "another's";
    }
    facts["text"] = item_text(item);
    facts["bytes"] = hex_digits(item.bytes);
    return facts;
}

}  // namespace

Answer ask_item_show(const ItemSource& source) {
    const Bytes bytes = list_of(source);
    const ItemList list = decode_item_list(bytes);
    Json facts = {{"size", bytes.size()}, {"terminated", list.terminated}, {"items", Json::array()}};
    for (const ListItem& item : list.items) facts["items"].push_back(item_facts(item));
    return {std::move(facts), list.terminated ? kYes : kNo};
}

void print_item_show(const Json& facts) {
    for (const Json& item : facts.at("items")) printf("%s\n", shown(item, "text").c_str());
    if (facts.at("terminated").get<bool>()) return;
    printf(facts.at("size") == 0 ? "no item list\n" : "the list is broken here\n");
}

}  // namespace programs
