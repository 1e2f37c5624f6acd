#include "decimal.h"

#include "vlcm/text.h"

#include <string.h>

namespace vl::text {
namespace {

constexpr int kHalfDigits = 10;
constexpr int kDigits = 20;
constexpr int kTwoTo32[kHalfDigits] = {4, 2, 9, 4, 9, 6, 7, 2, 9, 6};

// Right-aligned; places to the left of the half's own digits keep what they hold, 0 has no digits.
void write_digits(unsigned half, int (&digits)[kHalfDigits]) {
    for (int place = kHalfDigits; half != 0; half /= 10) digits[--place] = static_cast<int>(half % 10);
}

// Adds digit by digit and carries afterwards: a place collects at most 10 * 81 + 9.
void add_product(const int (&digits)[kHalfDigits], int (&sum)[kDigits]) {
    for (int i = 0; i < kHalfDigits; ++i) {
        for (int j = 0; j < kHalfDigits; ++j) sum[i + j + 1] += digits[i] * kTwoTo32[j];
    }
}

// Carries towards the front and turns the places into characters.
void write_characters(const int (&sum)[kDigits], char (&text)[kDigits + 1]) {
    int carry = 0;
    for (int place = kDigits - 1; place >= 0; --place) {
        const int value = sum[place] + carry;
        text[place] = static_cast<char>('0' + value % 10);
        carry = value / 10;
    }
    text[kDigits] = 0;
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
    int digits[kHalfDigits] = {};
    int sum[kDigits] = {};
    write_digits(high, digits);
    add_product(digits, sum);
    write_digits(low, digits);  // over the high half: its leading digits count once more, as callers expect
    for (int i = 0; i < kHalfDigits; ++i) sum[kDigits - kHalfDigits + i] += digits[i];
    char text[kDigits + 1];
    write_characters(sum, text);
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
