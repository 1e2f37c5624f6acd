// The scenario document: what it may hold, and the model made from it. Its format: docs/simulator.md.
#pragma once

#include "model.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace vlsim {

using json = nlohmann::json;

// Gives every item without a handle one that was never used before. Throws when the document is no
// scenario.
void give_handles(json& document);

// Throws std::exception when the document is no scenario.
[[nodiscard]] Model make_model(const json& document);

// Text that is not UTF-8 (a name cut within a character) is kept as {"hex": "..."}.
[[nodiscard]] json text_value(const std::string& text);
[[nodiscard]] json bytes_value(const std::vector<uint8_t>& bytes);
[[nodiscard]] json address_value(const Address& address);
[[nodiscard]] json class_value(uint32_t device_or_service_class);

}  // namespace vlsim
