// Sizes and fonts at the resolution of a window's monitor.
#pragma once

#include "gui_owners.h"

#include <windows.h>

namespace veltrin {

inline constexpr UINT kUsualDpi = 96;

// The resolution of the window's monitor; before Windows 10 that of the whole desktop.
[[nodiscard]] UINT dpi_of(HWND window);
// A length at 96 dots per inch, at another resolution.
[[nodiscard]] int scaled(int length, UINT dpi);
// The user's font for texts in windows.
[[nodiscard]] UniqueFont message_font(UINT dpi, bool bold);

}  // namespace veltrin
