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

// floor(buffer, size) and library(buffer, size) write the same text.
template <typename Char, typename Floor, typename Library>
Row text_row(const Suite& suite, Row row, Floor floor, Library library) {
    const auto writing = [](auto write) {
        return timed([write] {
            Char text[kSize];
            keep(write(text, kSize));
            keep(text);
        });
    };
    row.target = kTarget;
    row.floor = calling(suite.floor.handle(), writing(floor));
    row.library = calling(suite.library.handle(), writing(library));
    row.agree = [=] {
        Char expected[kSize] = {};
        Char text[kSize] = {};
        const bool same_result = floor(expected, kSize) == library(text, kSize);
        return same_result && std::equal(std::begin(text), std::end(text), expected);
    };
    return row;
}

Row size_row(const Suite& suite) {
    const auto floor = BENCH_FUNCTION(suite.floor, Floor_SizeText);
    const auto library = BENCH_FUNCTION(suite.library, VlCm_GetFTPFileSizeString);
    return text_row<char>(
        suite,
        {.name = "size of a remote file",
         .floor_text = "the library of texts loaded and kept, one text, one conversion",
         .allowance = {.platform_calls = 3, .bytes_copied = kSize}},
        [=](char* text, uint32_t size) { return floor(kKilobytes / 1024.0F, text, size); },
        [=](char* text, uint32_t size) { return library(kKilobytes, 0, text, size, FALSE); });
}

Row detailed_size_row(const Suite& suite) {
    const auto floor = BENCH_FUNCTION(suite.floor, Floor_SizeTextWithCount);
    const auto library = BENCH_FUNCTION(suite.library, VlCm_GetFTPFileSizeString);
    return text_row<char>(
        suite,
        {.name = "size of a remote file, exact count",
         .floor_text = "the library of texts loaded and kept, one text, one conversion",
         .allowance = {.platform_calls = 3, .bytes_copied = kSize}},
        [=](char* text, uint32_t size) { return floor(4.0F * kUpperHalf, L"120,259,084,316", text, size); },
        [=](char* text, uint32_t size) { return library(0, kUpperHalf, text, size, TRUE); });
}

}  // namespace

std::vector<Row> remote_file_rows(const Suite& suite) {
    const auto time_floor = BENCH_FUNCTION(suite.floor, Floor_TimeText);
    const auto time_floor_w = BENCH_FUNCTION(suite.floor, Floor_TimeTextW);
    const auto time = BENCH_FUNCTION(suite.library, VlCm_GetFTPFileTimeString);
    const auto time_w = BENCH_FUNCTION(suite.library, VlCm_GetFTPFileTimeStringW);
    constexpr char kTimeFloor[] = "time taken apart, date and time of day formatted";
    constexpr Allowance kThreeCalls{.platform_calls = 3, .bytes_copied = kSize};
    return {
        size_row(suite),
        detailed_size_row(suite),
        text_row<char>(
            suite, {.name = "time of a remote file", .floor_text = kTimeFloor, .allowance = kThreeCalls},
            [=](char* text, uint32_t size) { return time_floor(&kTime, text, size); },
            [=](char* text, uint32_t size) { return time(&kTime, text, size); }),
        text_row<wchar_t>(
            suite,
            {.name = "time of a remote file, UTF-16", .floor_text = kTimeFloor, .allowance = kThreeCalls},
            [=](wchar_t* text, uint32_t size) { return time_floor_w(&kTime, text, size); },
            [=](wchar_t* text, uint32_t size) { return time_w(&kTime, text, size); }),
    };
}

}  // namespace bench
