#include "cut_path.h"

#include <windows.h>

namespace vl::text {

// Of text that is too long the conversion leaves what fits, without a terminator.
CutPath::CutPath(const char* path, unsigned code_page) {
    MultiByteToWideChar(code_page, 0, path, -1, text_, static_cast<int>(kPathSize));
    text_[kPathSize - 1] = 0;
}

CutPath CutPath::from_utf8(const char* path) { return {path, CP_UTF8}; }

CutPath CutPath::from_local(const char* path) { return {path, CP_ACP}; }

}  // namespace vl::text
