// The tray agent and the settings that it is found by.
#pragma once

#include <windows.h>

namespace programs {

// Tells the library that the suite is installed in this program's folder. 0 on success.
[[nodiscard]] int install_here();
// Starts the tray agent through the library. 0 when its window is there.
[[nodiscard]] int start_agent();
// Closes the tray agent, whose running deliveries end first. 0 when it is gone or was not there.
[[nodiscard]] int stop_agent();

}  // namespace programs
