// The image encoders of the system.
#pragma once

#include "frame/unique_gdiplus.h"

namespace vl::images {

// The position of the first encoder of this MIME type in the system's list, and its class identifier;
// -1 when there is none or the list cannot be had.
int find_encoder(const wchar_t* mime_type, CLSID* encoder);

}  // namespace vl::images
