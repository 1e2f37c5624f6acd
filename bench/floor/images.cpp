#include "floor.h"

#include <objbase.h>

#include <gdiplus.h>
#include <io.h>
#include <stdio.h>

namespace {

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

// Of the system's own encoder, which the library has to look up.
constexpr CLSID kJpegEncoder = {0x557CF401, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

GpImage* load(UINT code_page, const char* path, wchar_t* wide) {
    MultiByteToWideChar(code_page, 0, path, -1, wide, MAX_PATH);
    GpImage* image = nullptr;
    GdipLoadImageFromFile(wide, &image);
    return image;
}

}  // namespace

extern "C" void Floor_ImageProperties(const char* path, VlImageProperty* property) {
    ULONG_PTR token = 0;
    const GdiplusStartupInput input;
    GdiplusStartup(&token, &input, nullptr);
    wchar_t wide[MAX_PATH];
    GpImage* image = load(CP_UTF8, path, wide);
    UINT width = 0, height = 0;
    GUID format = {};
    GdipGetImageWidth(image, &width);
    GdipGetImageHeight(image, &height);
    GdipGetImageRawFormat(image, &format);
    GdipDisposeImage(image);
    GdiplusShutdown(token);
    property->dimensions = width << 16 | height;
    property->encoding = format.Data1 == 0xB96B3CAE ? VLCM_IMAGE_JPEG : 0;
    FILE* file = _wfopen(wide, L"r");
    property->fileSize = static_cast<uint32_t>(_filelengthi64(_fileno(file)));
    fclose(file);
}

extern "C" void Floor_Thumbnail(const char* source, const char* thumbnail) {
    ULONG_PTR token = 0;
    const GdiplusStartupInput input;
    GdiplusStartup(&token, &input, nullptr);
    wchar_t wide[MAX_PATH];
    GpImage* image = load(CP_ACP, source, wide);
    GpImage* made = nullptr;
    GdipGetImageThumbnail(image, VLCM_THUMBNAIL_WIDTH, VLCM_THUMBNAIL_HEIGHT, &made, nullptr, nullptr);
    MultiByteToWideChar(CP_ACP, 0, thumbnail, -1, wide, MAX_PATH);
    GdipSaveImageToFile(made, wide, &kJpegEncoder, nullptr);
    GdipDisposeImage(made);
    GdipDisposeImage(image);
    GdiplusShutdown(token);
}
