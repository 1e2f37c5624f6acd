#include "device_address.h"

#include "frame/bounded_text.h"
#include "vlcm/text.h"

#include <windows.h>

namespace vl::text {
namespace {

constexpr size_t kPairStride = 3;  // two digits and a separator
constexpr size_t kPrintedLength = kAddressBytes * kPairStride - 1;

// A character that is no hexadecimal digit counts with its code.
unsigned nibble(char character) {
    if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
    if (character >= 'A' && character <= 'F') return static_cast<unsigned>(character - 'A' + 10);
    if (character >= 'a' && character <= 'f') return static_cast<unsigned>(character - 'a' + 10);
    return static_cast<unsigned char>(character);
}

}  // namespace

void read_device_address(const char* text, unsigned char* address) {
    const size_t length = bounded_length(text, kPrintedLength);
    const auto nibble_at = [=](size_t place) { return place < length ? nibble(text[place]) : 0U; };
    for (size_t pair = 0; pair < kAddressBytes; ++pair) {
        const size_t place = pair * kPairStride;
        const unsigned byte = nibble_at(place) * 16 + nibble_at(place + 1);
        address[kAddressBytes - 1 - pair] = static_cast<unsigned char>(byte & 0xFF);
    }
}

void print_device_address(const unsigned char* address, char* text) {
    format_bounded(text, kPrintedAddressSize, "%02X:%02X:%02X:%02X:%02X:%02X", address[5], address[4],
                   address[3], address[2], address[1], address[0]);
}

}  // namespace vl::text

using namespace vl;

extern "C" BOOL VlCm_ParseDeviceAddressFromString(const char* text, unsigned char* address,
                                                  unsigned int size) {
    if (text == nullptr || address == nullptr || size != text::kAddressBytes) return FALSE;
    text::read_device_address(text, address);
    return TRUE;
}
