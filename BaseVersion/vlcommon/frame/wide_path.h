// UTF-16 paths and file names in buffers of fixed size. Text that does not fit leaves nothing, for good:
// a path that is cut names another file.
#pragma once

#include "bounded_text.h"

#include <wchar.h>

namespace vl {

class WidePath {
public:
    WidePath() = default;
    explicit WidePath(const wchar_t* text) { append(text); }

    explicit operator bool() const { return text_[0] != 0; }
    [[nodiscard]] const wchar_t* text() const { return text_; }

    WidePath& append(const wchar_t* text) {
        const size_t length = wcslen(text);
        if (length >= kPathSize - used_) return fail();
        wmemcpy(text_ + used_, text, length + 1);
        used_ += length;
        return *this;
    }

private:
    WidePath& fail() {
        text_[0] = 0;
        used_ = kPathSize;
        return *this;
    }

    wchar_t text_[kPathSize] = {};
    size_t used_ = 0;
};

}  // namespace vl
