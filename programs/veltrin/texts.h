// The window's own texts, from its resources.
#pragma once

#include <windows.h>

#include <string>

namespace veltrin {

[[nodiscard]] std::wstring text(UINT id);
// With `first` in the place of %1 and `second` in that of %2.
[[nodiscard]] std::wstring text(UINT id, const std::wstring& first, const std::wstring& second = {});

}  // namespace veltrin
