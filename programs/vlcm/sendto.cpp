#include "sendto.h"

#include "VlCommon.h"
#include "address.h"
#include "devices.h"
#include "facts.h"
#include "library_texts.h"
#include "shell_link.h"
#include "text.h"

#include <shlobj.h>
#include <stdio.h>

#include <algorithm>
#include <optional>

namespace programs {
namespace {

constexpr unsigned kFolderNameId = 667;

std::wstring send_to_folder() {
    wchar_t menu[MAX_PATH] = L"";
    SHGetFolderPathW(nullptr, CSIDL_SENDTO, nullptr, SHGFP_TYPE_DEFAULT, menu);
    const std::wstring name = library_text(kFolderNameId);
    if (menu[0] == 0 || name.empty()) throw NotFound("the Send-To folder has no name: is Vl2Res.dll there?");
    return std::wstring(menu) + L"\\" + name;
}

bool exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

std::vector<std::wstring> link_names(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry;
    const vl::UniqueFind listing(FindFirstFileW((folder + L"\\*.lnk").c_str(), &entry));
    if (!listing) return names;
    do {
        names.emplace_back(entry.cFileName);
    } while (FindNextFileW(listing.get(), &entry));
    std::sort(names.begin(), names.end());
    return names;
}

struct LinkTexts {
    std::wstring target, arguments;
};

// What a link holds; nothing: it is none.
std::optional<LinkTexts> read_link(const std::wstring& path) {
    const vl::ComApartment apartment;
    const auto link = load_link(path);
    if (!link) return std::nullopt;
    wchar_t target[MAX_PATH] = L"";
    wchar_t arguments[MAX_PATH] = L"";
    link.get()->GetPath(target, MAX_PATH, nullptr, SLGP_RAWPATH);
    link.get()->GetArguments(arguments, MAX_PATH);
    return LinkTexts{target, arguments};
}

// The device of a link; null for one that names none.
Json device_in(const std::wstring& path, const LinkTexts& texts) {
    uint8_t address[6] = {};
    if (texts.arguments.rfind(L"-DEV_ADDR=", 0) != 0) return nullptr;
    if (!VlCm_GetBtAddrByShcParam(utf8(path).c_str(), address)) return nullptr;
    const bool known = Btsdk_GetRemoteDeviceHandle(address) != 0;
    return {{"address", address_text(address)},
            {"known", known},
            {"name", known ? Json(display_name(address)) : Json(nullptr)}};
}

Json link_facts(const std::wstring& folder, const std::wstring& name) {
    const std::wstring path = folder + L"\\" + name;
    const std::optional<LinkTexts> texts = read_link(path);
    return {{"file", utf8(name)},
            {"target", texts ? Json(utf8(texts->target)) : Json(nullptr)},
            {"arguments", texts ? Json(utf8(texts->arguments)) : Json(nullptr)},
            {"device", texts ? device_in(path, *texts) : Json(nullptr)}};
}

Json folder_facts() {
    const std::wstring folder = send_to_folder();
    Json links = Json::array();
    for (const std::wstring& name : link_names(folder)) links.push_back(link_facts(folder, name));
    return {{"folder", utf8(folder)},
            {"exists", exists(folder)},
            {"namespaceLink", exists(folder + L".lnk")},
            {"links", std::move(links)}};
}

bool has_link_of(const Json& facts, const std::string& address) {
    const Json& links = facts.at("links");
    return std::any_of(links.begin(), links.end(), [&](const Json& link) {
        return !link.at("device").is_null() && link.at("device").at("address") == address;
    });
}

}  // namespace

Answer ask_send_to_links() {
    Json facts = folder_facts();
    const bool there = facts.at("exists");
    return {std::move(facts), there ? kYes : kNo};
}

Answer sync_send_to_links(const SendToRequest& request) {
    if (Btsdk_IsBluetoothReady() != 1) throw NotFound("Bluetooth is not ready");
    if (request.device.empty()) {
        VlCm_SyncSend2btShcForMultiUser();
        return ask_send_to_links();
    }
    const Address address = address_of(request.device);
    VlCm_SyncSend2btShc(address.data(), request.remove ? FALSE : TRUE);
    Json facts = folder_facts();
    const bool done = has_link_of(facts, address_text(address.data())) != request.remove;
    return {std::move(facts), done ? kYes : kNo};
}

void print_send_to_links(const Json& facts) {
    printf("%s%s\n", shown(facts, "folder").c_str(), facts.at("exists") ? "" : " (does not exist)");
    for (const Json& link : facts.at("links")) {
        const Json& device = link.at("device");
        const std::string whose = device.is_null() ? "no device"
                                  : device.at("known")
                                      ? shown(device, "address") + "  " + shown(device, "name")
                                      : shown(device, "address") + "  (unknown)";
        printf("  %s: %s\n", shown(link, "file").c_str(), whose.c_str());
    }
    printf("link to the namespace: %s\n", facts.at("namespaceLink") ? "yes" : "no");
}

}  // namespace programs
