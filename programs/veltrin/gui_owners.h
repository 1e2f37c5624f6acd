// Owners of what the window takes from the graphics system.
#pragma once

#include "frame/unique.h"

#include <windows.h>

#include <commctrl.h>

namespace veltrin {

struct IconTraits : vl::NullIsNone<HICON> {
    static void close(HICON icon) { DestroyIcon(icon); }
};
struct ImageListTraits : vl::NullIsNone<HIMAGELIST> {
    static void close(HIMAGELIST list) { ImageList_Destroy(list); }
};
struct FontTraits : vl::NullIsNone<HFONT> {
    static void close(HFONT font) { DeleteObject(font); }
};
struct MenuTraits : vl::NullIsNone<HMENU> {
    static void close(HMENU menu) { DestroyMenu(menu); }
};

using UniqueIcon = vl::Unique<IconTraits>;
using UniqueImageList = vl::Unique<ImageListTraits>;
using UniqueFont = vl::Unique<FontTraits>;
using UniqueMenu = vl::Unique<MenuTraits>;

}  // namespace veltrin
