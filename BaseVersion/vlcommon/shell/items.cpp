#include "items.h"

#include "frame/frame.h"
#include "item_types.h"
#include "shortcuts/shortcut_record.h"

namespace vl::shell {
namespace {

// An item while it is filled in.
class NewItem {
public:
    NewItem() : list_(static_cast<LPITEMIDLIST>(Vlcm_SHAlloc(sizeof(VlShellItem)))) {
        if (!list_) return;
        VlShellItem& item = *operator->();
        memset(&item, 0, sizeof item);
        item.size = offsetof(VlShellItem, terminator);
        item.payloadSize = offsetof(VlShellItem, terminator) - sizeof item.size;
        item.signature = VLCM_SHELL_ITEM_SIGNATURE;
    }
    explicit operator bool() const { return static_cast<bool>(list_); }
    VlShellItem* operator->() { return reinterpret_cast<VlShellItem*>(list_.get()); }
    UniqueItemList give() { return UniqueItemList(list_.release()); }

private:
    UniqueItemList list_;
};

bool read_for_item(ShortcutProperty& record) {
    if (shortcuts::read(record)) return true;
    trace_line(Module::kShell, "error!!! Can not get shortcut property in FillRmtSvcPidlInfo.\r\n");
    return false;
}

// The address is the record's own, also when the record names the device by its handle.
void copy_device(NewItem& item, const ShortcutProperty& record) {
    item->deviceClass = record.deviceClass;
    memcpy(item->address, record.address, sizeof record.address);
}

// At most 79 bytes: the item is zeroed, so that the text ends there.
void copy_name(NewItem& item, const ShortcutProperty& record) {
    _memccpy(item->serviceName, record.serviceName, 0, sizeof record.serviceName - 1);
}

}  // namespace

UniqueItemList device_item(BtHandle device) {
    RemoteDeviceProperty property{};
    if (Btsdk_GetRemoteDeviceProperty(device, &property) != 0) return {};
    NewItem item;
    if (!item) return {};
    item->type = type_of_device(property.deviceClass);
    item->deviceClass = property.deviceClass;
    memcpy(item->address, property.address, sizeof property.address);
    return item.give();
}

UniqueItemList FillRmtSvcPidlInfo(BtHandle shortcut) {
    NewItem item;
    ShortcutProperty record = shortcuts::record_of(shortcut, kShortcutMaskShellItem);
    if (!item || !read_for_item(record)) return {};
    item->type = type_of_service(record.serviceClass);
    copy_device(item, record);
    if (is_network_class(record.serviceClass)) {
        item->serviceClass = VLCM_SHELL_ITEM_NETWORK;
    } else {
        item->serviceClass = record.serviceClass;
        copy_name(item, record);
    }
    return item.give();
}

UniqueItemList FillRmtSvcPidlInfo(BtHandle device, uint16_t service_class) {
    const BtHandle shortcut = first_shortcut(device, service_class);
    if (shortcut == 0) return {};
    NewItem item;
    ShortcutProperty record = shortcuts::record_of(shortcut, kShortcutMaskShellItem);
    if (!item || !read_for_item(record)) return {};
    item->type = type_of_service_of_device(service_class);
    item->serviceClass = service_class;
    copy_device(item, record);
    copy_name(item, record);
    return item.give();
}

UniqueItemList GetSvcPidlByAddress(const uint8_t* address, uint32_t length, uint16_t service_class) {
    if (address == nullptr || length != sizeof(VlShellItem::address) || service_class == 0) return {};
    const BtHandle device = Btsdk_GetRemoteDeviceHandle(address);
    return device != 0 ? FillRmtSvcPidlInfo(device, service_class) : UniqueItemList();
}

UniqueItemList FillMobileItemPidlInfo(BtHandle device, uint32_t flags) {
    TraceScope scope("FillMobileItemPidlInfo");
    NewItem item;
    uint32_t device_class = 0;
    if (!item || Btsdk_GetRemoteDeviceClass(device, &device_class) != 0) return {};
    if (Btsdk_GetRemoteDeviceAddress(device, item->address) != 0) return {};
    item->type = type_of_phone_folder(flags);
    item->deviceClass = device_class;
    return item.give();
}

UniqueItemList send_to_item() {
    NewItem item;
    if (item) item->type = VLCM_ITEM_SEND_TO;
    return item.give();
}

BtHandle first_shortcut(BtHandle device, uint16_t service_class) {
    BtHandle shortcut = 0;
    return Btsdk_GetShortCutByDeviceHandle(device, service_class, &shortcut, 1) != 0 ? shortcut : 0;
}

}  // namespace vl::shell
