// Shell links (.lnk files) through the shell's own object. The caller is in a COM apartment.
#pragma once

#include "unique_com.h"

#include <shobjidl.h>

namespace vl {

class LinkFile {
public:
    LinkFile();  // makes the object

    explicit operator bool() const { return static_cast<bool>(link_); }
    [[nodiscard]] IShellLinkA* get() const { return link_.get(); }

    // Loads a link for reading. One that cannot be read has no target and no arguments.
    HRESULT load(const wchar_t* path) const;

private:
    UniqueInterface<IShellLinkA> link_;
};

}  // namespace vl
