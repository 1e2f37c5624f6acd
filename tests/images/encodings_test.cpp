// The format of loaded images and of files.
#include "image_test.h"
#include "support/guarded_buffer.h"
#include "support/trace_log.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned char kUntouched = support::GuardedBuffer::kFill;

struct Picture {
    const char* label;
    unsigned char encoding;
};
constexpr Picture kPictures[] = {
    {"plain.jpg", 1}, {"progressive.jpg", 1},    {"cmyk.jpg", 1},
    {"grey.jpg", 1},  {"turned.jpg", 1},         {"24bit.bmp", 6},
    {"32bit.bmp", 6}, {"8bit.bmp", 6},           {"8bit_rle.bmp", 6},
    {"plain.gif", 2}, {"animated.gif", 2},       {"transparent.gif", 2},
    {"plain.png", 4}, {"16bit.png", 4},          {"palette.png", 4},
    {"alpha.png", 4}, {"plain.tif", kUntouched}, {"drawing.wmf", kUntouched},
};

class LoadedImage : public ImageTest {
protected:
    [[nodiscard]] static vl::UniqueImage load(const std::string& path) {
        Gdiplus::GpImage* image = nullptr;
        EXPECT_EQ(Gdiplus::DllExports::GdipLoadImageFromFile(std::wstring(path.begin(), path.end()).c_str(),
                                                             &image),
                  Gdiplus::Ok)
            << path;
        return vl::UniqueImage(image);
    }

private:
    vl::GdiPlusSession callers_own_;
};

class ImageFile : public ImageTest {};

}  // namespace

TEST_F(LoadedImage, TellsItsFormat) {
    support::for_each_row(kPictures, [](const Picture& row) {
        const vl::UniqueImage image = load(picture(row.label));
        const support::GuardedBuffer encoding(1);
        VlCm_GetImgEncode(image.get(), encoding.as<unsigned char>());
        EXPECT_EQ(*encoding.as<unsigned char>(), row.encoding);
    });
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(std::size(kPictures), "8 GetImgEncode"));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(LoadedImage, ThatWasDrawnHasNoFormat) {
    Gdiplus::GpBitmap* drawn = nullptr;
    ASSERT_EQ(Gdiplus::DllExports::GdipCreateBitmapFromScan0(8, 8, 0, PixelFormat24bppRGB, nullptr, &drawn),
              Gdiplus::Ok);
    const vl::UniqueImage image(drawn);
    unsigned char encoding = kUntouched;
    VlCm_GetImgEncode(image.get(), &encoding);
    EXPECT_EQ(encoding, kUntouched);
}

// The four formats differ in one byte; every other byte counts too.
TEST_F(LoadedImage, NeedsTheWholeFormatIdentifier) {
    constexpr GUID kGif = {0xB96B3CB0, 0x0728, 0x11D3, {0x9D, 0x7B, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
    const vl::UniqueImage image = load(picture("plain.gif"));
    for (size_t byte = 0; byte <= sizeof kGif; ++byte) {
        gdiplus().raw_format.answer([=](Gdiplus::GpImage*, GUID* format) {
            *format = kGif;
            if (byte < sizeof kGif) reinterpret_cast<unsigned char*>(format)[byte] ^= 0x40;
            return Gdiplus::Ok;
        });
        unsigned char encoding = kUntouched;
        VlCm_GetImgEncode(image.get(), &encoding);
        EXPECT_EQ(encoding, byte < sizeof kGif ? kUntouched : 2) << byte;
    }
}

TEST_F(LoadedImage, StaysTheCallersAndSoDoesItsSession) {
    const vl::UniqueImage image = load(picture("plain.jpg"));
    unsigned char encoding = 0;
    VlCm_GetImgEncode(image.get(), &encoding);
    VlCm_GetImgEncodeEx(picture("plain.gif").c_str(), &encoding);
    EXPECT_EQ(encoding, 2);
    UINT width = 0;
    EXPECT_EQ(Gdiplus::DllExports::GdipGetImageWidth(image.get(), &width), Gdiplus::Ok);
    EXPECT_EQ(width, 1024u);
    const vl::UniqueImage another = load(picture("plain.png"));
    EXPECT_TRUE(another);
}

TEST_F(LoadedImage, NeedsImageAndOutput) {
    const vl::UniqueImage image = load(picture("plain.jpg"));
    unsigned char encoding = kUntouched;
    VlCm_GetImgEncode(nullptr, &encoding);
    VlCm_GetImgEncode(image.get(), nullptr);
    EXPECT_EQ(encoding, kUntouched);
    EXPECT_TRUE(gdiplus().log().empty());
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(2, "8 GetImgEncode"));
}

TEST_F(ImageFile, TellsItsFormatInOneByte) {
    support::for_each_row(kPictures, [](const Picture& row) {
        const support::GuardedBuffer encoding(4);
        VlCm_GetImgEncodeEx(picture(row.label).c_str(), encoding.as<unsigned char>());
        EXPECT_EQ(*encoding.as<unsigned char>(), row.encoding);
        EXPECT_TRUE(encoding.untouched_from(1));
    });
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(std::size(kPictures), "8 GetImgEncodeEx"));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(ImageFile, GoesByItsContentNotByItsName) {
    unsigned char encoding = 0;
    VlCm_GetImgEncodeEx(ansi(copy_of("plain.gif", L"picture.jpg")).c_str(), &encoding);
    EXPECT_EQ(encoding, 2);
}

TEST_F(ImageFile, ThatCannotBeLoadedHasNoFormat) {
    const char* const rows[] = {"missing.jpg",     "empty.jpg",       "text.jpg",        "start_plain.jpg",
                                "start_plain.png", "start_plain.gif", "start_24bit.bmp", ""};
    for (const char* name : rows) {
        unsigned char encoding = kUntouched;
        VlCm_GetImgEncodeEx(picture(name).c_str(), &encoding);
        EXPECT_EQ(encoding, kUntouched) << name;
    }
    EXPECT_EQ(gdiplus().dispose.count(), 0u);
}

TEST_F(ImageFile, IsFreeAgainAfterTheCall) {
    const std::wstring path = copy_of("plain.png", L"picture.png");
    unsigned char encoding = 0;
    VlCm_GetImgEncodeEx(ansi(path).c_str(), &encoding);
    EXPECT_EQ(encoding, 4);
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST_F(ImageFile, NeedsPathAndOutput) {
    unsigned char encoding = kUntouched;
    VlCm_GetImgEncodeEx(nullptr, &encoding);
    VlCm_GetImgEncodeEx(picture("plain.jpg").c_str(), nullptr);
    EXPECT_EQ(encoding, kUntouched);
    EXPECT_TRUE(gdiplus().log().empty());
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(2, "8 GetImgEncodeEx"));
}
