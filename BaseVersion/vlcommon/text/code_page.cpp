#include "code_page.h"

#include "frame/bounded_text.h"
#include "vlcm/text.h"

#include <limits.h>
#include <windows.h>

#include <memory>
#include <new>
#include <utility>

namespace vl::text {
namespace {

using Converter = int (*)(char* destination, const char* source, unsigned size);

// The caller's size as the platform takes it: a negative one would be refused.
int platform_size(unsigned size) { return size > INT_MAX ? INT_MAX : static_cast<int>(size); }

struct Utf16 {
    std::unique_ptr<wchar_t[]> text;  // null when it could not be made
    int units = 0;                    // terminator included: nobody has to look for it again
};

// With room for one unit more than asked for: some platforms let an incomplete sequence at the very end
// of the source swallow the source's terminator.
Utf16 to_utf16(UINT code_page, const char* source) {
    const int units = MultiByteToWideChar(code_page, 0, source, -1, nullptr, 0);
    if (units < 1) return {};
    std::unique_ptr<wchar_t[]> text(new (std::nothrow) wchar_t[static_cast<size_t>(units) + 1]);
    if (!text) return {};
    if (MultiByteToWideChar(code_page, 0, source, -1, text.get(), units) < 1) return {};
    text[static_cast<size_t>(units)] = 0;
    const bool terminated = text[static_cast<size_t>(units) - 1] == 0;
    return {std::move(text), terminated ? units : units + 1};
}

int from_utf16(UINT code_page, char* destination, const Utf16& utf16, unsigned size) {
    const int written = WideCharToMultiByte(code_page, 0, utf16.text.get(), utf16.units, destination,
                                            platform_size(size), nullptr, nullptr);
    if (written > 0) return written - 1;
    if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) destination[0] = 0;
    return static_cast<int>(bounded_length(destination, size));
}

int convert(UINT from, UINT to, char* destination, const char* source, unsigned size) {
    if (destination == nullptr || size == 0) return 0;
    destination[0] = 0;  // first: a source that is the destination reads as the empty text
    const Utf16 utf16 = to_utf16(from, source);
    return utf16.text ? from_utf16(to, destination, utf16, size) : 0;
}

unsigned convert_in_place(Converter converter, char* buffer, unsigned length) {
    if (buffer == nullptr) return 0;
    const size_t bytes = length;
    const std::unique_ptr<char[]> copy(new (std::nothrow) char[bytes + 1]);
    if (!copy) return length;
    memcpy(copy.get(), buffer, bytes);
    copy[bytes] = 0;
    return static_cast<unsigned>(converter(buffer, copy.get(), length));  // not length + 1
}

}  // namespace

int utf8_to_local(char* destination, const char* utf8, unsigned size) {
    return convert(CP_UTF8, CP_ACP, destination, utf8, size);
}

int local_to_utf8(char* destination, const char* local, unsigned size) {
    return convert(CP_ACP, CP_UTF8, destination, local, size);
}

unsigned utf8_to_local_in_place(char* buffer, unsigned length) {
    return convert_in_place(utf8_to_local, buffer, length);
}

unsigned local_to_utf8_in_place(char* buffer, unsigned length) {
    return convert_in_place(local_to_utf8, buffer, length);
}

}  // namespace vl::text

using namespace vl;

extern "C" int VlCm_UTF8ToLocal(char* destination, const char* source, unsigned int size) {
    return text::utf8_to_local(destination, source, size);
}

extern "C" int VlCm_LocalToUTF8(char* destination, const char* source, unsigned int size) {
    return text::local_to_utf8(destination, source, size);
}

extern "C" unsigned int VlCm_UTF8ToLocalEx(char* buffer, unsigned int length) {
    return text::utf8_to_local_in_place(buffer, length);
}

extern "C" unsigned int VlCm_LocalToUTF8Ex(char* buffer, unsigned int length) {
    return text::local_to_utf8_in_place(buffer, length);
}
