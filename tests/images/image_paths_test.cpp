// The paths of image files: UTF-8 for the properties, the ANSI code page for everything else.
#include "image_test.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned char kUntouched = 0xCD;
constexpr size_t kLongest = 259;  // characters of a path

class ImagePath : public ImageTest {
protected:
    [[nodiscard]] static unsigned char encoding_of(const std::string& path) {
        unsigned char encoding = kUntouched;
        VlCm_GetImgEncodeEx(path.c_str(), &encoding);
        return encoding;
    }
    [[nodiscard]] static VlImageProperty properties_of(const std::string& path) {
        VlImageProperty property = {0, 0, 0, kUntouched};
        VlCm_GetImgProp(path.c_str(), &property);
        return property;
    }
    // The same file by a path of this many characters.
    [[nodiscard]] static std::wstring stretched(const std::wstring& file, size_t characters) {
        std::wstring path = folder();
        while (path.size() + file.size() + 2 <= characters) path += L".\\";
        while (path.size() + file.size() < characters) path += L'\\';
        return path + file;
    }
};

}  // namespace

TEST_F(ImagePath, OfThePropertiesIsUtf8) {
    const std::wstring path = copy_of("plain.png", national_name(L".png"));
    const VlImageProperty property = properties_of(utf8(path));
    EXPECT_EQ(property.encoding, 4);
    EXPECT_EQ(property.dimensions, 320U << 16 | 200U);
    EXPECT_EQ(property.fileSize, length_of(picture("plain.png")));
    const VlImageProperty untold = properties_of(ansi(path));
    EXPECT_EQ(untold.encoding, kUntouched);
    EXPECT_EQ(untold.fileSize, 0u);
}

TEST_F(ImagePath, OfTheFormatIsInTheAnsiCodePage) {
    const std::wstring path = copy_of("plain.png", national_name(L".png"));
    EXPECT_EQ(encoding_of(ansi(path)), 4);
    EXPECT_EQ(encoding_of(utf8(path)), kUntouched);
}

TEST_F(ImagePath, OfSourceAndThumbnailAreInTheAnsiCodePage) {
    const std::wstring source = copy_of("plain.png", national_name(L".png"));
    const std::wstring thumbnail = folder() + national_name(L".jpg");
    VlCm_CreateThumbFile(utf8(source).c_str(), ansi(thumbnail).c_str());
    EXPECT_EQ(GetFileAttributesW(thumbnail.c_str()), INVALID_FILE_ATTRIBUTES);
    VlCm_CreateThumbFile(ansi(source).c_str(), ansi(thumbnail).c_str());
    EXPECT_EQ(properties_of(utf8(thumbnail)).dimensions, 160U << 16 | 120U);
}

// A name that the code page cannot spell can still be told in UTF-8.
TEST_F(ImagePath, MayLieBeyondTheCodePage) {
    const std::wstring path = copy_of("plain.png", L"\x0e01\x0e32\x0e1e \U0001F4F7.png");
    EXPECT_EQ(properties_of(utf8(path)).encoding, 4);
}

TEST_F(ImagePath, HasRoomFor259Characters) {
    static_cast<void>(copy_of("plain.png", L"a.png"));
    const std::wstring path = stretched(L"a.png", kLongest);
    ASSERT_EQ(path.size(), kLongest);
    EXPECT_EQ(encoding_of(ansi(path)), 4);
    EXPECT_EQ(properties_of(utf8(path)).fileSize, length_of(picture("plain.png")));
}

TEST_F(ImagePath, IsCutBehind259Characters) {
    static_cast<void>(copy_of("plain.png", L"a.png"));
    const std::wstring path = stretched(L"a.png", kLongest) + L"_and_what_is_cut_off_to_make_it_300_long";
    EXPECT_EQ(encoding_of(ansi(path)), 4);
    EXPECT_EQ(properties_of(utf8(path)).encoding, 4);
    EXPECT_EQ(properties_of(utf8(path)).fileSize, length_of(picture("plain.png")));
    const std::wstring thumbnail =
        stretched(L"b.jpg", kLongest) + L"_and_what_is_cut_off_to_make_it_300_long";
    VlCm_CreateThumbFile(ansi(path).c_str(), ansi(thumbnail).c_str());
    EXPECT_EQ(properties_of("image_test\\b.jpg").dimensions, 160U << 16 | 120U);
}

TEST_F(ImagePath, Of300CharactersNamesNoFileBehindTheCut) {
    static_cast<void>(copy_of("plain.png", L"a.png"));
    const std::wstring path = stretched(L"a.png", 300);
    ASSERT_EQ(GetFileAttributesW(path.c_str()), GetFileAttributesW(L"image_test\\a.png"));
    EXPECT_EQ(encoding_of(ansi(path)), kUntouched);
    const VlImageProperty property = properties_of(utf8(path));
    EXPECT_EQ(property.encoding, kUntouched);
    EXPECT_EQ(property.fileSize, 0u);
}

TEST_F(ImagePath, IsCountedInCharactersNotInBytes) {
    std::wstring name;
    for (int i = 0; i < 20; ++i) name += national_name(L"");
    static_cast<void>(copy_of("plain.png", name + L".png"));
    const std::wstring path = stretched(name + L".png", kLongest);
    ASSERT_GT(utf8(path).size(), kLongest + 1);
    EXPECT_EQ(properties_of(utf8(path)).encoding, 4);
    EXPECT_EQ(encoding_of(ansi(path)), 4);
}

TEST_F(ImagePath, ThatCannotBeConvertedNamesNoFile) {
    support::CallPatch converted("MultiByteToWideChar", MultiByteToWideChar);
    converted.fail_from(1, 0, ERROR_NO_UNICODE_TRANSLATION);
    EXPECT_EQ(encoding_of(picture("plain.jpg")), kUntouched);
    const VlImageProperty property = properties_of(picture("plain.jpg"));
    EXPECT_EQ(property.encoding, kUntouched);
    EXPECT_EQ(property.fileSize, 0u);
    VlCm_CreateThumbFile(picture("plain.jpg").c_str(), "image_test\\thumb.jpg");
    EXPECT_EQ(gdiplus().save.count(), 0u);
    EXPECT_EQ(converted.count(), 3u);
}

TEST_F(ImagePath, OfTheThumbnailThatCannotBeConvertedWritesNothing) {
    support::CallPatch converted("MultiByteToWideChar", MultiByteToWideChar);
    converted.fail_nth(2, 0, ERROR_NO_UNICODE_TRANSLATION);
    VlCm_CreateThumbFile(picture("plain.jpg").c_str(), "image_test\\thumb.jpg");
    EXPECT_EQ(GetFileAttributesA("image_test\\thumb.jpg"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(ImagePath, IsConvertedWithRoomFor260CharactersAndNoFlags) {
    support::CallPatch converted("MultiByteToWideChar", MultiByteToWideChar);
    static_cast<void>(encoding_of(picture("plain.jpg")));
    static_cast<void>(properties_of(picture("plain.jpg")));
    VlCm_CreateThumbFile(picture("plain.jpg").c_str(), "image_test\\thumb.jpg");
    const UINT code_pages[] = {CP_ACP, CP_UTF8, CP_ACP, CP_ACP};
    const auto calls = converted.calls();
    ASSERT_EQ(calls.size(), std::size(code_pages));
    for (size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(std::get<0>(calls[i]), code_pages[i]) << i;
        EXPECT_EQ(std::get<1>(calls[i]), 0u) << i;
        EXPECT_EQ(std::get<5>(calls[i]), 260) << i;
    }
}
