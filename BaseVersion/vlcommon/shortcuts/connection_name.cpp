// The name under which a connection made by an application is shown.
#include "frame/frame.h"
#include "presentation/language_library.h"
#include "vlcm/shortcuts.h"

namespace vl::shortcuts {
namespace {

constexpr uint32_t kNamelessDeviceId = 1101;
constexpr size_t kTextLimit = 255;  // of a loaded text

void append_class_name(const LanguageLibrary& texts, uint16_t service_class, char (&name)[272]) {
    char loaded[kTextLimit] = {};
    texts.load(VlCm_GetServiceClsNameStringID(service_class), loaded);
    append_bounded(name, sizeof name, loaded);
}

void append_device_name(const LanguageLibrary& texts, BtHandle device, char (&name)[272]) {
    char device_name[256] = {};
    uint32_t length = sizeof device_name;
    if (Btsdk_GetRemoteDeviceName(device, device_name, &length) != 0) device_name[0] = 0;
    device_name[sizeof device_name - 1] = 0;
    if (device_name[0] == 0) texts.load(kNamelessDeviceId, device_name, kTextLimit);
    append_bounded(name, sizeof name, device_name);
}

// "Serial Port(Lena's phone)". The copy is one of bytes: a short buffer gets no terminator.
BOOL compose(BtHandle device, uint16_t service_class, char* buffer, uint32_t size) {
    constexpr uint32_t kLongestCopy = 256;
    const LanguageLibrary texts;
    if (!texts) return FALSE;
    char name[272] = {};
    append_class_name(texts, service_class, name);
    append_bounded(name, sizeof name, "(");
    append_device_name(texts, device, name);
    append_bounded(name, sizeof name, ")");
    memcpy(buffer, name, size < kLongestCopy ? size : kLongestCopy);
    return TRUE;
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" BOOL VlCm_CreateAppConnName(uint32_t device, uint16_t serviceClass, char* buffer, uint32_t size) {
    TraceScope scope("VlCm_CreateAppConnNameBySvcCls");  // the older name, which trace readers look for
    return buffer != nullptr && shortcuts::compose(device, serviceClass, buffer, size);
}
