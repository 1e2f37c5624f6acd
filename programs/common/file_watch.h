// Waiting for something to happen in a folder: a file arrives, a log grows.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace programs {

// Tests `condition` now and after every change in `folder`; gives up after `timeout_ms`.
// Returns whether it came true.
[[nodiscard]] bool wait_in_folder(const std::wstring& folder, DWORD timeout_ms,
                                  const std::function<bool()>& condition);

}  // namespace programs
