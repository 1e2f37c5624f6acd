// Shell links by the system's own objects.
#pragma once

#include "item_list.h"

#include <string>

namespace suite {

inline const programs::Bytes kMyComputer = {20,   0,    0x1F, 0x50, 0xE0, 0x4F, 0xD0, 0x20, 0xEA, 0x3A, 0x69,
                                            0x10, 0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D, 0,    0};

// The first link object of a process makes the system keep a key open: it is no leak.
void warm_up_links();
// Makes a link to an item list.
void make_link(const std::wstring& path, const programs::Bytes& list);
// The item list of a link; empty when it cannot be read.
[[nodiscard]] programs::Bytes list_of_link(const std::wstring& path);

}  // namespace suite
