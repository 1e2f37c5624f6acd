#include "facts.h"

#include "VlCommon.h"
#include "frame/unique.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

constexpr int kClassDigits = 4;
constexpr int kDeviceClassDigits = 6;
constexpr uint32_t kTextSize = 260;

std::string status_text(BOOL (*query)(uint32_t, wchar_t*, uint32_t), uint32_t handle) {
    wchar_t text[kTextSize] = L"";
    return query(handle, text, kTextSize) ? utf8(text) : std::string();
}

std::string name_text(uint32_t (*query)(uint32_t, wchar_t*, uint32_t), uint32_t handle) {
    wchar_t text[kTextSize] = L"";
    return query(handle, text, kTextSize) == VLCM_OK ? utf8(text) : std::string();
}

std::string kind_text(uint32_t device_class) {
    wchar_t text[kTextSize] = L"";
    return VlCm_GetDevTypeStrByDevClsW(device_class, text, kTextSize) ? utf8(text) : std::string();
}

const char* adapter_kind() {
    constexpr const char* kKinds[] = {"desktop computer", "laptop computer", "headset", "printer"};
    const unsigned int kind = VlCm_GetLocalDeviceClass();
    return kind < std::size(kKinds) ? kKinds[kind] : kKinds[0];
}

std::vector<BtHandle> shortcuts_of(BtHandle device) {
    std::vector<BtHandle> shortcuts(Btsdk_GetShortCutByDeviceHandle(device, 0, nullptr, 0));
    shortcuts.resize(Btsdk_GetShortCutByDeviceHandle(device, 0, shortcuts.data(),
                                                     static_cast<uint32_t>(shortcuts.size())));
    return shortcuts;
}

void add_shown(Json& list, Json item, bool all) {
    if (all || item.at("shown").get<bool>()) list.push_back(std::move(item));
}

std::string known_devices() {
    std::string list;
    for (const Device& device : all_devices()) {
        const uint8_t* address = device.property.address;
        list += "\n  " + address_text(address) + "  " + display_name(address);
    }
    return list.empty() ? "; no device is known" : "; known devices:" + list;
}

}  // namespace

std::string resource_text(unsigned int id) {
    const vl::UniqueModule library(VlCm_GetLangDepResLib(0));
    wchar_t text[kTextSize] = L"";
    return library && LoadStringW(library.get(), id, text, kTextSize) > 0 ? utf8(text) : std::string();
}

Json adapter_facts() {
    wchar_t status[kTextSize] = L"";
    VlCm_GetLocDevStatusStringW(status, kTextSize);
    return {{"status", utf8(status)}, {"icon", VlCm_GetLocDevIconIDEx()}, {"kind", adapter_kind()}};
}

Json server_facts(const Service& server) {
    const auto& [handle, service_class] = server;
    return {
        {"handle", handle},
        {"class", hex(service_class, kClassDigits)},
        {"name", name_text(VlCm_GetLocSvcDisplayNameW, handle)},
        {"status", status_text(VlCm_GetLocSvcStatusStringW, handle)},
        {"icon", VlCm_GetLocSvcIconIDEx(handle, service_class)},
        {"shown", VlCm_ShouldShowThisLocalServerEx(handle) != FALSE},
    };
}

Json device_facts(const Device& device) {
    const auto& [handle, property] = device;
    return {
        {"handle", handle},
        {"address", address_text(property.address)},
        {"name", display_name(property.address)},
        {"class", hex(property.deviceClass, kDeviceClassDigits)},
        {"kind", kind_text(property.deviceClass)},
        {"status", status_text(VlCm_GetRmtDevStatusStringW, handle)},
        {"icon", VlCm_GetRmtDevIconIDEx(handle, property.deviceClass)},
        {"shown", VlCm_ShouldFilterCurDevCls(property.deviceClass) == FALSE},
    };
}

Json service_facts(BtHandle device, const Service& service) {
    const auto& [handle, service_class] = service;
    return {
        {"handle", handle},
        {"class", hex(service_class, kClassDigits)},
        {"name", resource_text(VlCm_GetServiceClsNameStringID(service_class))},
        {"icon", VlCm_GetRmtSvcIconIDEx(handle, service_class, FALSE)},
        {"shown", VlCm_ShouldShowThisRemoteServiceEx(handle) != FALSE},
        {"installed", VlCm_IsInstalledService(device, handle) != FALSE},
    };
}

Json shortcut_facts(BtHandle shortcut) {
    uint16_t service_class = 0;
    VlCm_GetServiceClass(shortcut, VLCM_HANDLE_SHORTCUT, &service_class);
    return {
        {"handle", shortcut},
        {"class", hex(service_class, kClassDigits)},
        {"name", name_text(VlCm_GetRmtSvcDisplayNameW, shortcut)},
        {"status", status_text(VlCm_GetRmtSvcStatusStringW, shortcut)},
        {"icon", VlCm_GetRmtSvcIconIDEx(shortcut, service_class, TRUE)},
        {"shown", VlCm_ShouldShowThisRemoteService(service_class) != FALSE},
        {"default", VlCm_IsDefaultShortcut(shortcut) != FALSE},
        {"enabled", VlCm_IsShcEnabled(shortcut) != FALSE},
        {"connected", VlCm_IsShortcutConnected(shortcut) != FALSE},
    };
}

Json services_facts(BtHandle device, bool all) {
    Json list = Json::array();
    for (const Service& service : services_of(device)) add_shown(list, service_facts(device, service), all);
    return list;
}

Json shortcuts_facts(BtHandle device, bool all) {
    Json list = Json::array();
    for (const BtHandle shortcut : shortcuts_of(device)) add_shown(list, shortcut_facts(shortcut), all);
    return list;
}

Device device_of(const std::string& address_or_name) {
    const BtHandle handle = find_device(address_or_name);
    for (const Device& device : all_devices()) {
        if (device.handle == handle) return device;
    }
    throw NotFound("no device \"" + address_or_name + "\"" + known_devices());
}

void print_services(const Json& device, const char* indent) {
    for (const Json& service : device.at("services")) {
        printf("%sservice   %s  icon %-3s  %s%s\n", indent, shown(service, "class").c_str(),
               shown(service, "icon").c_str(), shown(service, "name").c_str(),
               service.at("shown").get<bool>() ? "" : "  (hidden)");
    }
    for (const Json& shortcut : device.at("shortcuts")) {
        printf("%sshortcut  %s  icon %-3s  %s: %s%s%s\n", indent, shown(shortcut, "class").c_str(),
               shown(shortcut, "icon").c_str(), shown(shortcut, "name").c_str(),
               shown(shortcut, "status").c_str(), shortcut.at("default").get<bool>() ? ", default" : "",
               shortcut.at("shown").get<bool>() ? "" : "  (hidden)");
    }
}

}  // namespace programs
