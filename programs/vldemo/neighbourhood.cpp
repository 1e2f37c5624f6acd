#include "neighbourhood.h"

#include "devices.h"

#include <stdio.h>
#include <string.h>

namespace programs {
namespace {

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
    for (const Service& service : services_of(device)) {
        printf("        0x%04X  %s\n", service.service_class, service_name(service.handle).c_str());
    }
}

}  // namespace

int show_neighbourhood() {
    const std::vector<Device> devices = all_devices();
    for (const auto& [device, property] : devices) {
        printf("  %s  class 0x%06X  %s\n", address_text(property.address).c_str(),
               static_cast<unsigned>(property.deviceClass), name_text(property).c_str());
        show_services(device);
    }
    printf("%zu devices\n", devices.size());
    return devices.empty() ? 1 : 0;
}

}  // namespace programs
