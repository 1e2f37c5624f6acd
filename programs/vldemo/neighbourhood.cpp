#include "neighbourhood.h"

#include "frame/unique.h"

#include <stdio.h>

#include <functional>

namespace programs {
namespace {

using Visitor = std::function<bool(BtHandle, const RemoteDeviceProperty&)>;

// Calls `visit` for every device until it answers false.
void each_device(const Visitor& visit) {
    const vl::RemoteDeviceEnum devices(Btsdk_StartEnumRemoteDevice(0, 0));
    while (devices) {
        RemoteDeviceProperty property = {};
        const BtHandle device = Btsdk_EnumRemoteDevice(devices.get(), &property);
        if (device == 0 || !visit(device, property)) return;
    }
}

std::string address_text(const uint8_t* address) {
    char text[18];
    snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", address[5], address[4], address[3],
             address[2], address[1], address[0]);
    return text;
}

std::string name_text(const RemoteDeviceProperty& property) {
    const std::string name(property.name, strnlen(property.name, sizeof property.name));
    return name.empty() ? "(no name)" : name;
}

std::string service_name(BtHandle service) {
    ServerAttributes attributes = {};
    attributes.mask = kServerMaskName;
    if (Btsdk_GetRemoteServiceAttributes(service, &attributes) != 0) return {};
    return {attributes.name, strnlen(attributes.name, sizeof attributes.name)};
}

void show_services(BtHandle device) {
    const vl::RemoteServiceEnum services(Btsdk_StartEnumRemoteService(device));
    while (services) {
        ServerAttributes attributes = {};
        const BtHandle service = Btsdk_EnumRemoteService(services.get(), &attributes);
        if (service == 0) return;
        printf("        0x%04X  %s\n", attributes.serviceClass, service_name(service).c_str());
    }
}

}  // namespace

int show_neighbourhood() {
    size_t count = 0;
    each_device([&count](BtHandle device, const RemoteDeviceProperty& property) {
        printf("  %s  class 0x%06X  %s\n", address_text(property.address).c_str(),
               static_cast<unsigned>(property.deviceClass), name_text(property).c_str());
        show_services(device);
        ++count;
        return true;
    });
    printf("%zu devices\n", count);
    return count == 0 ? 1 : 0;
}

BtHandle find_device(const std::string& address_or_name) {
    BtHandle by_address = 0;
    BtHandle by_name = 0;
    each_device([&](BtHandle device, const RemoteDeviceProperty& property) {
        const bool same = _stricmp(address_text(property.address).c_str(), address_or_name.c_str()) == 0;
        if (same) by_address = device;
        if (by_name == 0 && name_text(property) == address_or_name) by_name = device;
        return by_address == 0;
    });
    return by_address != 0 ? by_address : by_name;
}

}  // namespace programs
