// Feature switches that the library itself asks, beyond the exported ones.
#pragma once

#include <windows.h>

namespace vl::switches {

// Whether message access is offered: at once when mobile support is active, else by its setting.
BOOL IsMobileMAPActive();

}  // namespace vl::switches
