#include "VlCommon.h"
#include "commands.h"
#include "facts.h"

#include <stdio.h>

namespace programs {

Answer ask_device(const std::string& address_or_name) {
    const Device device = device_of(address_or_name);
    const auto& [handle, property] = device;
    Json facts = device_facts(device);
    facts["majorKind"] = resource_text(VlCm_GetDevMajorClsNameID(property.deviceClass));
    facts["type"] = VlCm_GetRemoteDeviceTypeByDevHandle(handle);
    facts["mobile"] = VlCm_IsMobileDevice(property.deviceClass) != FALSE;
    facts["default"] = VlCm_IsDefaultDevice(handle) != FALSE;
    facts["added"] = VlCm_IsAddedDevice(handle) != FALSE;
    facts["connections"] = VlCm_GetConnectionNumByDevHdl(handle);
    facts["offersDefaultConnection"] = VlCm_ShouldShowDefaultConn(handle) != FALSE;
    facts["services"] = services_facts(handle, true);
    facts["shortcuts"] = shortcuts_facts(handle, true);
    return {std::move(facts), kYes};
}

void print_device(const Json& facts) {
    for (const auto& [member, value] : facts.items()) {
        if (!value.is_array()) printf("%-24s %s\n", member.c_str(), shown(facts, member.c_str()).c_str());
    }
    print_services(facts, "");
}

}  // namespace programs
