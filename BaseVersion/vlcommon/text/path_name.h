// Parts of a path in the ANSI code page.
#pragma once

#include <mbstring.h>

namespace vl::text {

// What follows the last backslash character, which is not every byte of its value; the whole text when
// there is none. `path` ends with two terminators: a lead byte at its very end takes the first for its
// second half.
inline const char* file_name(const char* path) {
    const auto* backslash = _mbsrchr(reinterpret_cast<const unsigned char*>(path), '\\');
    return backslash != nullptr ? reinterpret_cast<const char*>(backslash) + 1 : path;
}

}  // namespace vl::text
