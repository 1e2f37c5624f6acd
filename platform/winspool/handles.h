// Printer handles of this process.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace vlspool {

struct OpenedPrinter {
    std::string name;  // UTF-8
    ACCESS_MASK access;
};

[[nodiscard]] HANDLE new_handle(const std::string& name, ACCESS_MASK access);
// What a handle stands for. None: ERROR_INVALID_HANDLE is set, and it is reported.
[[nodiscard]] std::optional<OpenedPrinter> printer_of(const char* function, HANDLE handle);
void drop_handle(HANDLE handle);
[[nodiscard]] uint32_t open_handles();

}  // namespace vlspool
