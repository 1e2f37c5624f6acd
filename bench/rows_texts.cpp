#include "floor/floor.h"
#include "rows.h"
#include "vlcm/text.h"

#include <string.h>

namespace bench {
namespace {

constexpr double kTarget = 1.05;

using Convert = int (*)(char*, const char*, unsigned int);

struct Conversion {
    const char* name;
    const char* function;
    UINT from;
    UINT to;
    std::string text;
    size_t lengths;  // ends of the text to take in turn, each a byte shorter than the one before
};

// One length alone would measure how well the processor guesses the ends of the platform's loops.
class Ends {
public:
    explicit Ends(const Conversion& c) : text_(c.text), lengths_(c.lengths) {}
    const char* next() {
        if (++skipped_ >= lengths_) skipped_ = 0;
        return text_.c_str() + skipped_;
    }

private:
    std::string text_;
    size_t lengths_;
    size_t skipped_ = 0;
};

// Functions that write a text and give its length.
constexpr unsigned int kTextSize = 512;

template <typename Write>
Body writing(Write write) {
    return timed([write]() mutable {
        char text[kTextSize];
        keep(write(text, kTextSize));
        keep(text);
    });
}

template <typename Floor, typename Library>
std::function<bool()> writes_alike(Floor floor, Library library) {
    return [floor, library]() mutable {
        char expected[kTextSize];
        char text[kTextSize];
        return floor(expected, kTextSize) == library(text, kTextSize) && strcmp(expected, text) == 0;
    };
}

Row conversion_row(const Suite& suite, const Conversion& c) {
    const auto floor_call = BENCH_FUNCTION(suite.floor, Floor_Convert);
    const auto library_call = suite.library.function<Convert>(c.function);
    const auto floor = [=, from = c.from, to = c.to, ends = Ends(c)](char* text, unsigned int size) mutable {
        return floor_call(from, to, text, ends.next(), size);
    };
    const auto library = [=, ends = Ends(c)](char* text, unsigned int size) mutable {
        return library_call(text, ends.next(), size);
    };
    return {.name = c.name,
            .floor_text = "length query, one block, both conversion calls",
            .target = kTarget,
            .floor = calling(suite.floor.handle(), writing(floor)),
            .library = calling(suite.library.handle(), writing(library)),
            .allowance = {.platform_calls = 3, .allocations = 1},
            .agree = writes_alike(floor, library)};
}

Row decimal_row(const Suite& suite) {
    constexpr unsigned int kHigh = 0x12345678;
    constexpr unsigned int kLow = 0x9ABCDEF0;
    const auto floor_call = BENCH_FUNCTION(suite.floor, Floor_DecimalText);
    const auto library_call = BENCH_FUNCTION(suite.library, VlCm_U64TOA);
    const auto floor = [=](char* text, unsigned int size) { return floor_call(kHigh, kLow, text, size); };
    const auto library = [=](char* text, unsigned int size) { return library_call(kHigh, kLow, text, size); };
    return {.name = "64-bit number as text",
            .floor_text = "two blocks, digits by 64-bit division",
            .target = kTarget,
            .floor = calling(suite.floor.handle(), writing(floor)),
            .library = calling(suite.library.handle(), writing(library)),
            .allowance = {.allocations = 2, .bytes_copied = 20},
            .agree = writes_alike(floor, library)};
}

}  // namespace

std::vector<Row> text_rows(const Suite& suite) {
    const std::string words = "A device name with words, and some more.";  // 40 bytes
    const std::string utf8 = words +
                             " Gr\xC3\xBC\xC3\x9F"
                             "e";
    const std::string local = words +
                              " Gr\xFC\xDF"
                              "e";
    const std::string long_part(200, 'x');
    const Conversion conversions[] = {
        {"UTF-8 to ANSI, 8 to 48 bytes", "VlCm_UTF8ToLocal", CP_UTF8, CP_ACP, utf8, 41},
        {"UTF-8 to ANSI, 200 to 248 bytes", "VlCm_UTF8ToLocal", CP_UTF8, CP_ACP, long_part + utf8, 49},
        {"ANSI to UTF-8, 6 to 46 bytes", "VlCm_LocalToUTF8", CP_ACP, CP_UTF8, local, 41},
        {"ANSI to UTF-8, 200 to 246 bytes", "VlCm_LocalToUTF8", CP_ACP, CP_UTF8, long_part + local, 47},
    };
    std::vector<Row> rows;
    for (const Conversion& c : conversions) rows.push_back(conversion_row(suite, c));
    rows.push_back(decimal_row(suite));
    return rows;
}

}  // namespace bench
