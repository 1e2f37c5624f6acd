// Places of the suite's shell namespace: absolute lists of what can be opened.
#include "vlcm/shell_items.h"

#include "folder_class.h"
#include "frame/frame.h"
#include "item_types.h"
#include "items.h"
#include "namespace_root.h"

namespace vl::shell {
namespace {

UniqueItemList place_of_device(LPCITEMIDLIST root, BtHandle device) {
    return root != nullptr ? combine(root, device_item(device)) : UniqueItemList();
}

UniqueItemList place_of_files(BtHandle device, LPCITEMIDLIST root) {
    const UniqueItemList place = place_of_device(root, device);
    if (!place) return {};
    const BtHandle shortcut = first_shortcut(device, kFileTransferClass);
    return shortcut != 0 ? combine(place.get(), FillRmtSvcPidlInfo(shortcut)) : UniqueItemList();
}

UniqueItemList place_of_phone_folder(BtHandle device, LPCITEMIDLIST root, uint32_t flags) {
    const UniqueItemList place = place_of_device(root, device);
    return place ? combine(place.get(), FillMobileItemPidlInfo(device, flags)) : UniqueItemList();
}

// Of a device that is a folder of its own.
UniqueItemList place_of_own_files(BtHandle device) {
    uint8_t address[6] = {};
    if (Btsdk_GetRemoteDeviceAddress(device, address) != 0) return {};
    const UniqueItemList folder = GetDeviceFolderPidl(address, sizeof address);
    if (!folder) return {};
    return combine(folder.get(), GetSvcPidlByAddress(address, sizeof address, kFileTransferClass));
}

void browse_files(BtHandle device) {
    const UniqueItemList root = GetMyBtPlaceRootPidl();
    const UniqueItemList place = place_of_files(device, root.get());
    if (place) VlCm_BrowseFolder(place.get());
}

void browse_phone_folder(BtHandle device, uint32_t flags) {
    const UniqueItemList root = GetMyBtPlaceRootPidl();
    const UniqueItemList place = place_of_phone_folder(device, root.get(), flags);
    if (place) VlCm_BrowseFolder(place.get());
}

void browse_own_files(BtHandle device) {
    const UniqueItemList place = place_of_own_files(device);
    if (place) VlCm_BrowseFolder(place.get());
}

}  // namespace
}  // namespace vl::shell

using namespace vl;

extern "C" LPITEMIDLIST VlCm_GetAbsoluteFTPSvcPidlOf(uint32_t device, LPCITEMIDLIST root) {
    return shell::place_of_files(device, root).release();
}

extern "C" LPITEMIDLIST VlCm_GetAbsoluteMobileFolderPidlOf(uint32_t device, LPCITEMIDLIST root,
                                                           uint32_t flags) {
    return shell::place_of_phone_folder(device, root, flags).release();
}

extern "C" void VlCm_BrowseFTPSvcFolderOf(uint32_t device) {
    if (device != 0) shell::browse_files(device);
}

extern "C" void VlCm_BrowseMobileFolderOf(uint32_t device, uint32_t flags) {
    if (device != 0) shell::browse_phone_folder(device, flags);
}

extern "C" void VlCm_BrowseFTPSvcFolderOfEx(uint32_t device) {
    if (device != 0) shell::browse_own_files(device);
}
