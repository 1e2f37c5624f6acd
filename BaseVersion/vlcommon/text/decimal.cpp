#include "decimal.h"

#include "vlcm/text.h"

#include <stdint.h>
#include <string.h>

namespace vl::text {
namespace {

constexpr int kHalfDigits = 10;
constexpr int kDigits = 20;
constexpr uint64_t kHalfLimit = 10'000'000'000;

// Low's digits written over high's, right-aligned: where low is shorter high's leading digits stay, and
// 0 has no digits.
uint64_t written_over(uint64_t high, uint64_t low) {
    uint64_t place = 1;
    while (place <= low) place *= 10;
    return high / place * place + low;
}

// Twenty digits in two halves: the sum does not always fit in 64 bits.
void write_digits(uint64_t front, uint64_t back, char* text) {
    for (int place = kHalfDigits - 1; place >= 0; --place, front /= 10, back /= 10) {
        text[place] = static_cast<char>('0' + front % 10);
        text[place + kHalfDigits] = static_cast<char>('0' + back % 10);
    }
}

// Without a terminator unless there is room for it; a text that is too long loses its front.
int copy_text(const char* text, unsigned length, char* buffer, unsigned size) {
    if (size > length) {
        memcpy(buffer, text, length + 1);
    } else if (size == 0) {
        memcpy(buffer, text, length);
    } else {
        memcpy(buffer, text + (length - size), size);
        return static_cast<int>(size);
    }
    return static_cast<int>(length);
}

}  // namespace

int decimal_text(unsigned high, unsigned low, char* buffer, unsigned size) {
    const uint64_t product = uint64_t{high} << 32;
    // high's leading digits may count once more, as callers expect
    const uint64_t back = product % kHalfLimit + written_over(high, low);
    char text[kDigits + 1] = {};
    write_digits(product / kHalfLimit + back / kHalfLimit, back % kHalfLimit, text);
    int start = 0;
    while (start < kDigits - 1 && text[start] == '0') ++start;
    const int length = kDigits - start;
    return buffer ? copy_text(text + start, static_cast<unsigned>(length), buffer, size) : length;
}

}  // namespace vl::text

using namespace vl;

extern "C" int VlCm_U64TOA(unsigned int high, unsigned int low, char* buffer, unsigned int size) {
    return text::decimal_text(high, low, buffer, size);
}
