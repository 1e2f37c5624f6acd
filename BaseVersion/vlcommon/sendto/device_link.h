// The links of devices in the Send-To folder. The caller is in a COM apartment.
#pragma once

#include "frame/unique.h"
#include "frame/wide_path.h"

#include <stdint.h>

namespace vl::sendto {

// Shows each "*.lnk" of the folder to `visit` until it answers false.
template <typename Visit>
void visit_links(const WidePath& folder, Visit visit) {
    WIN32_FIND_DATAW entry;
    const WidePath pattern = WidePath(folder).append(L"\\*.lnk");
    const UniqueFind listing(FindFirstFileW(pattern.text(), &entry));
    if (!listing) return;
    while (visit(entry) && FindNextFileW(listing.get(), &entry)) {
    }
}

// Reads the device's address, 6 bytes. False, nothing written: the file is no link to a device.
bool read_device(const WidePath& link, uint8_t* address);

// Writes the link of a device under its name, or under the first free numbered form of it. `existing` is
// the file name of its present link, which is replaced when the device's name is another one; empty: none.
void write_device_link(const WidePath& folder, const WidePath& existing, const RemoteDeviceProperty& device);

void delete_link(const WidePath& folder, const WidePath& name);

}  // namespace vl::sendto
