// What an image is: its format, dimensions and size.
#include "file_length.h"
#include "frame/trace.h"
#include "image_file.h"
#include "text/cut_path.h"
#include "vlcm/images.h"

namespace vl::images {
namespace {

using text::CutPath;

void tell_encoding_of_image(Gdiplus::GpImage* image, unsigned char* code) {
    const GdiPlusSession session;
    if (session) tell_encoding(image, code);
}

void tell_encoding_of_file(const char* path, unsigned char* code) {
    const GdiPlusSession session;
    if (!session) return;
    const UniqueImage image = load_image(CutPath::from_local(path).text());
    if (image) tell_encoding(image.get(), code);
}

void tell_dimensions(Gdiplus::GpImage* image, uint32_t* dimensions) {
    UINT width = 0;
    UINT height = 0;
    if (Gdiplus::DllExports::GdipGetImageWidth(image, &width) != Gdiplus::Ok) return;
    if (Gdiplus::DllExports::GdipGetImageHeight(image, &height) != Gdiplus::Ok) return;
    *dimensions = width << 16 | height;
}

void tell_image(const CutPath& path, VlImageProperty* property) {
    const UniqueImage image = load_image(path.text());
    if (!image) return;
    tell_dimensions(image.get(), &property->dimensions);
    tell_encoding(image.get(), &property->encoding);
}

// The path is UTF-8 here alone: every other image path is in the ANSI code page.
void tell_properties(const char* path, VlImageProperty* property) {
    CutPath wide;
    {
        const GdiPlusSession session;
        if (!session) return;
        wide = CutPath::from_utf8(path);
        tell_image(wide, property);
    }
    tell_length(_wfopen(wide.text(), L"r"), &property->fileSize);
}

}  // namespace
}  // namespace vl::images

using namespace vl;

extern "C" void VlCm_GetImgEncode(VlGdiPlusImage* image, unsigned char* encoding) {
    TraceScope scope("GetImgEncode", Module::kImage);
    if (image != nullptr && encoding != nullptr) images::tell_encoding_of_image(image, encoding);
}

extern "C" void VlCm_GetImgEncodeEx(const char* path, unsigned char* encoding) {
    TraceScope scope("GetImgEncodeEx", Module::kImage);
    if (path != nullptr && encoding != nullptr) images::tell_encoding_of_file(path, encoding);
}

extern "C" void VlCm_GetImgProp(const char* path, VlImageProperty* property) {
    TraceScope scope("GetImgProp", Module::kImage);
    if (path != nullptr && property != nullptr) images::tell_properties(path, property);
}
