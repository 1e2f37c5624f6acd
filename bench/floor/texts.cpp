#include "floor.h"

#include <stdlib.h>
#include <string.h>

extern "C" int Floor_Convert(unsigned int from, unsigned int to, char* destination, const char* source,
                             unsigned int size) {
    const int units = MultiByteToWideChar(from, 0, source, -1, nullptr, 0);
    auto utf16 = static_cast<wchar_t*>(malloc(static_cast<size_t>(units) * sizeof(wchar_t)));
    MultiByteToWideChar(from, 0, source, -1, utf16, units);
    const int bytes =
        WideCharToMultiByte(to, 0, utf16, -1, destination, static_cast<int>(size), nullptr, nullptr);
    free(utf16);
    return bytes - 1;
}

extern "C" int Floor_DecimalText(unsigned int high, unsigned int low, char* buffer, unsigned int size) {
    auto digits = static_cast<char*>(calloc(1, 12));
    auto product = static_cast<char*>(calloc(1, 24));
    unsigned int place = 20;
    for (uint64_t value = uint64_t{high} << 32 | low; value != 0; value /= 10) {
        product[--place] = static_cast<char>('0' + value % 10);
    }
    const unsigned int length = 20 - place;
    if (size > length) memcpy(buffer, product + place, length + 1);
    free(product);
    free(digits);
    return static_cast<int>(length);
}
