// Writing link files. The caller is in a COM apartment.
#pragma once

#include "frame/link_file.h"
#include "frame/wide_path.h"

#include <stdint.h>

namespace vl::sendto {

// The suite's icon of its shell namespace, the first one of "vlshell.dll".
void set_namespace_icon(const LinkFile& link);

struct LinkContent {
    const char* target;
    const char* arguments;  // null: none
    const char* description;
    uint32_t icon_index;  // in "VlLangInDepRes.dll"
};

// Writes a link file, over an existing one; the shell's result. From Vista on a link without arguments
// bears the icon of the shell namespace.
HRESULT write_link(const WidePath& path, const LinkContent& content);

}  // namespace vl::sendto
