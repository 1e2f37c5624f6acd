// Narrow text in buffers of fixed size: whatever is written is cut to fit and terminated.
#pragma once

#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>

namespace vl {

inline constexpr size_t kPathSize = 260;  // bytes of every path buffer, terminator included

// The length of `text`, looking at no more than `limit` bytes; `limit` when none is a terminator.
inline size_t bounded_length(const char* text, size_t limit) {
    const void* end = memchr(text, 0, limit);
    return end ? static_cast<size_t>(static_cast<const char*>(end) - text) : limit;
}

inline void copy_bounded(char* buffer, size_t size, const char* text) {
    if (size == 0) return;
    const size_t length = bounded_length(text, size - 1);
    memcpy(buffer, text, length);
    buffer[length] = 0;
}

// A buffer without a terminator stays as it is.
inline void append_bounded(char* buffer, size_t size, const char* text) {
    const size_t used = bounded_length(buffer, size);
    copy_bounded(buffer + used, size - used, text);
}

__attribute__((format(printf, 3, 4))) inline void format_bounded(char* buffer, size_t size,
                                                                 const char* format, ...) {
    va_list values;
    va_start(values, format);
    _vsnprintf(buffer, size, format, values);  // leaves a text that fills the buffer unterminated
    va_end(values);
    buffer[size - 1] = 0;
}

// A path under construction: zeroed, 260 bytes, cut at 259.
class PathBuffer {
public:
    PathBuffer() = default;
    [[nodiscard]] char* data() { return text_; }
    [[nodiscard]] const char* text() const { return text_; }
    [[nodiscard]] static constexpr unsigned size() { return static_cast<unsigned>(kPathSize); }
    PathBuffer& append(const char* text) {
        append_bounded(text_, kPathSize, text);
        return *this;
    }

private:
    char text_[kPathSize] = {};
};

}  // namespace vl
