// Every call of the image functions fails once: what could not be told is left, nothing is left behind.
#include "image_test.h"
#include "support/guarded_buffer.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>
#include <io.h>
#include <stdio.h>

namespace {

constexpr uint32_t kFill = 0xCDCDCDCD;
constexpr unsigned char kUntouched = support::GuardedBuffer::kFill;
constexpr char kThumbnail[] = "image_test\\thumb.jpg";

using Fail = void (*)(GdiPlusWatch&);

class FailingCall : public ImageTest {
protected:
    [[nodiscard]] static VlImageProperty properties() {
        VlImageProperty property = {kFill, kFill, kFill, kUntouched};
        VlCm_GetImgProp(picture("small.jpg").c_str(), &property);
        return property;
    }
    // Calls that the other side may have answered half before they failed write nothing here.
    template <typename Patch>
    static void fail(Patch& patch) {
        patch.fail_from(1, Gdiplus::OutOfMemory);
    }
};

}  // namespace

TEST_F(FailingCall, LeavesALoadedImagesFormat) {
    const vl::GdiPlusSession own;
    Gdiplus::GpImage* image = nullptr;
    Gdiplus::DllExports::GdipLoadImageFromFile(L"" PICTURES "small.jpg", &image);
    const vl::UniqueImage held(image);
    const struct {
        const char* label;
        Fail fail;
    } rows[] = {{"start", [](GdiPlusWatch& watch) { fail(watch.startup); }},
                {"format", [](GdiPlusWatch& watch) { fail(watch.raw_format); }}};
    support::for_each_row(rows, [&](const auto& row) {
        GdiPlusWatch watch;
        row.fail(watch);
        unsigned char encoding = kUntouched;
        VlCm_GetImgEncode(image, &encoding);
        EXPECT_EQ(encoding, kUntouched);
    });
}

TEST_F(FailingCall, LeavesAFilesFormat) {
    const struct {
        const char* label;
        Fail fail;
    } rows[] = {{"start", [](GdiPlusWatch& watch) { fail(watch.startup); }},
                {"load", [](GdiPlusWatch& watch) { fail(watch.load); }},
                {"format", [](GdiPlusWatch& watch) { fail(watch.raw_format); }}};
    support::for_each_row(rows, [](const auto& row) {
        GdiPlusWatch watch;
        row.fail(watch);
        unsigned char encoding = kUntouched;
        VlCm_GetImgEncodeEx(picture("small.jpg").c_str(), &encoding);
        EXPECT_EQ(encoding, kUntouched);
    });
}

TEST_F(FailingCall, LeavesWhatItWouldHaveTold) {
    constexpr uint32_t kDimensions = 40U << 16 | 30U;
    const auto size = static_cast<uint32_t>(length_of(picture("small.jpg")));
    const struct {
        const char* label;
        Fail fail;
        VlImageProperty expected;
    } rows[] = {
        {"start", [](GdiPlusWatch& watch) { fail(watch.startup); }, {kFill, kFill, kFill, kUntouched}},
        {"load", [](GdiPlusWatch& watch) { fail(watch.load); }, {kFill, kFill, size, kUntouched}},
        {"width", [](GdiPlusWatch& watch) { fail(watch.width); }, {kFill, kFill, size, 1}},
        {"height", [](GdiPlusWatch& watch) { fail(watch.height); }, {kFill, kFill, size, 1}},
        {"format",
         [](GdiPlusWatch& watch) { fail(watch.raw_format); },
         {kDimensions, kFill, size, kUntouched}},
        {"nothing", [](GdiPlusWatch&) {}, {kDimensions, kFill, size, 1}},
    };
    support::for_each_row(rows, [](const auto& row) {
        GdiPlusWatch watch;
        row.fail(watch);
        const VlImageProperty property = properties();
        EXPECT_EQ(property.dimensions, row.expected.dimensions);
        EXPECT_EQ(property.word4, row.expected.word4);
        EXPECT_EQ(property.fileSize, row.expected.fileSize);
        EXPECT_EQ(property.encoding, row.expected.encoding);
    });
}

