// Decimal text of 64-bit numbers.
#pragma once

namespace vl::text {

// The text of high * 4294967296 + low, with the addition that VlCm_U64TOA describes; returns the number
// of characters written or, without a buffer, needed.
int decimal_text(unsigned high, unsigned low, char* buffer, unsigned size);

}  // namespace vl::text
