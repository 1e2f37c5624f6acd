#include "wide_path.h"

#include <windows.h>

namespace vl::text {

// Of text that is too long the conversion leaves what fits, without a terminator.
WidePath::WidePath(const char* path, unsigned code_page) {
    MultiByteToWideChar(code_page, 0, path, -1, text_, static_cast<int>(kPathSize));
    text_[kPathSize - 1] = 0;
}

WidePath WidePath::from_utf8(const char* path) { return {path, CP_UTF8}; }

WidePath WidePath::from_local(const char* path) { return {path, CP_ACP}; }

}  // namespace vl::text
