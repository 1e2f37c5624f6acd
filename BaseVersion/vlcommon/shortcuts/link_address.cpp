// The device that a Send-To link points at.
#include "frame/link_file.h"
#include "text/device_address.h"
#include "text/wide_text.h"
#include "vlcm/shortcuts.h"

namespace vl::shortcuts {
namespace {

void load(const LinkFile& link, const char* utf8_path) {
    wchar_t path[kPathSize] = {};
    text::utf8_to_wide(path, kPathSize, utf8_path);
    link.load(path);  // not tested: a link that cannot be read has no arguments
}

// What stands before the address is skipped unread.
bool address_from_arguments(const LinkFile& link, uint8_t* address) {
    char arguments[kPathSize];
    link.read_arguments(arguments);
    if (arguments[0] == 0) return false;
    if (address != nullptr) text::read_device_address(arguments + kDeviceArgumentLength, address);
    return true;
}

// Without a link object the answer is yes and the address stays as it was: callers rely on it.
bool address_of_link(const char* utf8_path, uint8_t* address) {
    const ComApartment apartment;
    const LinkFile link;
    if (!link) return true;
    if (utf8_path != nullptr) load(link, utf8_path);
    return address_from_arguments(link, address);
}

}  // namespace
}  // namespace vl::shortcuts

extern "C" BOOL VlCm_GetBtAddrByShcParam(const char* path, uint8_t* address) {
    return vl::shortcuts::address_of_link(path, address);
}
