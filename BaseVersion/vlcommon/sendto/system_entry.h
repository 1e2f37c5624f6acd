// The Send-To entry of Windows' own Bluetooth file transfer.
#pragma once

namespace vl::sendto {

// Hides that entry in the folder `menu` (ANSI code page), so that only the suite's folder shows. The
// caller is in a COM apartment.
void hide_system_entry(const char* menu);

}  // namespace vl::sendto
