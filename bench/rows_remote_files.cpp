#include "floor/floor.h"
#include "rows.h"
#include "vlcm/remote_files.h"

#include <algorithm>
#include <iterator>

namespace bench {
namespace {

constexpr double kTarget = 1.05;
constexpr uint32_t kSize = 260;
constexpr uint32_t kKilobytes = 123 * 1024;
constexpr uint32_t kUpperHalf = 28;
constexpr FILETIME kTime = {0xD53E8000, 0x01CBE2A4};

struct Title {
    const char* name;
    const char* floor_text;
};

// floor(buffer, size) and library(buffer, size) write the same text.
template <typename Char, typename Floor, typename Library>
Row text_row(const Suite& suite, const Title& title, Floor floor, Library library) {
    const auto writing = [](auto write) {
        return timed([write] {
            Char text[kSize];
            keep(write(text, kSize));
            keep(text);
        });
    };
    return {.name = title.name,
            .floor_text = title.floor_text,
            .target = kTarget,
            .floor = calling(suite.floor.handle(), writing(floor)),
            .library = calling(suite.library.handle(), writing(library)),
            .allowance = {.platform_calls = 3, .bytes_copied = kSize},
            .agree = [=] {
                Char expected[kSize] = {};
                Char text[kSize] = {};
                const bool same_result = floor(expected, kSize) == library(text, kSize);
                return same_result && std::equal(std::begin(text), std::end(text), expected);
            }};
}

constexpr char kSizeFloor[] = "the library of texts loaded and kept, one text, one conversion";
constexpr char kTimeFloor[] = "time taken apart, date and time of day formatted";

Row size_row(const Suite& suite) {
    const auto floor = BENCH_FUNCTION(suite.floor, Floor_SizeText);
    const auto library = BENCH_FUNCTION(suite.library, VlCm_GetFTPFileSizeString);
    return text_row<char>(
        suite, {"size of a remote file", kSizeFloor},
        [=](char* text, uint32_t size) { return floor(kKilobytes / 1024.0F, text, size); },
        [=](char* text, uint32_t size) { return library(kKilobytes, 0, text, size, FALSE); });
}

Row detailed_size_row(const Suite& suite) {
    const auto floor = BENCH_FUNCTION(suite.floor, Floor_SizeTextWithCount);
    const auto library = BENCH_FUNCTION(suite.library, VlCm_GetFTPFileSizeString);
    return text_row<char>(
        suite, {"size of a remote file, exact count", kSizeFloor},
        [=](char* text, uint32_t size) { return floor(4.0F * kUpperHalf, L"120,259,084,316", text, size); },
        [=](char* text, uint32_t size) { return library(0, kUpperHalf, text, size, TRUE); });
}

template <typename Char, typename Floor, typename Library>
Row time_row(const Suite& suite, const char* name, Floor floor, Library library) {
    return text_row<Char>(
        suite, {name, kTimeFloor}, [=](Char* text, uint32_t size) { return floor(&kTime, text, size); },
        [=](Char* text, uint32_t size) { return library(&kTime, text, size); });
}

}  // namespace

std::vector<Row> remote_file_rows(const Suite& suite) {
    return {size_row(suite), detailed_size_row(suite),
            time_row<char>(suite, "time of a remote file", BENCH_FUNCTION(suite.floor, Floor_TimeText),
                           BENCH_FUNCTION(suite.library, VlCm_GetFTPFileTimeString)),
            time_row<wchar_t>(suite, "time of a remote file, UTF-16",
                              BENCH_FUNCTION(suite.floor, Floor_TimeTextW),
                              BENCH_FUNCTION(suite.library, VlCm_GetFTPFileTimeStringW))};
}

}  // namespace bench
