// How a file reaches a device: it is copied into the device's inbox folder.
#pragma once

#include <string>

namespace programs {

struct Delivery {
    std::wstring arrived;  // path in the inbox; empty on failure
    std::string failure;   // why not
};

// Copies `source` into `inbox` under its own name; a name that is taken gets a number ("a (2).txt"). The
// file appears whole: it is written under another name first.
[[nodiscard]] Delivery deliver(const std::wstring& source, const std::wstring& inbox);

}  // namespace programs
