// Image files as GDI+ loads them. Needs a running session, as everything here that takes an image.
#pragma once

#include "frame/unique_gdiplus.h"

namespace vl::images {

// Empty when there is no such file or GDI+ cannot read it. The file stays open as long as the image.
UniqueImage load_image(const wchar_t* path);

// Writes the code of the image's format; any other format leaves it as it is.
void tell_encoding(Gdiplus::GpImage* image, unsigned char* code);

}  // namespace vl::images
