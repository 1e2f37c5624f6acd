// The devices that the stack knows.
#pragma once

namespace programs {

// Prints every device with address, class, name and services. 0 when there is at least one.
[[nodiscard]] int show_neighbourhood();

}  // namespace programs
