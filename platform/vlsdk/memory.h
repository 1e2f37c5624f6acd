// The stack's allocator.
#pragma once

#include <cstdint>
#include <vector>

namespace vlsim {

// A block with the given content that its receiver frees with Btsdk_FreeMemory; null for no bytes.
[[nodiscard]] void* new_block(const std::vector<uint8_t>& content);

}  // namespace vlsim
