// Paths on remote devices.
#pragma once

namespace vl::text {

// Replaces every character `from` by `to`, in place. The second byte of a double-byte character of the
// runtime's code page is never taken for a character of its own.
void replace_separators(char* path, char from, char to);

}  // namespace vl::text
