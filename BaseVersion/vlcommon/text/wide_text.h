// UTF-16 text for Windows' wide calls and for messages.
#pragma once

#include <stddef.h>

namespace vl::text {

// Both write at most `size` characters, terminated; text that does not fit or cannot be converted gives
// the empty text.
void utf8_to_wide(wchar_t* destination, size_t size, const char* utf8);
void local_to_wide(wchar_t* destination, size_t size, const char* local);

}  // namespace vl::text
