// Thumbnails: small JPEG files of one size, whatever the shape of the image.
#include "encoders.h"
#include "frame/trace.h"
#include "image_file.h"
#include "text/cut_path.h"
#include "vlcm/images.h"

namespace vl::images {
namespace {

using text::CutPath;

UniqueImage thumbnail_of(Gdiplus::GpImage* image) {
    Gdiplus::GpImage* made = nullptr;
    const bool done =
        Gdiplus::DllExports::GdipGetImageThumbnail(image, VLCM_THUMBNAIL_WIDTH, VLCM_THUMBNAIL_HEIGHT, &made,
                                                   nullptr, nullptr) == Gdiplus::Ok;
    return UniqueImage(done ? made : nullptr);
}

void save_as_jpeg(Gdiplus::GpImage* image, const char* path) {
    CLSID encoder;
    if (find_encoder(L"image/jpeg", &encoder) < 0) return;
    Gdiplus::DllExports::GdipSaveImageToFile(image, CutPath::from_local(path).text(), &encoder, nullptr);
}

// The source stays loaded, and its file open, until the thumbnail is saved.
void make_thumbnail(const char* source_path, const char* path) {
    const GdiPlusSession session;
    if (!session) return;
    const UniqueImage source = load_image(CutPath::from_local(source_path).text());
    if (!source) return;
    const UniqueImage thumbnail = thumbnail_of(source.get());
    if (thumbnail) save_as_jpeg(thumbnail.get(), path);
}

}  // namespace
}  // namespace vl::images

using namespace vl;

extern "C" void VlCm_CreateThumbFile(const char* source, const char* thumbnail) {
    TraceScope scope("CreateThumbFile", Module::kImage);
    if (source != nullptr && thumbnail != nullptr) images::make_thumbnail(source, thumbnail);
}
