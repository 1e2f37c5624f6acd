#include "floor/floor.h"
#include "rows.h"
#include "vlcm/images.h"

#include <string.h>

#include <fstream>
#include <iterator>
#include <memory>

namespace bench {
namespace {

constexpr double kTarget = 1.05;
constexpr char kPicture[] = PICTURE;  // 4,000 x 3,000 pixels

// The files that floor and library write; gone with the last row that needs them.
struct Thumbnails {
    const char* by_floor = "bench_thumbnail_floor.jpg";
    const char* by_library = "bench_thumbnail_library.jpg";

    Thumbnails() = default;
    ~Thumbnails() {
        DeleteFileA(by_floor);
        DeleteFileA(by_library);
    }
    Thumbnails(const Thumbnails&) = delete;
    Thumbnails& operator=(const Thumbnails&) = delete;

    [[nodiscard]] bool alike() const {
        const std::string bytes = content(by_floor);
        return !bytes.empty() && bytes == content(by_library);
    }

private:
    static std::string content(const char* path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

Row properties_row(const Suite& suite) {
    const auto floor = BENCH_FUNCTION(suite.floor, Floor_ImageProperties);
    const auto library = BENCH_FUNCTION(suite.library, VlCm_GetImgProp);
    const auto asking = [](auto function) {
        return timed([function] {
            VlImageProperty property;
            function(kPicture, &property);
            keep(property.dimensions);
        });
    };
    return {.name = "properties of a 12-megapixel JPEG",
            .floor_text = "the same GDI+ calls; the file opened, measured and closed",
            .target = kTarget,
            .floor = calling(suite.floor.handle(), asking(floor)),
            .library = calling(suite.library.handle(), asking(library)),
            .allowance = {.platform_calls = 14},
            .agree = [=] {
                VlImageProperty expected = {}, told = {};
                floor(kPicture, &expected);
                library(kPicture, &told);
                return expected.encoding == VLCM_IMAGE_JPEG && told.encoding == expected.encoding &&
                       told.dimensions == expected.dimensions && told.fileSize == expected.fileSize;
            }};
}

Row thumbnail_row(const Suite& suite) {
    const auto floor = BENCH_FUNCTION(suite.floor, Floor_Thumbnail);
    const auto library = BENCH_FUNCTION(suite.library, VlCm_CreateThumbFile);
    const auto files = std::make_shared<Thumbnails>();
    return {.name = "thumbnail of a 12-megapixel JPEG",
            .floor_text = "the same GDI+ calls, the encoder known",
            .target = kTarget,
            .floor = calling(suite.floor.handle(), timed([=] { floor(kPicture, files->by_floor); })),
            .library = calling(suite.library.handle(), timed([=] { library(kPicture, files->by_library); })),
            .allowance = {.platform_calls = 17, .allocations = 1},
            .agree = [=] {
                floor(kPicture, files->by_floor);
                library(kPicture, files->by_library);
                return files->alike();
            }};
}

}  // namespace

std::vector<Row> image_rows(const Suite& suite) { return {properties_row(suite), thumbnail_row(suite)}; }

}  // namespace bench
