// Addresses of devices that the stack need not know.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace programs {

using Address = std::array<uint8_t, 6>;  // byte 0 is the least significant

// An address as it is shown, or that of the device of this name. What is kept for a device outlives it, so
// an address need not be known to the stack. Throws NotFound for another text.
[[nodiscard]] Address address_of(const std::string& address_or_name);

}  // namespace programs
