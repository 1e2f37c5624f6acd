// What the window shows, as the library tells it at this moment.
#pragma once

#include "VlSDK.h"
#include "icons.h"

#include <string>
#include <vector>

namespace veltrin {

struct AdapterFacts {
    std::wstring status;
    std::wstring kind;
    IconId icon;
};

struct DeviceRow {
    BtHandle handle;
    std::wstring name, kind, status, address;
    IconId icon;
};

struct ServiceRow {
    BtHandle handle;
    BtHandle shortcut;  // 0: it has none
    uint16_t service_class;
    std::wstring name, status, description;
    IconId icon;
};

[[nodiscard]] AdapterFacts adapter_facts();
// Devices and services that the installation hides are left out.
[[nodiscard]] std::vector<DeviceRow> device_rows();
[[nodiscard]] std::vector<ServiceRow> service_rows(BtHandle device);

// Whether the library of texts is there.
[[nodiscard]] bool has_texts();

}  // namespace veltrin
