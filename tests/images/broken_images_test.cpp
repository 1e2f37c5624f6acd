// Images that end too early. How much of one GDI+ accepts is its own affair: all of it is told, or nothing.
//
// Looked at in another process: some decoders keep the file open when they give up on a bitmap that ends
// half-way, and this process counts what it has open.
#include "image_test.h"
#include "support/child_process.h"
#include "support/role.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t kFill = 0xCDCDCDCD;
constexpr unsigned char kUntouched = 0xCD;
constexpr uint32_t kWide = 320U << 16 | 200U;
constexpr char kThumbnail[] = "broken_thumbnail.jpg";

const struct Broken {
    const char* label;
    uint32_t dimensions;
    unsigned char encoding;
} kBroken[] = {{"half_plain.jpg", 0x04000300, 1},
               {"half_plain.png", kWide, 4},
               {"half_plain.gif", kWide, 2},
               {"half_24bit.bmp", kWide, 6},
               {"huge_header.png", 0x4E204E20, 4}};

std::string path_of(const Broken& row) { return std::string(PICTURES) + row.label; }

void expect_told_or_not(const Broken& row, uint32_t dimensions, unsigned char encoding) {
    const bool told = dimensions != kFill;
    EXPECT_EQ(dimensions, told ? row.dimensions : kFill);
    EXPECT_EQ(encoding, told ? row.encoding : kUntouched);
}

class BrokenImage : public support::SuiteTest {};

}  // namespace

TEST_ROLE(properties) {
    const GdiPlusWatch watch;
    support::for_each_row(kBroken, [](const Broken& row) {
        VlImageProperty property = {kFill, kFill, kFill, kUntouched};
        VlCm_GetImgProp(path_of(row).c_str(), &property);
        EXPECT_EQ(property.fileSize, length_of(path_of(row)));
        EXPECT_EQ(property.word4, kFill);
        expect_told_or_not(row, property.dimensions, property.encoding);
    });
    return 0;
}

TEST_ROLE(format) {
    const GdiPlusWatch watch;
    support::for_each_row(kBroken, [](const Broken& row) {
        unsigned char encoding = kUntouched;
        VlCm_GetImgEncodeEx(path_of(row).c_str(), &encoding);
        EXPECT_TRUE(encoding == kUntouched || encoding == row.encoding) << encoding;
    });
    return 0;
}

TEST_ROLE(thumbnail) {
    const GdiPlusWatch watch;
    support::for_each_row(kBroken, [](const Broken& row) {
        VlCm_CreateThumbFile(path_of(row).c_str(), kThumbnail);
        VlImageProperty property = {kFill, kFill, kFill, kUntouched};
        VlCm_GetImgProp(kThumbnail, &property);
        if (DeleteFileA(kThumbnail)) EXPECT_EQ(property.dimensions, 160U << 16 | 120U);
    });
    return 0;
}

TEST_F(BrokenImage, IsToldWholeOrNotAtAll) {
    for (const char* role : {"properties", "format", "thumbnail"}) {
        const support::RoleResult result = support::run_role(role);
        EXPECT_EQ(result.exit_code, 0u) << role << ": " << result.output;
    }
}
