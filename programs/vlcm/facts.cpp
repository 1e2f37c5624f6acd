#include "facts.h"

#include "VlCommon.h"
#include "library_texts.h"
#include "text.h"

#include <stdio.h>

namespace programs {
namespace {

constexpr int kClassDigits = 4;
constexpr int kDeviceClassDigits = 6;

const char* adapter_kind() {
    constexpr const char* kKinds[] = {"desktop computer", "laptop computer", "headset", "printer"};
    const unsigned int kind = VlCm_GetLocalDeviceClass();
    return kind < std::size(kKinds) ? kKinds[kind] : kKinds[0];
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

std::string resource_text(unsigned int id) { return utf8(library_text(id)); }

Json adapter_facts() {
    return {{"status", utf8(adapter_status())}, {"icon", VlCm_GetLocDevIconIDEx()}, {"kind", adapter_kind()}};
}

Json server_facts(const Service& server) {
    const auto& [handle, service_class] = server;
    return {
        {"handle", handle},
        {"class", hex(service_class, kClassDigits)},
        {"name", utf8(server_name(handle))},
        {"status", utf8(server_status(handle))},
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
        {"kind", utf8(device_kind(property.deviceClass))},
        {"status", utf8(device_status(handle))},
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
        {"name", utf8(shortcut_name(shortcut))},
        {"status", utf8(shortcut_status(shortcut))},
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
