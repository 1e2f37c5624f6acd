// SHA-256 of files and of bytes, by the system's cryptography provider.
#pragma once

#include <stddef.h>

#include <string>

namespace programs {

// 64 lower-case hexadecimal digits; empty when the file cannot be read.
[[nodiscard]] std::string sha256_of_file(const std::wstring& path);
[[nodiscard]] std::string sha256_of_bytes(const void* bytes, size_t size);

}  // namespace programs
