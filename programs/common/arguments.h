// The words of this program's command line.
#pragma once

#include <string>
#include <vector>

namespace programs {

// As UTF-8, without the program's name, last first: as the option parser takes them. The runtime's own
// are in the ANSI code page.
[[nodiscard]] std::vector<std::string> arguments_last_first();

}  // namespace programs
