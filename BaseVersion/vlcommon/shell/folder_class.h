// Devices that are shell folders of their own: their folder classes and their places below My Computer.
#pragma once

#include "item_list.h"

#include <windows.h>

namespace vl::shell {

// The folder class of the device with this address of `length` bytes, from the registry cache. `found`
// may be null. A value whose name is no class identifier counts and gives an all-zero one.
BOOL FindShellFolderClsid(const uint8_t* address, uint32_t length, CLSID* found);

// My Computer and the device's folder; null unless the address has 6 bytes and there is memory. A device
// without a folder class has an all-zero one.
UniqueItemList GetDeviceFolderPidl(const uint8_t* address, uint32_t length);

}  // namespace vl::shell
