#include "rows.h"

#include "VlCommon.h"
#include "devices.h"
#include "frame/unique.h"
#include "library_texts.h"
#include "text.h"

#include <iterator>

namespace veltrin {
namespace {

using programs::wide;

// The class of device of each kind that the adapter can present itself as.
uint32_t class_of_adapter() {
    constexpr uint32_t kClasses[] = {0x0104, 0x010C, 0x0404, 0x0680};  // computer, laptop, headset, printer
    const unsigned int kind = VlCm_GetLocalDeviceClass();
    return kind < std::size(kClasses) ? kClasses[kind] : kClasses[0];
}

DeviceRow device_row(const programs::Device& device) {
    const auto& [handle, property] = device;
    const uint32_t device_class = property.deviceClass;
    return {handle,
            wide(programs::display_name(property.address)),
            programs::device_kind(device_class),
            programs::device_status(handle),
            wide(programs::address_text(property.address)),
            {VlCm_GetRmtDevIconIDEx(handle, device_class), VlCm_GetDeviceIconID(device_class)}};
}

// A service with a shortcut is called as the shortcut is, with its port. Without texts its class has to do.
std::wstring service_name(const programs::Service& service, BtHandle shortcut) {
    std::wstring name = shortcut != 0 ? programs::shortcut_name(shortcut) : std::wstring();
    if (name.empty()) {
        name = programs::library_text(VlCm_GetServiceClsNameStringID(service.service_class));
    }
    return name.empty() ? wide(programs::hex(service.service_class, 4)) : name;
}

std::wstring description_of(uint16_t service_class) {
    const unsigned int id = VlCm_GetRmtSvcDesStrID(service_class);
    return id == 0 ? std::wstring() : programs::library_text(id);
}

// The state of a service without a shortcut has no text of its own: its icon tells it.
std::wstring status_of_icon(IconId icon) {
    constexpr unsigned int kConnected = 1813, kIdle = 1814, kNotReady = 1843;
    constexpr unsigned int kByState[] = {kIdle, kConnected, kNotReady};
    const unsigned int state = icon.id - icon.base;
    return icon.id != 0 && state < std::size(kByState) ? programs::library_text(kByState[state])
                                                       : std::wstring();
}

ServiceRow service_row(BtHandle device, const programs::Service& service) {
    const auto& [handle, service_class] = service;
    const BtHandle shortcut = programs::shortcut_to(device, handle);
    const BOOL is_shortcut = shortcut != 0;
    const IconId icon = {VlCm_GetRmtSvcIconIDEx(is_shortcut ? shortcut : handle, service_class, is_shortcut),
                         VlCm_GetSvcIconID(service_class)};
    return {handle,
            shortcut,
            service_class,
            service_name(service, shortcut),
            is_shortcut ? programs::shortcut_status(shortcut) : status_of_icon(icon),
            description_of(service_class),
            icon};
}

}  // namespace

AdapterFacts adapter_facts() {
    const unsigned int icon = VlCm_GetLocDevIconIDEx();
    return {programs::adapter_status(), programs::device_kind(class_of_adapter()), {icon, icon}};
}

std::vector<DeviceRow> device_rows() {
    std::vector<DeviceRow> rows;
    for (const programs::Device& device : programs::all_devices()) {
        if (!VlCm_ShouldFilterCurDevCls(device.property.deviceClass)) rows.push_back(device_row(device));
    }
    return rows;
}

std::vector<ServiceRow> service_rows(BtHandle device) {
    std::vector<ServiceRow> rows;
    if (device == 0) return rows;
    for (const programs::Service& service : programs::services_of(device)) {
        if (VlCm_ShouldShowThisRemoteServiceEx(service.handle)) rows.push_back(service_row(device, service));
    }
    return rows;
}

bool has_texts() { return static_cast<bool>(vl::UniqueModule(VlCm_GetLangDepResLib(0))); }

}  // namespace veltrin
