// Reports of calls that break the stack's contract, and the checks that find them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

namespace vlsim {

void report_misuse(const char* operation, const std::string& what);
void clear_misuse();
[[nodiscard]] uint32_t misuse_count();
[[nodiscard]] std::optional<std::string> misuse_report(uint32_t index);

// False, with a report, when a required pointer is null.
[[nodiscard]] bool present(const char* operation, const char* parameter, const void* pointer);

// A part of a record that the caller sets.
struct InputField {
    size_t offset;
    size_t size;
};
// Reports bytes of a record that are not zero and that the caller has no business to set.
void expect_zeroed(const char* operation, const void* record, size_t size,
                   std::initializer_list<InputField> inputs = {});

}  // namespace vlsim
