// Where files that were sent to a device arrive.
#pragma once

#include "VlSDK.h"

#include <string>

namespace programs {

// The inbox folder of a simulated device; empty when the stack does not know the device.
[[nodiscard]] std::wstring inbox_folder(BtHandle device);

}  // namespace programs
