// Which Windows this is.
#pragma once

#include <windows.h>

namespace vl {

// Whether the current process runs under the 32-bit emulation; FALSE where Windows cannot tell.
// VlCm_IsX64Platform answers for the build and does not ask this.
BOOL GetWow64Flag();

}  // namespace vl
