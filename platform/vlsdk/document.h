// The shared document: read, changed, replaced.
#pragma once

#include "scenario.h"

#include <functional>
#include <string>

namespace vlsim {

// Changes the document under the lock of all processes and writes it back. A change that returns
// false, throws or leaves no valid scenario behind changes nothing and gives false.
bool change_document(const std::function<bool(json&)>& change);

// Reads the document.
void read_document(const std::function<void(const json&)>& reader);

// The built-in neighbourhood, as JSON text.
[[nodiscard]] std::string built_in_scenario();

}  // namespace vlsim
