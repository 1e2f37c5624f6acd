#include "switches.h"

#include "frame.h"
#include "settings.h"
#include "vlcm/mobile.h"
#include "vlcm/settings.h"
#include "vlcm/switches.h"

#include <stdlib.h>

namespace vl::switches {
namespace {

int read_common(const char* section, const char* key, int fallback) {
    return settings::read_number(section, key, fallback, settings::common_file());
}

int read_extended_information_flag(int fallback) {
    return settings::read_number("IsSupportADFunction", "Flag", fallback, settings::personal_file());
}

// Each comparison asks the setting anew.
int uart_default() {
    return VlCm_GetCustomVersion() == 1 || VlCm_GetCustomVersion() == 2 || VlCm_GetCustomVersion() == 4 ? 0
                                                                                                        : 1;
}

int major_version(const PathBuffer& file) {
    PathBuffer version;
    settings::read_text("General", "CurrentVersion", "", version.data(), PathBuffer::size(), file.text());
    return VlCm_GetVersionMajorNum(version.text());
}

bool extended_information_offered() {
    if (Btsdk_IsSupportADFunction() == 1) return read_extended_information_flag(-1) == 0;
    constexpr int kFirstVersionWithSwitch = 9;
    const PathBuffer file = settings::common_file();
    if (major_version(file) < kFirstVersionWithSwitch) return true;
    const bool disabled = settings::read_number("VlConfig", "DisableExtendVLInfoFunc", 0, file) != 0;
    return read_extended_information_flag(disabled ? 1 : 0) != 1;
}

int version_number(const char* text, unsigned int part) {
    const char* space = strchr(text, ' ');
    PathBuffer copy;
    copy.append(space ? space + 1 : text);
    unsigned int piece = 0;
    for (const char* at = copy.text(); *at != 0;) {
        const size_t length = strcspn(at, ".");
        if (length != 0 && ++piece == part) return atoi(at);  // stops at the next "." by itself
        at += length + (at[length] == '.' ? 1 : 0);
    }
    return 0;
}

}  // namespace

BOOL IsMobileMAPActive() {
    return Btsdk_IsMobileActive() != 0 || read_common("VlConfig", "IsSupportMAPFunc", 0) != 0;
}

}  // namespace vl::switches

using namespace vl;

extern "C" int VlCm_GetCustomVersion() {
    TraceScope scope("VlCm_GetCustomVersion");
    return switches::read_common("General", "VlCustomVersion", 0);
}

extern "C" int VlCm_SupportUartDeviceFlag() {
    TraceScope scope("VlCm_SupportDeviceFlag");  // the older name, which trace readers look for
    const PathBuffer file = settings::common_file();
    return settings::read_number("VLConfig", "NeedSupportUARTDevice", switches::uart_default(), file);
}

extern "C" BOOL VlCm_ShouldShowDialerUI() {
    return switches::read_common("vlconfig", "IsSupportDialerFunction", 0) != 0;
}

extern "C" BOOL VlCm_IsSupportBPPFunction() {
    return switches::read_common("VlConfig", "IsSupportBPPFunction", 0) != 0;
}

extern "C" BOOL VlCm_IsMobileDUNActive() {
    const int fallback = VlCm_GetCustomVersion() == 3 || VlCm_IsMobileActive() ? 1 : 0;
    return switches::read_common("VLConfig", "NeedSupportMobileDUNFunc", fallback) != 0;
}

extern "C" BOOL VlCm_IsMobileFTPActive() { return FALSE; }

extern "C" BOOL VlCm_IsMobileDevice(unsigned int deviceClass) {
    constexpr unsigned int kPhone = 2;
    constexpr unsigned int kMinor5 = 5;  // counts in every major class
    return ((deviceClass >> 8) & 0x1F) == kPhone || ((deviceClass >> 2) & 0x3F) == kMinor5;
}

extern "C" BOOL VlCm_IsSupportADFunction() { return switches::extended_information_offered(); }

extern "C" int VlCm_GetVersionNumByType(const char* text, unsigned int part) {
    return text ? switches::version_number(text, part) : 0;
}

extern "C" int VlCm_GetVersionMajorNum(const char* text) { return VlCm_GetVersionNumByType(text, 1); }
