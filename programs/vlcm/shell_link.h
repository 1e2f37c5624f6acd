// Shell links, read by the shell's own object. The caller is in a COM apartment (vl::ComApartment).
#pragma once

#include "frame/unique_com.h"

#include <shobjidl.h>

#include <string>

namespace programs {

// A link file, loaded; null when it cannot be read.
[[nodiscard]] vl::UniqueInterface<IShellLinkW> load_link(const std::wstring& path);

}  // namespace programs
