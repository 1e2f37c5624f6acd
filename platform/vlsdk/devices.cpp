// Remote devices and the local one.
#include "VlSDK.h"
#include "edits.h"
#include "enumerations.h"
#include "misuse.h"
#include "operation.h"
#include "records.h"
#include "results.h"
#include "state.h"
#include "wide_answer.h"

namespace vlsim {
namespace {

BtHandle handle_of(const uint8_t* address) {
    if (!present("Btsdk_GetRemoteDeviceHandle", "address", address)) return 0;
    Address wanted;
    std::copy_n(address, wanted.size(), wanted.begin());
    const State state;
    return state->find_device(wanted);
}

uint32_t address_of_device(BtHandle device, uint8_t* address) {
    if (!present("Btsdk_GetRemoteDeviceAddress", "address", address)) return kNullPointer;
    const State state;
    const Device* const found = state->devices.find(device);
    if (!found) return kUnknownHandle;
    std::copy(found->address.begin(), found->address.end(), address);
    return kDone;
}

uint32_t class_of(BtHandle device, uint32_t* device_class) {
    if (!present("Btsdk_GetRemoteDeviceClass", "class", device_class)) return kNullPointer;
    const State state;
    const Device* const found = state->devices.find(device);
    if (!found) return kUnknownHandle;
    *device_class = found->device_class;
    return kDone;
}

uint32_t parameter_of(BtHandle device, uint32_t* parameter) {
    if (!present("Btsdk_GetRemoteDeviceParam", "parameter", parameter)) return kNullPointer;
    const State state;
    const Device* const found = state->devices.find(device);
    if (!found) return kUnknownHandle;
    *parameter = found->parameter;
    return kDone;
}

uint32_t type_of(BtHandle device) {
    const State state;
    const Device* const found = state->devices.find(device);
    return found ? found->type : 0;
}

void fill(RemoteDeviceProperty& record, const Device& device) {
    std::copy(device.address.begin(), device.address.end(), record.address);
    set_text(record.name, device.name);
    record.deviceClass = device.device_class;
}

uint32_t property_of(BtHandle device, RemoteDeviceProperty* record) {
    static constexpr const char* kName = "Btsdk_GetRemoteDeviceProperty";
    if (!present(kName, "record", record)) return kNullPointer;
    expect_zeroed(kName, record, sizeof *record);
    const State state;
    const Device* const found = state->devices.find(device);
    if (!found) return kUnknownHandle;
    fill(*record, *found);
    return kDone;
}

// The name is cut to the caller's room, terminator included. Only the low half of the length is
// written: the bytes copied, terminator included.
uint32_t name_of(BtHandle device, char* name, InOutLength length) {
    static constexpr const char* kName = "Btsdk_GetRemoteDeviceName";
    if (!present(kName, "name", name) || !present(kName, "length", length.at)) return kNullPointer;
    const State state;
    const Device* const found = state->devices.find(device);
    if (!found) return kUnknownHandle;
    const size_t copied = std::min<size_t>(found->name.size() + 1, static_cast<uint16_t>(*length.at));
    if (copied > 0) {
        std::memcpy(name, found->name.data(), copied - 1);
        name[copied - 1] = 0;
    }
    const auto written = static_cast<uint16_t>(copied);
    std::memcpy(length.at, &written, sizeof written);
    return kDone;
}

uint8_t is_connected(BtHandle device) {
    const State state;
    const Device* const found = state->devices.find(device);
    return found && found->connected ? 1 : 0;
}

uint32_t is_paired(BtHandle device, uint32_t* paired) {
    static constexpr const char* kName = "Btsdk_IsDevicePaired";
    if (!present(kName, "flag", paired)) return kNullPointer;
    expect_zeroed(kName, paired, sizeof *paired);
    const State state;
    const Device* const found = state->devices.find(device);
    if (!found) return kUnknownHandle;
    *reinterpret_cast<uint8_t*>(paired) = found->paired ? 1 : 0;
    return kDone;
}

uint32_t local_class(uint32_t* device_class) {
    if (!present("Btsdk_GetLocalDeviceClass", "class", device_class)) return kNullPointer;
    const State state;
    *device_class = state->local_class;
    return kDone;
}

uint32_t set_local(uint32_t device_class) { return set_local_class(device_class) ? kDone : kNotStored; }

struct RemoteDevices {
    using Record = RemoteDeviceProperty;
    static constexpr EnumerationKind kind = EnumerationKind::kRemoteDevices;
    static constexpr const char* name = "Btsdk_EnumRemoteDevice";
    static bool fill_item(BtHandle item, Record& record) {
        const State state;
        const Device* const found = state->devices.find(item);
        if (found) fill(record, *found);
        return found != nullptr;
    }
};

BtHandle start_devices(uint32_t /*mask*/, uint32_t /*device_class*/) {
    const State state;
    std::vector<BtHandle> handles;
    for (const Device& each : state->devices.all()) handles.push_back(each.handle);
    return start_enumeration(EnumerationKind::kRemoteDevices, std::move(handles));
}

uint32_t end_devices(BtHandle enumeration) {
    return end_enumeration("Btsdk_EndEnumRemoteDevice", EnumerationKind::kRemoteDevices, enumeration);
}

}  // namespace
}  // namespace vlsim

