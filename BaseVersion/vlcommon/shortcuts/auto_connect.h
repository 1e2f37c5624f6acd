// The shortcut that connects a device by itself, as the file of remote devices names it.
#pragma once

#include "VlSDK.h"

namespace vl::shortcuts {

struct ShortcutName {
    char text[100] = {};
};

// The name under which the device's automatic default connection is stored; empty when there is none.
ShortcutName auto_connect_shortcut(BtHandle device);

}  // namespace vl::shortcuts
