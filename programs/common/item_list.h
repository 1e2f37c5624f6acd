// Item identifier lists of the shell, decoded for logs and people. The bytes may be anybody's: nothing
// in them is trusted.
#pragma once

#include "VlCommon.h"

#include <optional>
#include <string>
#include <vector>

namespace programs {

using Bytes = std::vector<uint8_t>;

struct ListItem {
    Bytes bytes;                             // the item whole, with its size
    std::optional<VlShellItem> suite;        // one of the suite's namespace
    std::optional<std::string> shell_class;  // one of the shell that names a class: "{20D04FE0-...}"
};

struct ItemList {
    std::vector<ListItem> items;
    bool terminated = false;  // false: the bytes end too early or make no sense
};

[[nodiscard]] ItemList decode_item_list(const Bytes& bytes);

// What an item of the suite stands for: "device", "service", ...; "unknown" for a type without a row.
[[nodiscard]] std::string kind_of(const VlShellItem& item);
// The name in an item of the suite, UTF-8.
[[nodiscard]] std::string service_name(const VlShellItem& item);
// An item in one line.
[[nodiscard]] std::string item_text(const ListItem& item);

// "1f50e04f..."
[[nodiscard]] std::string hex_digits(const Bytes& bytes);

}  // namespace programs
