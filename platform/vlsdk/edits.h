// Changes that operations make to the shared document. All give false when nothing was changed.
#pragma once

#include "model.h"

#include <optional>
#include <string>
#include <vector>

namespace vlsim {

// A new shortcut as its creator described it. @return its handle; 0: not stored
[[nodiscard]] BtHandle add_shortcut(const Shortcut& shortcut);
[[nodiscard]] bool erase_shortcut(BtHandle shortcut);

// What a write-back changes; the rest stays.
struct ShortcutChange {
    std::optional<std::string> name;
    std::optional<std::string> service_name;
    std::optional<bool> is_default;
    std::optional<std::vector<uint8_t>> parameter;
};
[[nodiscard]] bool change_shortcut(BtHandle shortcut, const ShortcutChange& change);

[[nodiscard]] bool set_server_status(BtHandle server, uint32_t status);
[[nodiscard]] bool set_service_parameter(BtHandle service, uint32_t parameter);
[[nodiscard]] bool set_local_class(uint32_t device_class);
// `member` is "plugged" or "open".
[[nodiscard]] bool clear_port_flag(int32_t number, const char* member);

}  // namespace vlsim
