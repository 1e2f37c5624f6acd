// The printer file: which port leads to which device.
#pragma once

#include "frame/bounded_text.h"
#include "text/device_address.h"

#include <stdint.h>

namespace vl::printers {

// Which profile operations read the file. The exports come in pairs that differ in this alone.
enum class ProfileCalls : uint32_t {
    kStack = 0,    // the stack SDK's: plain names
    kWindows = 1,  // Windows' own: names that end in New
};

// The path of "VLPRINT.INI".
PathBuffer printer_file();

// A device address as the file's keys and values print it, byte 5 first.
struct AddressText {
    char text[text::kPrintedAddressSize];
};
AddressText address_text(const uint8_t* address);

// A printer port's device, "BD_ADDR" in the section of the port's name; empty for other ports.
struct PortDevice {
    char text[40];
};
PortDevice port_device(const char* port, ProfileCalls calls);

// Whether a port leads to a Bluetooth device; traced. A null port leads nowhere.
bool is_bluetooth_port(const char* port, ProfileCalls calls);

}  // namespace vl::printers
