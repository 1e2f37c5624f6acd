#include "address.h"

#include "VlCommon.h"
#include "facts.h"

#include <ctype.h>
#include <string.h>

namespace programs {
namespace {

// "XX:XX:XX:XX:XX:XX"
bool is_address(const std::string& text) {
    if (text.size() != 17) return false;
    for (size_t place = 0; place < text.size(); ++place) {
        const bool right =
            place % 3 == 2 ? text[place] == ':' : isxdigit(static_cast<uint8_t>(text[place])) != 0;
        if (!right) return false;
    }
    return true;
}

}  // namespace

Address address_of(const std::string& address_or_name) {
    Address address = {};
    if (is_address(address_or_name)) {
        VlCm_ParseDeviceAddressFromString(address_or_name.c_str(), address.data(), address.size());
    } else {
        const Device device = device_of(address_or_name);
        memcpy(address.data(), device.property.address, address.size());
    }
    return address;
}

}  // namespace programs
