// Facts about one object each, as the library tells them.
#pragma once

#include "answer.h"
#include "devices.h"

namespace programs {

// A text of the language resource library; empty when there is none.
[[nodiscard]] std::string resource_text(unsigned int id);

[[nodiscard]] Json adapter_facts();
[[nodiscard]] Json server_facts(const Service& server);
[[nodiscard]] Json device_facts(const Device& device);
[[nodiscard]] Json service_facts(BtHandle device, const Service& service);
[[nodiscard]] Json shortcut_facts(BtHandle shortcut);

// The facts of all of a device's services and shortcuts; hidden ones are left out unless `all`.
[[nodiscard]] Json services_facts(BtHandle device, bool all);
[[nodiscard]] Json shortcuts_facts(BtHandle device, bool all);

// The device of an address or a name. Throws NotFound with the devices that there are.
[[nodiscard]] Device device_of(const std::string& address_or_name);

// Prints services and shortcuts of a device, each line behind `indent`.
void print_services(const Json& device, const char* indent);

}  // namespace programs
