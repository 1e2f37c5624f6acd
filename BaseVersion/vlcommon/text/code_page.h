// Narrow text between the stack's UTF-8 and the process's ANSI code page.
#pragma once

namespace vl::text {

// Both write at most `size` bytes, terminator included, and return the length of the text that is then
// in `destination`. Text that does not fit leaves what the conversion call left, perhaps without a
// terminator; text that cannot be converted leaves the empty text.
int utf8_to_local(char* destination, const char* utf8, unsigned size);
int local_to_utf8(char* destination, const char* local, unsigned size);

// In place: the first `length` bytes of `buffer` are the text and the only room for the result.
// Without memory for a copy the text stays as it is.
unsigned utf8_to_local_in_place(char* buffer, unsigned length);
unsigned local_to_utf8_in_place(char* buffer, unsigned length);

}  // namespace vl::text
