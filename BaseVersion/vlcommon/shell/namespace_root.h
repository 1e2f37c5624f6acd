// The root of the suite's shell namespace.
#pragma once

#include "item_list.h"

namespace vl::shell {

// What the link "Bluetooth Devices.lnk" in the installation folder points at; null when there is none.
UniqueItemList GetMyBtPlaceRootPidl();

}  // namespace vl::shell
