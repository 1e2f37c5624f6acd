// Thumbnails. What this program writes is looked at by another one afterwards (check_thumbnails.py).
#include "image_test.h"
#include "support/trace_log.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kDimensions = 160U << 16 | 120U;

class Thumbnail : public ImageTest {
protected:
    Thumbnail() { CreateDirectoryA(THUMBNAILS, nullptr); }

    [[nodiscard]] static std::string thumbnail(const std::string& name) { return THUMBNAILS + name + ".jpg"; }
    static void expect_thumbnail(const std::string& path) {
        VlImageProperty property = {};
        VlCm_GetImgProp(path.c_str(), &property);
        EXPECT_EQ(property.dimensions, kDimensions) << path;
        EXPECT_EQ(property.encoding, VLCM_IMAGE_JPEG) << path;
    }
    [[nodiscard]] static bool exists(const std::string& path) {
        return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    }
};

}  // namespace

TEST_F(Thumbnail, Is160By120PixelsOfJpegWhateverTheSource) {
    for (const char* name :
         {"plain.jpg", "progressive.jpg", "cmyk.jpg", "grey.jpg", "turned.jpg", "tall.jpg", "small.jpg",
          "24bit.bmp", "32bit.bmp", "8bit.bmp", "8bit_rle.bmp", "plain.gif", "animated.gif",
          "transparent.gif", "plain.png", "16bit.png", "palette.png", "alpha.png", "plain.tif"}) {
        const std::string path = thumbnail(name);
        DeleteFileA(path.c_str());
        VlCm_CreateThumbFile(picture(name).c_str(), path.c_str());
        expect_thumbnail(path);
    }
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(Thumbnail, OpensOneScope) {
    VlCm_CreateThumbFile(picture("small.jpg").c_str(), "image_test\\thumb.jpg");
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>{"8 CreateThumbFile"});
}

TEST_F(Thumbnail, ReplacesTheFileThatWasThere) {
    support::write_file("image_test\\thumb.jpg", std::string(100000, 'x'));
    VlCm_CreateThumbFile(picture("plain.jpg").c_str(), "image_test\\thumb.jpg");
    expect_thumbnail("image_test\\thumb.jpg");
    EXPECT_LT(length_of("image_test\\thumb.jpg"), 100000u);
}

TEST_F(Thumbnail, OfWhatIsNoImageIsNotMade) {
    for (const char* name : {"missing.jpg", "empty.jpg", "text.jpg", "start_plain.jpg", ""}) {
        VlCm_CreateThumbFile(picture(name).c_str(), "image_test\\thumb.jpg");
        EXPECT_FALSE(exists("image_test\\thumb.jpg")) << name;
    }
    EXPECT_EQ(gdiplus().thumbnail.count(), 0u);
}

TEST_F(Thumbnail, IsNotMadeInAFolderThatIsMissing) {
    VlCm_CreateThumbFile(picture("plain.jpg").c_str(), "image_test\\missing\\thumb.jpg");
    EXPECT_FALSE(exists("image_test\\missing"));
    EXPECT_EQ(gdiplus().held(), 0u);
}

TEST_F(Thumbnail, IsSavedByTheJpegEncoder) {
    CLSID expected = {};
    ASSERT_GE(VlCm_GetEncoderClsid(L"image/jpeg", &expected), 0);
    size_t saved = 0;
    gdiplus().save.answer([&](Gdiplus::GpImage*, const WCHAR* path, const CLSID* encoder,
                              const Gdiplus::EncoderParameters* parameters) {
        EXPECT_STREQ(path, L"image_test\\thumb.png");
        EXPECT_EQ(*encoder, expected);
        EXPECT_EQ(parameters, nullptr);
        ++saved;
        return Gdiplus::Ok;
    });
    VlCm_CreateThumbFile(picture("plain.jpg").c_str(), "image_test\\thumb.png");
    EXPECT_EQ(saved, 1u);
}

TEST_F(Thumbnail, IsNotMadeWithoutAJpegEncoder) {
    gdiplus().encoders.answer([this](UINT count, UINT bytes, Gdiplus::ImageCodecInfo* list) {
        const Gdiplus::GpStatus status = gdiplus().encoders.real(count, bytes, list);
        static wchar_t other[] = L"image/JPEG";
        for (UINT i = 0; i < count; ++i) list[i].MimeType = other;
        return status;
    });
    VlCm_CreateThumbFile(picture("plain.jpg").c_str(), "image_test\\thumb.jpg");
    EXPECT_EQ(gdiplus().save.count(), 0u);
    EXPECT_EQ(gdiplus().held(), 0u);
}

TEST_F(Thumbnail, LeavesSourceAndResultFree) {
    const std::wstring source = copy_of("plain.jpg", L"picture.jpg");
    VlCm_CreateThumbFile(ansi(source).c_str(), "image_test\\thumb.jpg");
    EXPECT_TRUE(DeleteFileW(source.c_str()));
    EXPECT_TRUE(DeleteFileA("image_test\\thumb.jpg"));
}

TEST_F(Thumbnail, NeedsBothPaths) {
    VlCm_CreateThumbFile(nullptr, "image_test\\thumb.jpg");
    VlCm_CreateThumbFile(picture("plain.jpg").c_str(), nullptr);
    EXPECT_FALSE(exists("image_test\\thumb.jpg"));
    EXPECT_TRUE(gdiplus().log().empty());
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(2, "8 CreateThumbFile"));
}
