#include "wide_text.h"

#include <windows.h>

namespace vl::text {
namespace {

void convert(wchar_t* destination, size_t size, const char* text, UINT code_page) {
    if (MultiByteToWideChar(code_page, 0, text, -1, destination, static_cast<int>(size)) == 0) {
        destination[0] = 0;
    }
}

}  // namespace

void utf8_to_wide(wchar_t* destination, size_t size, const char* utf8) {
    convert(destination, size, utf8, CP_UTF8);
}

void local_to_wide(wchar_t* destination, size_t size, const char* local) {
    convert(destination, size, local, CP_ACP);
}

}  // namespace vl::text