using vlsim::call;

BtHandle Btsdk_GetRemoteDeviceHandle(const uint8_t* address) {
    return call<"Btsdk_GetRemoteDeviceHandle">(vlsim::handle_of, address);
}

uint32_t Btsdk_GetRemoteDeviceAddress(BtHandle device, uint8_t* address) {
    return call<"Btsdk_GetRemoteDeviceAddress">(vlsim::address_of_device, device, address);
}

uint32_t Btsdk_GetRemoteDeviceClass(BtHandle device, uint32_t* deviceClass) {
    return call<"Btsdk_GetRemoteDeviceClass">(vlsim::class_of, device, deviceClass);
}

uint32_t Btsdk_GetRemoteDeviceProperty(BtHandle device, RemoteDeviceProperty* property) {
    return call<"Btsdk_GetRemoteDeviceProperty">(vlsim::property_of, device, property);
}

uint32_t Btsdk_GetRemoteDeviceParam(BtHandle device, uint32_t* parameter) {
    return call<"Btsdk_GetRemoteDeviceParam">(vlsim::parameter_of, device, parameter);
}

uint32_t Btsdk_GetRemoteDeviceType(BtHandle device) {
    return call<"Btsdk_GetRemoteDeviceType">(vlsim::type_of, device);
}

uint32_t Btsdk_GetRemoteDeviceName(BtHandle device, char* name, uint32_t* length) {
    return call<"Btsdk_GetRemoteDeviceName">(vlsim::name_of, device, name, vlsim::InOutLength{length});
}

uint64_t Btsdk_IsDeviceConnected_wide(BtHandle device) {
    return vlsim::wide_answer(call<"Btsdk_IsDeviceConnected">(vlsim::is_connected, device));
}

uint32_t Btsdk_IsDevicePaired(BtHandle device, uint32_t* paired) {
    return call<"Btsdk_IsDevicePaired">(vlsim::is_paired, device, paired);
}

BtHandle Btsdk_StartEnumRemoteDevice(uint32_t mask, uint32_t deviceClass) {
    return call<"Btsdk_StartEnumRemoteDevice">(vlsim::start_devices, mask, deviceClass);
}

BtHandle Btsdk_EnumRemoteDevice(BtHandle enumeration, RemoteDeviceProperty* property) {
    return call<"Btsdk_EnumRemoteDevice">(vlsim::next_item<vlsim::RemoteDevices>, enumeration, property);
}

uint32_t Btsdk_EndEnumRemoteDevice(BtHandle enumeration) {
    return call<"Btsdk_EndEnumRemoteDevice">(vlsim::end_devices, enumeration);
}

uint32_t Btsdk_GetLocalDeviceClass(uint32_t* deviceClass) {
    return call<"Btsdk_GetLocalDeviceClass">(vlsim::local_class, deviceClass);
}

uint32_t Btsdk_SetLocalDeviceClass(uint32_t deviceClass) {
    return call<"Btsdk_SetLocalDeviceClass">(vlsim::set_local, deviceClass);
}
