// The devices that the stack knows, and what belongs to them.
#pragma once

#include "VlSDK.h"

#include <string>
#include <vector>

namespace programs {

struct Device {
    BtHandle handle;
    RemoteDeviceProperty property;
};
[[nodiscard]] std::vector<Device> all_devices();

// A remote service or a local server.
struct Service {
    BtHandle handle;
    uint16_t service_class;
};
[[nodiscard]] std::vector<Service> services_of(BtHandle device);
[[nodiscard]] std::vector<Service> local_servers();
// All connection shortcuts of a device, and one to a service: 0 when there is none.
[[nodiscard]] std::vector<BtHandle> shortcuts_of(BtHandle device);
[[nodiscard]] BtHandle shortcut_to(BtHandle device, BtHandle service);

// "00:11:22:33:44:55", byte 5 first.
[[nodiscard]] std::string address_text(const uint8_t* address);
// The name under which a device is shown, UTF-8: its address when it has none.
[[nodiscard]] std::string display_name(const uint8_t* address);

// The device of an address (as shown, in any case) or, else, the first of a name. 0: unknown.
[[nodiscard]] BtHandle find_device(const std::string& address_or_name);

}  // namespace programs
