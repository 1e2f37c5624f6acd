// UTF-16 text for Windows' wide calls and for messages.
#pragma once

#include <stddef.h>

namespace vl::text {

// Both write at most `size` characters, terminated; text that does not fit or cannot be converted gives
// the empty text.
void utf8_to_wide(wchar_t* destination, size_t size, const char* utf8);
void local_to_wide(wchar_t* destination, size_t size, const char* local);

// As utf8_to_wide(), but text that does not fit is cut. `work` takes 3 * size characters: what fits
// comes from the first three bytes for each of its characters.
void utf8_to_wide_cut(wchar_t* destination, size_t size, const char* utf8, wchar_t* work);
template <size_t size>
void utf8_to_wide_cut(wchar_t (&destination)[size], const char* utf8) {
    wchar_t work[3 * size];
    utf8_to_wide_cut(destination, size, utf8, work);
}

// Writes at most `size` bytes, terminator included. False: the text does not fit; what the conversion
// call left stays, perhaps without a terminator.
bool wide_to_utf8(char* destination, size_t size, const wchar_t* text);

// Both write at most `size` bytes, terminated, and cut before the first character that does not fit.
void wide_to_utf8_cut(char* destination, size_t size, const wchar_t* text);
void wide_to_local_cut(char* destination, size_t size, const wchar_t* text);

}  // namespace vl::text
