// Saved connections: queries, creation, write-back, deletion.
#include "VlSDK.h"
#include "edits.h"
#include "misuse.h"
#include "operation.h"
#include "records.h"
#include "results.h"
#include "state.h"

namespace vlsim {
namespace {

constexpr uint16_t kMaskName = 1;
constexpr uint16_t kMaskService = 4;

// The stack's own byte of a shortcut record; a write-back that lost it is misuse.
uint8_t stack_byte(BtHandle shortcut) { return static_cast<uint8_t>(0xA5 ^ shortcut); }

void fill_plain(ShortcutProperty& record, const Shortcut& shortcut) {
    record.connection = shortcut.connection;
    record.device = shortcut.device;
    record.service = shortcut.service;
    record.deviceValid = shortcut.device_valid ? 1 : 0;
    record.stackFlag = shortcut.stack_flag;
    std::copy(shortcut.address.begin(), shortcut.address.end(), record.address);
    record.serviceClass = shortcut.service_class;
    set_text(record.name, shortcut.name);
    record.reserved277 = stack_byte(shortcut.handle);
}

// The caller's block takes what fits in it; the length tells what there is.
void fill_parameter(ShortcutProperty& record, const std::vector<uint8_t>& parameter) {
    const size_t room = record.parameter ? record.parameterLength : 0;
    std::copy_n(parameter.begin(), std::min(room, parameter.size()), static_cast<uint8_t*>(record.parameter));
    record.parameterLength = static_cast<uint16_t>(parameter.size());
}

uint32_t get_property(ShortcutProperty* record) {
    static constexpr const char* kName = "Btsdk_GetShortCutProperty";
    if (!present(kName, "record", record)) return kNullPointer;
    expect_zeroed(kName, record, sizeof *record,
                  {{offsetof(ShortcutProperty, shortcut), 4},
                   {offsetof(ShortcutProperty, mask), 2},
                   {offsetof(ShortcutProperty, parameterLength), 2},
                   {offsetof(ShortcutProperty, parameter), 8}});
    const State state;
    const Shortcut* const shortcut = state->shortcuts.find(record->shortcut);
    if (!shortcut) return kUnknownHandle;
    fill_plain(*record, *shortcut);
    if (record->mask & kShortcutMaskShellItem) {
        set_text(record->serviceName, shortcut->service_name);
        record->deviceClass = shortcut->device_class;
    }
    if (record->mask & kShortcutMaskDefault) record->isDefault = shortcut->is_default ? 1 : 0;
    if (record->mask & kShortcutMaskParameter) fill_parameter(*record, shortcut->parameter);
    return kDone;
}

std::vector<uint8_t> given_parameter(const ShortcutProperty& record) {
    const auto* bytes = static_cast<const uint8_t*>(record.parameter);
    return bytes ? std::vector<uint8_t>(bytes, bytes + record.parameterLength) : std::vector<uint8_t>{};
}

ShortcutChange wanted_change(const ShortcutProperty& record) {
    ShortcutChange change;
    if (record.mask & kMaskName) change.name = get_text(record.name);
    if (record.mask & kMaskService) change.service_name = get_text(record.serviceName);
    if (record.mask & kShortcutMaskDefault) change.is_default = record.isDefault == 1;
    if (record.mask & kShortcutMaskParameter) change.parameter = given_parameter(record);
    return change;
}

uint32_t set_property(ShortcutProperty* record) {
    static constexpr const char* kName = "Btsdk_SetShortCutProperty";
    if (!present(kName, "record", record)) return kNullPointer;
    // A record that names its device was read before; one with nothing but its inputs was not.
    if (record->device != 0 && record->reserved277 != stack_byte(record->shortcut)) {
        report_misuse(kName, "the stack's byte at offset 277 was changed");
    }
    {
        const State state;
        if (!state->shortcuts.find(record->shortcut)) return kUnknownHandle;
    }
    return change_shortcut(record->shortcut, wanted_change(*record)) ? kDone : kNotStored;
}

uint32_t create(ShortcutProperty* record) {
    static constexpr const char* kName = "Btsdk_CreateShortCutEx";
    if (!present(kName, "record", record)) return kNullPointer;
    if (record->shortcut || record->connection || record->isDefault || record->reserved277) {
        report_misuse(kName, "record not zeroed: handle, connection, default flag or stack's byte is set");
    }
    {
        const State state;
        if (!state->devices.find(record->device)) return kUnknownHandle;
        if (!state->services.find(record->service)) return kUnknownHandle;
    }
    Address address;
    std::copy(std::begin(record->address), std::end(record->address), address.begin());
    const bool parameter = record->mask & kShortcutMaskParameter;
    const BtHandle made =
        add_shortcut(Shortcut{.handle = 0,
                              .connection = 0,
                              .device = record->device,
                              .service = record->service,
                              .device_valid = record->deviceValid == 1,
                              .stack_flag = record->stackFlag,
                              .address = address,
                              .service_class = record->serviceClass,
                              .name = get_text(record->name),
                              .service_name = get_text(record->serviceName),
                              .device_class = record->deviceClass,
                              .is_default = false,
                              .parameter = parameter ? given_parameter(*record) : std::vector<uint8_t>{}});
    if (made == 0) return kNotStored;
    record->shortcut = made;
    return kDone;
}

uint32_t remove(BtHandle shortcut) {
    {
        const State state;
        if (!state->shortcuts.find(shortcut)) return kUnknownHandle;
    }
    return erase_shortcut(shortcut) ? kDone : kNotStored;
}

uint32_t listed(const HandleLists& lists, uint64_t key, BtHandle* out, uint32_t room) {
    const auto found = lists.find(key);
    return found == lists.end() ? 0 : give_list(found->second, out, room);
}

uint32_t by_device(BtHandle device, uint16_t service_class, BtHandle* out, uint32_t room) {
    const State state;
    if (service_class == 0) return listed(state->shortcuts_by_device, device, out, room);
    return listed(state->shortcuts_by_device_class, pair_key(device, service_class), out, room);
}

uint32_t by_service(BtHandle device, BtHandle service, BtHandle* out, uint32_t room) {
    const State state;
    return listed(state->shortcuts_by_device_service, pair_key(device, service), out, room);
}

uint32_t by_class(uint16_t service_class, BtHandle* out, uint32_t room) {
    const State state;
    return listed(state->shortcuts_by_class, service_class, out, room);
}

uint32_t all(BtHandle* out, uint32_t room) {
    const State state;
    return give_list(state->all_shortcuts, out, room);
}

template <typename Map, typename Key>
BtHandle looked_up(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found == map.end() ? 0 : found->second;
}

BtHandle by_name(const char* name) {
    if (!present("Btsdk_GetShortCutByName", "name", name)) return 0;
    const State state;
    return looked_up(state->shortcut_by_name, std::string(name));
}

BtHandle default_of(uint16_t service_class) {
    const State state;
    return looked_up(state->default_shortcut, service_class);
}

}  // namespace
}  // namespace vlsim

