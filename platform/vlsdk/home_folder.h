// The folder in which all processes share the simulation.
#pragma once

#include <string>

namespace vlsim {

// VLSIM_HOME, else "vlsim" in the local application data; made when missing.
[[nodiscard]] const std::wstring& home_folder();

}  // namespace vlsim
