// The items of the suite's shell namespace, each a list of its own. Null: the stack does not know what
// is asked for, or there is no memory.
#pragma once

#include "VlSDK.h"
#include "item_list.h"

namespace vl::shell {

// The device, as it lies below the namespace root.
UniqueItemList device_item(BtHandle device);

// The service of a shortcut; a shortcut that cannot be read is traced.
UniqueItemList FillRmtSvcPidlInfo(BtHandle shortcut);
// The service of the device's first shortcut of a class; the class is taken as it is given.
UniqueItemList FillRmtSvcPidlInfo(BtHandle device, uint16_t service_class);
// The same for the device with this address of `length` bytes; a class of 0 gives null.
UniqueItemList GetSvcPidlByAddress(const uint8_t* address, uint32_t length, uint16_t service_class);

// A folder of a phone; `flags` as in VlPhoneFolder.
UniqueItemList FillMobileItemPidlInfo(BtHandle device, uint32_t flags);

// What the Send-To link to the namespace points at, below the namespace root.
UniqueItemList send_to_item();

// The first shortcut of a device and class; 0: there is none.
BtHandle first_shortcut(BtHandle device, uint16_t service_class);

}  // namespace vl::shell
