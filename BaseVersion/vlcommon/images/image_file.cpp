#include "image_file.h"

#include "vlcm/images.h"

namespace vl::images {
namespace {

struct Format {
    GUID raw_format;
    unsigned char code;
};
// The raw formats of GDI+, sought in this order.
constexpr Format kFormats[] = {
    {{0xB96B3CAE, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}}, VLCM_IMAGE_JPEG},
    {{0xB96B3CAB, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}}, VLCM_IMAGE_BMP},
    {{0xB96B3CB0, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}}, VLCM_IMAGE_GIF},
    {{0xB96B3CAF, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}}, VLCM_IMAGE_PNG},
};

}  // namespace

UniqueImage load_image(const wchar_t* path) {
    Gdiplus::GpImage* image = nullptr;
    const bool loaded = Gdiplus::DllExports::GdipLoadImageFromFile(path, &image) == Gdiplus::Ok;
    return UniqueImage(loaded ? image : nullptr);
}

void tell_encoding(Gdiplus::GpImage* image, unsigned char* code) {
    GUID raw_format;
    if (Gdiplus::DllExports::GdipGetImageRawFormat(image, &raw_format) != Gdiplus::Ok) return;
    for (const Format& format : kFormats) {
        if (!IsEqualGUID(raw_format, format.raw_format)) continue;
        *code = format.code;
        return;
    }
}

}  // namespace vl::images
