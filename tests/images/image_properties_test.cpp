// Dimensions, format and size of image files.
#include "image_test.h"
#include "support/guarded_buffer.h"
#include "support/trace_log.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kFill = 0xCDCDCDCD;
constexpr uint32_t kWide = 320U << 16 | 200U;

class ImageProperties : public ImageTest {
protected:
    // The record, with whatever is not told as it was; nothing behind its first 13 bytes changes.
    [[nodiscard]] static VlImageProperty tell(const std::string& path) {
        const support::GuardedBuffer record(sizeof(VlImageProperty));
        VlCm_GetImgProp(path.c_str(), record.as<VlImageProperty>());
        EXPECT_EQ(record.as<VlImageProperty>()->word4, kFill);
        EXPECT_TRUE(record.untouched_from(13));
        return *record.as<VlImageProperty>();
    }
    static void expect_untold_image(const VlImageProperty& property) {
        EXPECT_EQ(property.dimensions, kFill);
        EXPECT_EQ(property.encoding, support::GuardedBuffer::kFill);
    }
};

struct Picture {
    const char* label;
    uint32_t dimensions;
    unsigned char encoding;
};
constexpr Picture kPictures[] = {
    {"plain.jpg", 0x04000300, 1},
    {"tall.jpg", 100U << 16 | 300U, 1},
    {"small.jpg", 40U << 16 | 30U, 1},
    {"progressive.jpg", kWide, 1},
    {"cmyk.jpg", kWide, 1},
    {"grey.jpg", kWide, 1},
    {"24bit.bmp", kWide, 6},
    {"32bit.bmp", kWide, 6},
    {"8bit.bmp", kWide, 6},
    {"8bit_rle.bmp", kWide, 6},
    {"plain.gif", kWide, 2},
    {"animated.gif", kWide, 2},
    {"transparent.gif", kWide, 2},
    {"plain.png", kWide, 4},
    {"16bit.png", kWide, 4},
    {"palette.png", kWide, 4},
    {"alpha.png", kWide, 4},
    {"turned.jpg", kWide, 1},
    {"plain.tif", kWide, support::GuardedBuffer::kFill},
};

}  // namespace

TEST_F(ImageProperties, AreDimensionsFormatAndSize) {
    support::for_each_row(kPictures, [](const Picture& row) {
        const VlImageProperty property = tell(picture(row.label));
        EXPECT_EQ(property.dimensions, row.dimensions);
        EXPECT_EQ(property.fileSize, length_of(picture(row.label)));
        EXPECT_EQ(property.encoding, row.encoding);
    });
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(std::size(kPictures), "8 GetImgProp"));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(ImageProperties, OfADrawingHaveNoFormat) {
    const VlImageProperty property = tell(picture("drawing.wmf"));
    EXPECT_NE(property.dimensions, kFill);
    EXPECT_EQ(property.encoding, support::GuardedBuffer::kFill);
    EXPECT_EQ(property.fileSize, length_of(picture("drawing.wmf")));
}

TEST_F(ImageProperties, JoinWidthAndHeightWithoutAMask) {
    const struct {
        const char* label;
        uint32_t width, height, dimensions;
    } rows[] = {
        {"both fit", 0xFFFF, 0xFFFF, 0xFFFFFFFF},
        {"high picture", 0x0001, 0x30002, 0x00030002},
        {"wide picture", 0x20003, 0x0004, 0x00030004},
        {"nothing", 0, 0, 0},
    };
    support::for_each_row(rows, [this](const auto& row) {
        gdiplus().width.answer(
            [&](Gdiplus::GpImage*, UINT* pixels) { return *pixels = row.width, Gdiplus::Ok; });
        gdiplus().height.answer(
            [&](Gdiplus::GpImage*, UINT* pixels) { return *pixels = row.height, Gdiplus::Ok; });
        EXPECT_EQ(tell(picture("small.jpg")).dimensions, row.dimensions);
    });
}

TEST_F(ImageProperties, OfWhatIsNoImageAreItsSizeAlone) {
    for (const char* name : {"empty.jpg", "text.jpg", "start_plain.jpg", "start_plain.png", "start_plain.gif",
                             "start_24bit.bmp"}) {
        SCOPED_TRACE(name);
        const VlImageProperty property = tell(picture(name));
        expect_untold_image(property);
        EXPECT_EQ(property.fileSize, length_of(picture(name)));
    }
}

TEST_F(ImageProperties, OfAMissingFileAreUntouched) {
    for (const std::string& path : {picture("missing.jpg"), std::string(PICTURES), std::string()}) {
        const VlImageProperty property = tell(path);
        expect_untold_image(property);
        EXPECT_EQ(property.fileSize, kFill) << path;
    }
}

TEST_F(ImageProperties, SizeIsTheLowHalfOfAHugeFilesLength) {
    const std::wstring path = folder() + L"huge.png";
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    LARGE_INTEGER end;
    end.QuadPart = (LONGLONG{5} << 30) + 7;
    EXPECT_TRUE(SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file));
    CloseHandle(file);
    const VlImageProperty property = tell(utf8(path));
    expect_untold_image(property);
    EXPECT_EQ(property.fileSize, (1U << 30) + 7);
}

TEST_F(ImageProperties, FileIsFreeAgainAfterTheCall) {
    const std::wstring path = copy_of("plain.png", L"picture.png");
    EXPECT_EQ(tell(utf8(path)).encoding, 4);
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST_F(ImageProperties, NeedPathAndRecord) {
    VlImageProperty property = {kFill, kFill, kFill, 0xCD};
    VlCm_GetImgProp(nullptr, &property);
    VlCm_GetImgProp(picture("plain.jpg").c_str(), nullptr);
    expect_untold_image(property);
    EXPECT_EQ(property.fileSize, kFill);
    EXPECT_TRUE(gdiplus().log().empty());
    EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(2, "8 GetImgProp"));
}

namespace {

struct Job {
    std::string picture;
    std::string thumbnail;
    VlImageProperty property;
};

DWORD WINAPI work(void* parameter) {
    auto job = static_cast<Job*>(parameter);
    VlCm_GetImgProp(job->picture.c_str(), &job->property);
    VlCm_CreateThumbFile(job->picture.c_str(), job->thumbnail.c_str());
    return 0;
}

class Threads : public support::SuiteTest {};

}  // namespace

// Neither thread has joined an apartment of COM.
TEST_F(Threads, DoNotDisturbEachOther) {
    Job jobs[] = {{PICTURES "plain.jpg", "thread1.jpg", {}}, {PICTURES "plain.png", "thread2.jpg", {}}};
    HANDLE threads[] = {CreateThread(nullptr, 0, work, &jobs[0], 0, nullptr),
                        CreateThread(nullptr, 0, work, &jobs[1], 0, nullptr)};
    WaitForMultipleObjects(2, threads, TRUE, INFINITE);
    for (HANDLE thread : threads) CloseHandle(thread);
    EXPECT_EQ(jobs[0].property.dimensions, 0x04000300u);
    EXPECT_EQ(jobs[1].property.dimensions, kWide);
    for (const Job& job : jobs) EXPECT_TRUE(DeleteFileA(job.thumbnail.c_str())) << job.thumbnail;
}