using vlsim::call;

uint32_t Btsdk_GetShortCutProperty(ShortcutProperty* property) {
    return call<"Btsdk_GetShortCutProperty">(vlsim::get_property, property);
}

uint32_t Btsdk_SetShortCutProperty(ShortcutProperty* property) {
    return call<"Btsdk_SetShortCutProperty">(vlsim::set_property, property);
}

BtHandle Btsdk_GetDefaultShortCut(uint16_t serviceClass) {
    return call<"Btsdk_GetDefaultShortCut">(vlsim::default_of, serviceClass);
}

uint32_t Btsdk_GetShortCutByDeviceHandle(BtHandle device, uint16_t serviceClass, BtHandle* shortcuts,
                                         uint32_t count) {
    return call<"Btsdk_GetShortCutByDeviceHandle">(vlsim::by_device, device, serviceClass, shortcuts, count);
}

uint32_t Btsdk_GetShortCutByServiceHandle(BtHandle device, BtHandle service, BtHandle* shortcuts,
                                          uint32_t count) {
    return call<"Btsdk_GetShortCutByServiceHandle">(vlsim::by_service, device, service, shortcuts, count);
}

uint32_t Btsdk_GetShortCutByServiceClass(uint16_t serviceClass, BtHandle* shortcuts, uint32_t count) {
    return call<"Btsdk_GetShortCutByServiceClass">(vlsim::by_class, serviceClass, shortcuts, count);
}

uint32_t Btsdk_GetAllShortCuts(BtHandle* shortcuts, uint32_t count) {
    return call<"Btsdk_GetAllShortCuts">(vlsim::all, shortcuts, count);
}

BtHandle Btsdk_GetShortCutByName(const char* name) {
    return call<"Btsdk_GetShortCutByName">(vlsim::by_name, name);
}

uint32_t Btsdk_CreateShortCutEx(ShortcutProperty* property) {
    return call<"Btsdk_CreateShortCutEx">(vlsim::create, property);
}

uint32_t Btsdk_DeleteShortCut(BtHandle shortcut) {
    return call<"Btsdk_DeleteShortCut">(vlsim::remove, shortcut);
}
