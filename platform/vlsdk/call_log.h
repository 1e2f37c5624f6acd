// The log of this process's calls.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vlsim {

struct Operation;

[[nodiscard]] bool logging();
void set_logging(bool on);
void log_call(const Operation& called, std::string text);
void clear_log();
// Calls of one operation; null: of all.
[[nodiscard]] uint32_t call_count(const char* name);
[[nodiscard]] std::optional<std::string> logged_call(uint32_t index);

}  // namespace vlsim
