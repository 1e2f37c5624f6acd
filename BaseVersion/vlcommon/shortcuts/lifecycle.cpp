// Making and deleting connection shortcuts.
#include "frame/frame.h"
#include "frame/stack_state.h"
#include "pan_clean_up.h"
#include "presentation/language_library.h"
#include "shortcut_record.h"
#include "text/device_address.h"
#include "vlcm/shortcuts.h"

namespace vl::shortcuts {
namespace {

// The service's attributes with its name; a nameless service is called by its class.
uint32_t read_service(BtHandle service, ServerAttributes& attributes) {
    attributes.mask = kServerMaskName;
    if (const uint32_t result = Btsdk_GetRemoteServiceAttributes(service, &attributes)) return result;
    if (attributes.name[0] != 0) return VLCM_OK;
    const LanguageLibrary texts;
    if (!texts) return VLCM_RESOURCE_FAILURE;
    texts.load(VlCm_GetServiceClsNameStringID(attributes.serviceClass), attributes.name);
    return VLCM_OK;
}

// "66:55:44:33:22:11 1101 Serial Port": byte 5 first, and at most 70 bytes of the service's name.
void compose_name(ShortcutProperty& record, const uint8_t (&address)[6]) {
    char printed[text::kPrintedAddressSize];
    text::print_device_address(address, printed);
    format_bounded(record.name, sizeof record.name, "%s %x %.70s", printed, record.serviceClass,
                   record.serviceName);
}

ShortcutProperty new_shortcut(BtHandle device, BtHandle service, const ServerAttributes& attributes) {
    ShortcutProperty record{};
    record.device = device;
    record.service = service;
    record.deviceValid = 1;
    record.stackFlag = 1;
    record.serviceClass = attributes.serviceClass;
    record.mask = kShortcutMaskCreate;
    copy_bounded(record.serviceName, sizeof record.serviceName, attributes.name);
    return record;
}

uint32_t create(BtHandle device, BtHandle service, BtHandle* made) {
    if (!is_bluetooth_ready()) return VLCM_NOT_READY;
    ServerAttributes attributes{};
    if (const uint32_t result = read_service(service, attributes)) return result;
    uint8_t address[6] = {};
    if (const uint32_t result = Btsdk_GetRemoteDeviceAddress(device, address)) return result;
    ShortcutProperty record = new_shortcut(device, service, attributes);
    Btsdk_GetRemoteDeviceClass(device, &record.deviceClass);  // its answer is not looked at
    compose_name(record, address);
    if (const uint32_t result = Btsdk_CreateShortCutEx(&record)) return result;
    if (is_pan(record.serviceClass)) delete_other_pan_shortcuts(device, record.serviceClass);
    if (made != nullptr) *made = record.shortcut;
    return VLCM_OK;
}

uint32_t remove(BtHandle shortcut) {
    if (!is_bluetooth_ready()) return VLCM_NOT_READY;
    ShortcutProperty record = record_of(shortcut);
    if (const uint32_t result = Btsdk_GetShortCutProperty(&record)) return result;
    return Btsdk_DeleteShortCut(shortcut);
}

}  // namespace
}  // namespace vl::shortcuts

using namespace vl;

extern "C" uint32_t VlCm_CreateShortCut(uint32_t device, uint32_t service, uint32_t* shortcut) {
    TraceScope scope("VlCm_CreateShortCut");
    if (device == 0 || service == 0) return VLCM_INVALID_ARGUMENT;
    return shortcuts::create(device, service, shortcut);
}

extern "C" uint32_t VlCm_DeleteShortCut(uint32_t shortcut) {
    TraceScope scope("VlCm_DeleteShortCut");
    return shortcut != 0 ? shortcuts::remove(shortcut) : uint32_t{VLCM_INVALID_ARGUMENT};
}
