// What the library says of one object, as UTF-16. Empty: it says nothing, or its texts are missing.
#pragma once

#include "VlSDK.h"

#include <string>

namespace programs {

// A text of the language resource library.
[[nodiscard]] std::wstring library_text(unsigned int id);

[[nodiscard]] std::wstring adapter_status();
[[nodiscard]] std::wstring device_kind(uint32_t device_class);
[[nodiscard]] std::wstring device_status(BtHandle device);
[[nodiscard]] std::wstring server_name(BtHandle server);
[[nodiscard]] std::wstring server_status(BtHandle server);
[[nodiscard]] std::wstring shortcut_name(BtHandle shortcut);
[[nodiscard]] std::wstring shortcut_status(BtHandle shortcut);

}  // namespace programs
