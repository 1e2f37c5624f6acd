// Shell links (.lnk files) through the shell's own object. The caller is in a COM apartment.
#pragma once

#include "bounded_text.h"
#include "unique_com.h"

#include <shobjidl.h>

namespace vl {

// Stands before the address in the arguments of a link that points at a device.
inline constexpr char kDeviceArgument[] = "-DEV_ADDR=";
inline constexpr size_t kDeviceArgumentLength = sizeof kDeviceArgument - 1;

class LinkFile {
public:
    LinkFile();  // makes the object

    explicit operator bool() const { return static_cast<bool>(link_); }
    [[nodiscard]] IShellLinkA* get() const { return link_.get(); }
    // Whether the object could be made, as the shell says it.
    [[nodiscard]] HRESULT result() const { return result_; }

    // Loads a link for reading. One that cannot be read has no target and no arguments.
    HRESULT load(const wchar_t* path) const;
    // Zeroes the buffer first: what cannot be read is empty.
    void read_arguments(char (&arguments)[kPathSize]) const;
    // The path of the target as it was stored; empty when it cannot be read.
    void read_target(char (&path)[kPathSize]) const;

    // Writes the link; an existing file is replaced.
    [[nodiscard]] HRESULT save(const wchar_t* path) const;

private:
    UniqueInterface<IShellLinkA> link_;
    HRESULT result_;
};

}  // namespace vl
