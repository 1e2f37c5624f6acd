// Printed Bluetooth device addresses.
#pragma once

namespace vl::text {

inline constexpr unsigned kAddressBytes = 6;

// Reads "XX:XX:XX:XX:XX:XX", byte 5 first. Separators are not looked at; what the text lacks is 0.
void read_device_address(const char* text, unsigned char* address);

inline constexpr unsigned kPrintedAddressSize = kAddressBytes * 3;  // terminator included

// Prints "XX:XX:XX:XX:XX:XX", byte 5 first.
void print_device_address(const unsigned char* address, char* text);

}  // namespace vl::text
