// Decimal text of 64-bit numbers.
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "vlcm/text.h"

#include <random>
#include <string>

using support::GuardedBuffer;

namespace {

class Decimal : public support::SuiteTest {};

// The rule by its letter, one digit and one carry at a time; shares nothing with the library.
class Schoolbook {
public:
    std::string text(unsigned high, unsigned low) {
        write(high);
        multiply();
        write(low);  // the places left of its own digits keep those of high
        for (int place = 9; place >= 0; --place) add(10 + place, digits_[place]);
        std::string result;
        for (const int place : product_) result += static_cast<char>('0' + place);
        const size_t skipped = result.find_first_not_of('0');
        return skipped == std::string::npos ? "0" : result.substr(skipped);
    }

private:
    void write(unsigned half) {
        const std::string printed = half == 0 ? "" : std::to_string(half);
        for (size_t i = 0; i < printed.size(); ++i) digits_[10 - printed.size() + i] = printed[i] - '0';
    }
    void multiply() {
        const std::string factor = "4294967296";
        for (int i = 9; i >= 0; --i) {
            if (digits_[i] == 0) continue;
            for (int j = 9; j >= 0; --j) add(i + j + 1, digits_[i] * (factor[static_cast<size_t>(j)] - '0'));
        }
    }
    void add(int place, int value) {
        product_[place] += value;
        for (; product_[place] > 9; --place) {
            product_[place - 1] += product_[place] / 10;
            product_[place] %= 10;
        }
    }
    int digits_[10] = {};
    int product_[20] = {};
};

std::string decimal_text(unsigned high, unsigned low) {
    char text[24];
    const int length = VlCm_U64TOA(high, low, text, sizeof text);
    EXPECT_EQ(static_cast<size_t>(length), strlen(text));
    EXPECT_EQ(VlCm_U64TOA(high, low, nullptr, 0), length);
    return text;
}

TEST_F(Decimal, AddsTheLeadingDigitsOfTheHighHalfOnceMore) {
    const struct {
        const char* label;
        unsigned high, low;
        const char* text;
    } rows[] = {
        {"zero", 0, 0, "0"},
        {"low half only", 0, 123456, "123456"},
        {"largest low half", 0, 4294967295U, "4294967295"},
        {"high digit kept by a low half of 0", 1, 0, "4294967297"},
        {"low half as long as the high one", 1, 5, "4294967301"},
        {"one high digit more", 12, 5, "51539607567"},  // 12 * 2^32 + 15
        {"low half longer", 12, 345, "51539607897"},    // 12 * 2^32 + 345
        {"zeros inside the high half", 100, 7, "429496729707"},
        {"largest value", 4294967295U, 4294967295U, "18446744073709551615"},
        {"largest high half alone", 4294967295U, 0, "18446744073709551615"},
        {"beyond 64 bits", 4294967295U, 999999999U, "18446744074414584319"},
    };
    support::for_each_row(rows,
                          [](const auto& row) { EXPECT_EQ(decimal_text(row.high, row.low), row.text); });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(Decimal, AgreesWithTheSchoolbook) {
    std::mt19937 random(6401);
    // Of every number of digits alike.
    const auto half = [&random] { return random() >> random() % 32; };
    for (int round = 0; round < 120000; ++round) {
        const unsigned high = round % 8 == 0 ? 0 : half();
        const unsigned low = round % 7 == 0 ? 0 : half();
        char text[24];
        VlCm_U64TOA(high, low, text, sizeof text);
        ASSERT_EQ(text, Schoolbook().text(high, low)) << high << ", " << low;
    }
}

TEST_F(Decimal, WritesWithinEverySize) {
    for (const std::string text : {"0", "123456", "4294967295"}) {
        SCOPED_TRACE(text);
        const auto low = static_cast<unsigned>(std::stoul(text));
        const auto length = text.size();
        for (size_t size = 1; size <= 24; ++size) {
            SCOPED_TRACE(size);
            const GuardedBuffer buffer(size);
            const int result = VlCm_U64TOA(0, low, buffer.as(), static_cast<unsigned>(size));
            // What does not fit with its terminator keeps its last digits and gets none.
            const std::string expected = size > length ? text + '\0' : text.substr(length - size);
            EXPECT_EQ(std::string(buffer.as(), expected.size()), expected);
            EXPECT_EQ(result, static_cast<int>(size > length ? length : size));
            EXPECT_TRUE(buffer.untouched_from(expected.size()));
        }
    }
}

TEST_F(Decimal, CopiesAllDigitsWithoutATerminatorForSize0) {
    const GuardedBuffer exact(6);
    EXPECT_EQ(VlCm_U64TOA(0, 123456, exact.as(), 0), 6);
    EXPECT_EQ(std::string(exact.as(), 6), "123456");
    const GuardedBuffer roomy(8);
    EXPECT_EQ(VlCm_U64TOA(0, 123456, roomy.as(), 0), 6);
    EXPECT_TRUE(roomy.untouched_from(6));
}

TEST_F(Decimal, TellsTheLengthWithoutABuffer) {
    EXPECT_EQ(VlCm_U64TOA(0, 0, nullptr, 0), 1);
    EXPECT_EQ(VlCm_U64TOA(1, 0, nullptr, 3), 10);
    EXPECT_EQ(VlCm_U64TOA(4294967295U, 4294967295U, nullptr, 100), 20);
}

TEST_F(Decimal, NeedsNoMemory) {
    const size_t before = blocks().allocations();
    blocks().fail_every(1);
    EXPECT_EQ(decimal_text(12, 5), "51539607567");
    EXPECT_EQ(blocks().allocations(), before);
}

}  // namespace
