// Handing records to the tray agent.
#pragma once

#include "VlCommon.h"

namespace programs {

// Starts the tray agent when it does not run. Its process; 0: it did not start.
[[nodiscard]] DWORD run_agent();

// Hands the list over to the agent; tries again for up to 2 s while another hand-off is pending. Returns
// the library's status.
[[nodiscard]] uint32_t hand_over(const VlSendRecord* list, uint32_t device);

}  // namespace programs
