// The tray agent as other programs see it: a hidden window and a mutex that it holds while it lives.
#pragma once

#include <windows.h>

namespace vl::process {

// The tray agent's window; null while it is absent or still starting.
HWND tray_window();

// Lifts the tray agent's window to the foreground when there is one. Opens no trace scope.
void bring_tray_to_front();

}  // namespace vl::process
