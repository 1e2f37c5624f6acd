#include "encoders.h"

#include "frame/trace.h"
#include "vlcm/images.h"

#include <string.h>

#include <memory>
#include <new>

namespace vl::images {
namespace {

constexpr int kNotFound = -1;

// The descriptions point at texts behind the last of them, in the same block.
class EncoderList {
public:
    EncoderList() {
        UINT count = 0;
        UINT bytes = 0;
        if (Gdiplus::DllExports::GdipGetImageEncodersSize(&count, &bytes) != Gdiplus::Ok || bytes == 0)
            return;
        block_.reset(new (std::nothrow) unsigned char[bytes]);
        if (!block_) return;
        if (Gdiplus::DllExports::GdipGetImageEncoders(count, bytes, descriptions()) == Gdiplus::Ok) {
            count_ = count;
        }
    }
    [[nodiscard]] const Gdiplus::ImageCodecInfo* begin() const { return descriptions(); }
    [[nodiscard]] const Gdiplus::ImageCodecInfo* end() const { return descriptions() + count_; }

private:
    [[nodiscard]] Gdiplus::ImageCodecInfo* descriptions() const {
        return reinterpret_cast<Gdiplus::ImageCodecInfo*>(block_.get());
    }

    std::unique_ptr<unsigned char[]> block_;
    UINT count_ = 0;
};

int class_of_encoder(const wchar_t* mime_type, CLSID* encoder) {
    const GdiPlusSession session;
    return session ? find_encoder(mime_type, encoder) : kNotFound;
}

}  // namespace

int find_encoder(const wchar_t* mime_type, CLSID* encoder) {
    const EncoderList encoders;
    for (const Gdiplus::ImageCodecInfo& each : encoders) {
        if (wcscmp(each.MimeType, mime_type) != 0) continue;
        *encoder = each.Clsid;
        return static_cast<int>(&each - encoders.begin());
    }
    return kNotFound;
}

}  // namespace vl::images

using namespace vl;

extern "C" int VlCm_GetEncoderClsid(const wchar_t* mimeType, CLSID* encoder) {
    TraceScope scope("GetEncoderClsid", Module::kImage);
    if (mimeType == nullptr || encoder == nullptr) return images::kNotFound;
    return images::class_of_encoder(mimeType, encoder);
}
