// Paths for Windows' wide calls.
#pragma once

#include "frame/bounded_text.h"

namespace vl::text {

// At most 260 characters, terminator included: longer text is cut, text that cannot be converted is empty.
class CutPath {
public:
    CutPath() = default;
    [[nodiscard]] static CutPath from_utf8(const char* path);
    [[nodiscard]] static CutPath from_local(const char* path);
    [[nodiscard]] const wchar_t* text() const { return text_; }

private:
    CutPath(const char* path, unsigned code_page);

    wchar_t text_[kPathSize] = {};
};

}  // namespace vl::text
