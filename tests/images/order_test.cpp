// The steps of each image function, in their order.
#include "image_test.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>
#include <stdio.h>

namespace {

using Steps = std::vector<std::string>;

class Order : public ImageTest {
protected:
    Order() {
        converted_.answer(
            [this](UINT page, DWORD flags, const char* text, int bytes, wchar_t* wide, int size) {
                gdiplus().note("convert from " + std::to_string(page));
                return converted_.real(page, flags, text, bytes, wide, size);
            });
        opened_.answer([this](const wchar_t* path, const wchar_t* mode) {
            EXPECT_STREQ(mode, L"r");
            gdiplus().note("open");
            return opened_.real(path, mode);
        });
        closed_.answer([this](FILE* file) {
            gdiplus().note("close");
            return closed_.real(file);
        });
    }
    unsigned char encoding_ = 0;

private:
    support::CallPatch<decltype(MultiByteToWideChar)> converted_{"MultiByteToWideChar", MultiByteToWideChar};
    support::CallPatch<decltype(_wfopen)> opened_{"_wfopen", _wfopen};
    support::CallPatch<decltype(fclose)> closed_{"fclose", fclose};
};

}  // namespace

TEST_F(Order, OfTheEncodersClass) {
    CLSID encoder;
    VlCm_GetEncoderClsid(L"image/jpeg", &encoder);
    EXPECT_EQ(gdiplus().log(), (Steps{"GdiplusStartup", "GdipGetImageEncodersSize", "GdipGetImageEncoders",
                                      "GdiplusShutdown"}));
}

TEST_F(Order, OfALoadedImagesFormat) {
    const vl::GdiPlusSession own;
    Gdiplus::GpImage* image = nullptr;
    Gdiplus::DllExports::GdipLoadImageFromFile(L"" PICTURES "small.jpg", &image);
    const vl::UniqueImage held(image);
    VlCm_GetImgEncode(image, &encoding_);
    EXPECT_EQ(gdiplus().log(), (Steps{"GdiplusStartup", "GdipGetImageRawFormat", "GdiplusShutdown"}));
}

TEST_F(Order, OfAFilesFormat) {
    VlCm_GetImgEncodeEx(picture("small.jpg").c_str(), &encoding_);
    EXPECT_EQ(gdiplus().log(), (Steps{"GdiplusStartup", "convert from 0", "GdipLoadImageFromFile",
                                      "GdipGetImageRawFormat", "GdipDisposeImage", "GdiplusShutdown"}));
}

TEST_F(Order, OfTheProperties) {
    VlImageProperty property;
    VlCm_GetImgProp(picture("small.jpg").c_str(), &property);
    EXPECT_EQ(gdiplus().log(), (Steps{"GdiplusStartup", "convert from 65001", "GdipLoadImageFromFile",
                                      "GdipGetImageWidth", "GdipGetImageHeight", "GdipGetImageRawFormat",
                                      "GdipDisposeImage", "GdiplusShutdown", "open", "close"}));
}

TEST_F(Order, OfAThumbnail) {
    VlCm_CreateThumbFile(picture("small.jpg").c_str(), "image_test\\thumb.jpg");
    EXPECT_EQ(gdiplus().log(), (Steps{"GdiplusStartup", "convert from 0", "GdipLoadImageFromFile",
                                      "GdipGetImageThumbnail 160 x 120", "GdipGetImageEncodersSize",
                                      "GdipGetImageEncoders", "convert from 0", "GdipSaveImageToFile",
                                      "GdipDisposeImage", "GdipDisposeImage", "GdiplusShutdown"}));
}

TEST_F(Order, NeedsNoGdiPlusForAttachments) {
    VlAttachmentProperty property = {};
    VlCm_GetAttachmentProp(picture("text.jpg").c_str(), "a.txt", &property);
    VlCm_GetAttType("a.txt", property.mimeType);
    VlCm_GetAttachmentType("a.txt", property.mimeType);
    EXPECT_EQ(gdiplus().log(), Steps{"close"});
}
