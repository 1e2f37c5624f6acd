// The spooler's state, one JSON document that all processes share: read, changed, replaced.
#pragma once

#include <nlohmann/json.hpp>

#include <functional>
#include <string>

namespace vlspool {

using json = nlohmann::ordered_json;

// The document as it is now, with all its lists.
[[nodiscard]] json read_document();

// Changes the document under the lock of all processes and writes it back. A change that returns false,
// throws or leaves no valid document behind changes nothing and gives false.
bool change_document(const std::function<bool(json&)>& change);

[[nodiscard]] json built_in_scenario();

// The printer of this name; null when there is none. As the spooler does, without regard to case.
[[nodiscard]] json* find_printer(json& document, const std::string& name);

}  // namespace vlspool
