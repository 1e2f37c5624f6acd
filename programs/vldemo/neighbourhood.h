// The devices that the stack knows.
#pragma once

#include "VlSDK.h"

#include <string>

namespace programs {

// Prints every device with address, class, name and services. 0 when there is at least one.
[[nodiscard]] int show_neighbourhood();

// The device of an address ("00:11:22:33:44:55", as shown) or, else, of a name. 0: unknown.
[[nodiscard]] BtHandle find_device(const std::string& address_or_name);

}  // namespace programs
