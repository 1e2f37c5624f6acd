// The item list that another program hands over for a folder window.
#pragma once

#include "item_list.h"

namespace programs {

// Takes the list that waits; nullopt when none does. A claimed size is cut to what is really there.
[[nodiscard]] std::optional<Bytes> take_item_list();

}  // namespace programs
