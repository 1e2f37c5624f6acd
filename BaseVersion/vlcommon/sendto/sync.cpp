// Keeping the links of the Send-To folder in step with the devices that the stack knows.
#include "device_link.h"
#include "folder.h"
#include "frame/stack_state.h"
#include "frame/stack_walk.h"
#include "frame/unique_com.h"
#include "menu.h"
#include "text/device_address.h"
#include "vlcm/send_to.h"

#include <memory>
#include <new>

namespace vl::sendto {
namespace {

constexpr unsigned kCapacity = 5;  // device links

bool same_address(const uint8_t* a, const uint8_t* b) { return memcmp(a, b, text::kAddressBytes) == 0; }

// What a pass over the folder saw up to the link of the wanted device.
struct Seen {
    unsigned links = 0;
    WidePath wanted;  // file names; empty: none
    WidePath oldest;
    FILETIME oldest_access{};
};

void note(Seen& seen, const WIN32_FIND_DATAW& entry) {
    ++seen.links;
    if (seen.links > 1 && CompareFileTime(&entry.ftLastAccessTime, &seen.oldest_access) >= 0) return;
    seen.oldest = WidePath(entry.cFileName);
    seen.oldest_access = entry.ftLastAccessTime;
}

Seen look_for(const WidePath& folder, const uint8_t* address) {
    Seen seen;
    visit_links(folder, [&](const WIN32_FIND_DATAW& entry) {
        uint8_t device[text::kAddressBytes];
        if (!read_device(file_in(folder, entry.cFileName), device)) return true;
        note(seen, entry);
        if (same_address(device, address)) seen.wanted = WidePath(entry.cFileName);
        return !seen.wanted;
    });
    return seen;
}

// A folder that holds more links than it should is not trimmed: it may have come from elsewhere.
void add(const WidePath& folder, const uint8_t* address, const Seen& seen) {
    RemoteDeviceProperty device{};
    const BtHandle handle = Btsdk_GetRemoteDeviceHandle(address);
    if (handle == 0 || Btsdk_GetRemoteDeviceProperty(handle, &device) != 0) return;
    if (!seen.wanted && seen.links == kCapacity) delete_link(folder, seen.oldest);
    write_device_link(folder, seen.wanted, device);
}

void remove(const WidePath& folder, const Seen& seen) {
    if (seen.wanted) delete_link(folder, seen.wanted);
}

void sync_device(const uint8_t* address, bool adding) {
    if (!is_bluetooth_ready()) return;
    const ComApartment apartment;
    const WidePath folder = prepare_folder();
    if (!folder) return;
    const Seen seen = look_for(folder, address);
    if (adding) {
        add(folder, address, seen);
    } else {
        remove(folder, seen);
    }
}

// Files of a folder, listed before any of them is renamed.
struct Names {
    std::unique_ptr<WidePath[]> names;
    size_t count = 0;
};

Names list_links(const WidePath& folder) {
    size_t room = 0;
    visit_links(folder, [&](const WIN32_FIND_DATAW&) { return ++room != 0; });
    Names list;
    list.names.reset(new (std::nothrow) WidePath[room]);
    if (!list.names) return list;
    visit_links(folder, [&](const WIN32_FIND_DATAW& entry) {
        if (list.count < room) list.names[list.count++] = WidePath(entry.cFileName);
        return list.count < room;
    });
    return list;
}

void check_link(const WidePath& folder, const WidePath& name) {
    uint8_t address[text::kAddressBytes];
    if (!read_device(file_in(folder, name.text()), address)) return;
    const auto found = find_remote_device(
        [&](BtHandle, const RemoteDeviceProperty& device) { return same_address(device.address, address); });
    if (found.handle != 0) {
        write_device_link(folder, name, found.record);
    } else {
        delete_link(folder, name);
    }
}

void check_all_links() {
    if (!is_bluetooth_ready()) return;
    const ComApartment apartment;
    const WidePath folder = prepare_folder();
    if (!folder) return;
    const Names list = list_links(folder);
    for (size_t i = 0; i < list.count; ++i) check_link(folder, list.names[i]);
}

}  // namespace
}  // namespace vl::sendto

extern "C" void VlCm_SyncSend2btShc(const uint8_t* address, BOOL add) {
    if (address != nullptr) vl::sendto::sync_device(address, add != FALSE);
}

extern "C" void VlCm_SyncSend2btShcForMultiUser() { vl::sendto::check_all_links(); }
