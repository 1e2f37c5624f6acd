#include "wide_text.h"

#include "frame/bounded_text.h"
#include "twin.h"

namespace vl::text {
namespace {

// Without the source's terminator: some platforms let an incomplete sequence at the very end swallow it.
void convert(wchar_t* destination, size_t size, const char* text, UINT code_page) {
    const int units = MultiByteToWideChar(code_page, 0, text, resource_size(strlen(text)), destination,
                                          resource_size(size - 1));
    destination[units] = 0;
}

bool convert_back(UINT code_page, char* destination, size_t size, const wchar_t* text) {
    return WideCharToMultiByte(code_page, 0, text, -1, destination, resource_size(size), nullptr, nullptr) >
           0;
}

// Units of the character at `text`: two for a surrogate pair.
int units_of_character(const wchar_t* text) {
    return IS_HIGH_SURROGATE(text[0]) && IS_LOW_SURROGATE(text[1]) ? 2 : 1;
}

// Character by character: the platform does not say what it leaves of a text that is too long.
void convert_back_cut(UINT code_page, char* destination, size_t size, const wchar_t* text) {
    if (convert_back(code_page, destination, size, text)) return;
    int room = resource_size(size - 1);
    while (*text != 0) {
        const int units = units_of_character(text);
        const int bytes = WideCharToMultiByte(code_page, 0, text, units, destination, room, nullptr, nullptr);
        if (room == 0 || bytes == 0) break;  // without room the call only measures
        destination += bytes;
        room -= bytes;
        text += units;
    }
    *destination = 0;
}

}  // namespace

void utf8_to_wide(wchar_t* destination, size_t size, const char* utf8) {
    convert(destination, size, utf8, CP_UTF8);
}

void local_to_wide(wchar_t* destination, size_t size, const char* local) {
    convert(destination, size, local, CP_ACP);
}

void utf8_to_wide_cut(wchar_t* destination, size_t size, const char* utf8, wchar_t* work) {
    const auto bytes = static_cast<int>(bounded_length(utf8, 3 * size));
    const auto units = static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8, bytes, work, bytes));
    const size_t length = units < size ? units : size - 1;
    memcpy(destination, work, length * sizeof *work);
    destination[length] = 0;
}

bool wide_to_utf8(char* destination, size_t size, const wchar_t* text) {
    return convert_back(CP_UTF8, destination, size, text);
}

void wide_to_utf8_cut(char* destination, size_t size, const wchar_t* text) {
    convert_back_cut(CP_UTF8, destination, size, text);
}

void wide_to_local_cut(char* destination, size_t size, const wchar_t* text) {
    convert_back_cut(CP_ACP, destination, size, text);
}

}  // namespace vl::text