TEST_F(FailingCall, LeavesTheSizeOfAFileThatCannotBeOpened) {
    support::CallPatch opened("_wfopen", _wfopen);
    support::CallPatch closed("fclose", fclose);
    opened.fail_from(1, nullptr);
    EXPECT_EQ(properties().fileSize, kFill);
    EXPECT_EQ(properties().encoding, 1);
    EXPECT_EQ(opened.count(), 2u);
    EXPECT_EQ(closed.count(), 0u);
}

TEST_F(FailingCall, LeavesTheSizeOfAFileWithoutALength) {
    support::CallPatch measured("_filelengthi64", _filelengthi64);
    support::CallPatch closed("fclose", fclose);
    measured.fail_from(1, -1);
    EXPECT_EQ(properties().fileSize, kFill);
    EXPECT_EQ(closed.count(), 1u);
}

TEST_F(FailingCall, LeavesAnExistingThumbnailAsItWas) {
    const struct {
        const char* label;
        Fail fail;
    } rows[] = {{"start", [](GdiPlusWatch& watch) { fail(watch.startup); }},
                {"load", [](GdiPlusWatch& watch) { fail(watch.load); }},
                {"thumbnail", [](GdiPlusWatch& watch) { fail(watch.thumbnail); }},
                {"encoders' size", [](GdiPlusWatch& watch) { fail(watch.encoders_size); }},
                {"encoders", [](GdiPlusWatch& watch) { fail(watch.encoders); }},
                {"save", [](GdiPlusWatch& watch) { fail(watch.save); }}};
    support::for_each_row(rows, [this](const auto& row) {
        support::write_file(kThumbnail, "of before");
        GdiPlusWatch watch;
        row.fail(watch);
        VlCm_CreateThumbFile(picture("small.jpg").c_str(), kThumbnail);
        EXPECT_EQ(support::read_file(kThumbnail), "of before");
        EXPECT_EQ(gdiplus().held(), 0u);
    });
}

TEST_F(FailingCall, MakesNoThumbnailWithoutMemory) {
    blocks().fail_nth(1);
    VlCm_CreateThumbFile(picture("small.jpg").c_str(), kThumbnail);
    EXPECT_EQ(GetFileAttributesA(kThumbnail), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(gdiplus().save.count(), 0u);
    EXPECT_EQ(blocks().allocations(), 1u);
    blocks().fail_nth(0);
    VlCm_CreateThumbFile(picture("small.jpg").c_str(), kThumbnail);
    EXPECT_NE(GetFileAttributesA(kThumbnail), INVALID_FILE_ATTRIBUTES);
}

// The other side may answer with a pointer and fail all the same: it is not ours then.
TEST_F(FailingCall, IsNotBelievedWhatItWrote) {
    int nothing = 0;
    gdiplus().load.answer([&](const WCHAR*, Gdiplus::GpImage** image) {
        *image = reinterpret_cast<Gdiplus::GpImage*>(&nothing);
        return Gdiplus::FileNotFound;
    });
    EXPECT_EQ(properties().encoding, kUntouched);
    unsigned char encoding = kUntouched;
    VlCm_GetImgEncodeEx(picture("small.jpg").c_str(), &encoding);
    EXPECT_EQ(encoding, kUntouched);
    VlCm_CreateThumbFile(picture("small.jpg").c_str(), kThumbnail);
    EXPECT_EQ(gdiplus().dispose.count(), 0u);
    EXPECT_EQ(gdiplus().thumbnail.count(), 0u);
}

TEST_F(FailingCall, ToDisposeOfAnImageIsIgnored) {
    support::CallPatch disposed("GdipDisposeImage", Gdiplus::DllExports::GdipDisposeImage);
    disposed.answer([&](Gdiplus::GpImage* image) {
        EXPECT_EQ(disposed.real(image), Gdiplus::Ok);
        return Gdiplus::GenericError;
    });
    EXPECT_EQ(properties().encoding, 1);
    EXPECT_EQ(disposed.count(), 1u);
    EXPECT_EQ(gdiplus().shutdown.count(), 1u);
}
