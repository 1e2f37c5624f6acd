#include "devices.h"

#include "VlCommon.h"
#include "frame/unique.h"

#include <stdio.h>
#include <string.h>

namespace programs {

std::vector<Device> all_devices() {
    std::vector<Device> devices;
    const vl::RemoteDeviceEnum walk(Btsdk_StartEnumRemoteDevice(0, 0));
    while (walk) {
        RemoteDeviceProperty property = {};
        const BtHandle device = Btsdk_EnumRemoteDevice(walk.get(), &property);
        if (device == 0) break;
        devices.push_back({device, property});
    }
    return devices;
}

std::vector<Service> services_of(BtHandle device) {
    std::vector<Service> services;
    const vl::RemoteServiceEnum walk(Btsdk_StartEnumRemoteService(device));
    while (walk) {
        ServerAttributes attributes = {};
        const BtHandle service = Btsdk_EnumRemoteService(walk.get(), &attributes);
        if (service == 0) break;
        services.push_back({service, attributes.serviceClass});
    }
    return services;
}

std::vector<Service> local_servers() {
    std::vector<Service> servers;
    const vl::LocalServerEnum walk(Btsdk_StartEnumLocalServer());
    while (walk) {
        ServerAttributes attributes = {};
        const BtHandle server = Btsdk_EnumLocalServer(walk.get(), &attributes);
        if (server == 0) break;
        servers.push_back({server, attributes.serviceClass});
    }
    return servers;
}

std::vector<BtHandle> shortcuts_of(BtHandle device) {
    std::vector<BtHandle> shortcuts(Btsdk_GetShortCutByDeviceHandle(device, 0, nullptr, 0));
    shortcuts.resize(Btsdk_GetShortCutByDeviceHandle(device, 0, shortcuts.data(),
                                                     static_cast<uint32_t>(shortcuts.size())));
    return shortcuts;
}

BtHandle shortcut_to(BtHandle device, BtHandle service) {
    BtHandle shortcut = 0;
    return Btsdk_GetShortCutByServiceHandle(device, service, &shortcut, 1) == 0 ? 0 : shortcut;
}

std::string address_text(const uint8_t* address) {
    char text[18];
    snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", address[5], address[4], address[3],
             address[2], address[1], address[0]);
    return text;
}

std::string display_name(const uint8_t* address) {
    char name[VLCM_PATH_SIZE] = "";
    return VlCm_GetRmtDevDisplayName(address, name, sizeof name) == VLCM_OK ? name : std::string();
}

BtHandle find_device(const std::string& address_or_name) {
    BtHandle by_name = 0;
    for (const Device& device : all_devices()) {
        const uint8_t* address = device.property.address;
        if (_stricmp(address_text(address).c_str(), address_or_name.c_str()) == 0) return device.handle;
        if (by_name == 0 && display_name(address) == address_or_name) by_name = device.handle;
    }
    return by_name;
}

}  // namespace programs
