#include "VlSDK.h"
#include "VlTrace.h"
#include "floor.h"

#include <shlobj.h>
#include <string.h>

namespace {

constexpr uint16_t kFileTransfer = 0x1106;

VlShellItem* new_item(uint32_t type) {
    auto item = static_cast<VlShellItem*>(CoTaskMemAlloc(sizeof(VlShellItem)));
    memset(item, 0, sizeof *item);
    item->size = 114;
    item->payloadSize = 112;
    item->signature = VLCM_SHELL_ITEM_SIGNATURE;
    item->type = type;
    return item;
}

LPITEMIDLIST joined(LPCITEMIDLIST parent, VlShellItem* item) {
    LPITEMIDLIST list = ILCombine(parent, reinterpret_cast<LPCITEMIDLIST>(item));
    CoTaskMemFree(item);
    return list;
}

LPITEMIDLIST place_of(uint32_t device, LPCITEMIDLIST root) {
    RemoteDeviceProperty property{};
    if (Btsdk_GetRemoteDeviceProperty(device, &property) != 0) return nullptr;
    VlShellItem* item = new_item(VLCM_ITEM_DEVICE);
    item->deviceClass = property.deviceClass;
    memcpy(item->address, property.address, sizeof item->address);
    return joined(root, item);
}

LPITEMIDLIST finished(LPITEMIDLIST place, VlShellItem* item) {
    LPITEMIDLIST list = joined(place, item);
    CoTaskMemFree(place);
    return list;
}

}  // namespace

extern "C" LPITEMIDLIST Floor_FilesItemList(uint32_t device, LPCITEMIDLIST root) {
    LPITEMIDLIST place = place_of(device, root);
    ShortcutProperty record{};
    if (Btsdk_GetShortCutByDeviceHandle(device, kFileTransfer, &record.shortcut, 1) == 0) return nullptr;
    record.mask = kShortcutMaskShellItem;
    if (Btsdk_GetShortCutProperty(&record) != 0) return nullptr;
    VlShellItem* item = new_item(VLCM_ITEM_FILES);
    item->deviceClass = record.deviceClass;
    item->serviceClass = record.serviceClass;
    memcpy(item->address, record.address, sizeof item->address);
    _memccpy(item->serviceName, record.serviceName, 0, sizeof record.serviceName);
    return finished(place, item);
}

extern "C" LPITEMIDLIST Floor_PhoneFolderItemList(uint32_t device, LPCITEMIDLIST root, uint32_t /*flags*/) {
    LPITEMIDLIST place = place_of(device, root);
    CVlTraceFunc scope(512, const_cast<char*>("FillMobileItemPidlInfo"));
    VlShellItem* item = new_item(VLCM_ITEM_PHONEBOOK_FOLDER);
    uint32_t device_class = 0;
    Btsdk_GetRemoteDeviceClass(device, &device_class);
    item->deviceClass = device_class;
    Btsdk_GetRemoteDeviceAddress(device, item->address);
    return finished(place, item);
}

extern "C" void Floor_FreeItemList(LPITEMIDLIST list) { CoTaskMemFree(list); }
