// UTF-8 texts shortened for display.
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "vlcm/text.h"

#include <algorithm>
#include <limits>
#include <random>
#include <string>

using support::GuardedBuffer;

namespace {

class LimitCharacterCount : public support::SuiteTest {};

const char kNoCount[] = "error in VlCm_LimitStringCharacterCount, can not calc string count\n";

std::string repeat(const std::string& text, size_t times) {
    std::string result;
    for (size_t i = 0; i < times; ++i) result += text;
    return result;
}

const std::string kChinese = "\xE4\xB8\xAD";

// The rule by its letter, the retry as a call of itself. `text` is changed; `failed` tells of the line.
int literal_limit(std::string& text, int byteLimit, int charLimit, int wideWeight, bool& failed) {
    const auto byte = [&text](int at) {
        return static_cast<unsigned char>(text.at(static_cast<size_t>(at)));
    };
    int pos = 0, count = 0, len = 0;
    if (byteLimit < charLimit) return 0;
    while (count < charLimit) {
        const int k = byte(pos) & 0xF0;
        if (k <= 0x70) {
            count += 1;
            len = 1;
            if (k == 0x00) return pos + 1;
        } else if (k == 0xC0 || k == 0xD0) {
            count += 1;
            len = 2;
        } else if (k == 0xE0) {
            count += wideWeight;
            len = 3;
        } else if (k == 0xF0) {
            count += 1;
            len = 4;
        } else {
            len = 1;
        }
        pos += len;
        if (pos > byteLimit - 3) {
            pos -= len;
            break;
        }
    }
    if (byte(pos + 3) == 0) return pos + 3;
    if (byteLimit > pos + 3 && pos != 0) {
        text.replace(static_cast<size_t>(pos), 4, "...\0", 4);
        return pos;
    }
    if (byteLimit > pos && pos != 0) return literal_limit(text, byteLimit, charLimit - 1, wideWeight, failed);
    if (byteLimit < pos) {
        failed = true;
        return 0;
    }
    return pos;
}

// The fewest bytes that a caller must make readable.
size_t needed_bytes(int byteLimit) { return static_cast<size_t>(std::max(byteLimit, 3)) + 1; }

struct Outcome {
    int result;
    std::string text;  // all bytes of the buffer
};

// Calls the library with `text`, filled up with zeros, in a buffer that ends at a no-access page.
Outcome limited(const std::string& text, int byteLimit, int charLimit, int wideWeight) {
    const size_t size = needed_bytes(byteLimit);
    static const GuardedBuffer buffer(8192);
    char* const begin = buffer.as() + buffer.size() - size;
    std::string bytes = text.substr(0, size);
    bytes.resize(size);
    memcpy(begin, bytes.data(), size);
    const int result = VlCm_LimitStringCharacterCount(begin, byteLimit, charLimit, wideWeight);
    return {result, std::string(begin, size)};
}

TEST_F(LimitCharacterCount, ShortensAsWorkedByHand) {
    const std::string ascii30 = "abcdefghijklmnopqrstuvwxyz0123";
    const struct {
        const char* label;
        std::string text;
        int bytes, characters, weight, result;
        std::string expected;
    } rows[] = {
        {"four retries until the dots fit", ascii30, 20, 20, 1, 16, "abcdefghijklmnop..."},
        {"cut at the character limit", ascii30, 30, 10, 1, 10, "abcdefghij..."},
        {"no room for dots at the end", ascii30, 9, 9, 1, 5, "abcde..."},
        {"five wide characters count ten", repeat(kChinese, 13), 40, 10, 2, 15, repeat(kChinese, 5) + "..."},
        {"weight three", repeat(kChinese, 13), 40, 10, 3, 12, repeat(kChinese, 4) + "..."},
        {"two-byte characters", repeat("\xC3\xA4", 15), 30, 5, 1, 10, repeat("\xC3\xA4", 5) + "..."},
        {"two-byte characters, upper half", repeat("\xD0\x96", 15), 30, 5, 1, 10,
         repeat("\xD0\x96", 5) + "..."},
        {"four-byte characters", repeat("\xF0\x9F\x93\xB1", 8), 32, 3, 1, 12,
         repeat("\xF0\x9F\x93\xB1", 3) + "..."},
        {"five-byte heads take four", repeat("\xF8zzz", 8), 32, 2, 1, 8, "\xF8zzz\xF8zzz..."},
        {"stray bytes count nothing", repeat("\x80", 10) + ascii30, 40, 3, 1, 13,
         repeat("\x80", 10) + "abc..."},
        {"stray bytes, upper half", repeat("\xBF", 4) + ascii30, 30, 3, 1, 7, repeat("\xBF", 4) + "abc..."},
    };
    support::for_each_row(rows, [](const auto& row) {
        const Outcome outcome = limited(row.text, row.bytes, row.characters, row.weight);
        EXPECT_EQ(outcome.result, row.result);
        EXPECT_STREQ(outcome.text.c_str(), row.expected.c_str());
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(LimitCharacterCount, LeavesTheTextWhereNothingIsCut) {
    const struct {
        const char* label;
        std::string text;
        int bytes, characters, weight, result;
    } rows[] = {
        {"byte limit below character limit", "abcdefgh", 5, 6, 1, 0},
        {"terminator reached", "abc", 20, 10, 1, 4},
        {"empty", "", 20, 10, 1, 1},
        {"tab reached", "ab\tdefghijk", 20, 10, 1, 3},
        {"line feed reached", "\nabcdefghijk", 20, 10, 1, 1},
        {"byte 0x0F reached", "abc\x0F", 20, 10, 1, 4},
        {"three bytes left over", "abcdefgh", 20, 5, 1, 8},
        {"zero three places on, behind the terminator", "abcde", 20, 5, 1, 8},
        {"no characters wanted", "abcdef", 20, 0, 1, 0},
        {"no characters wanted of three bytes", "abc", 20, 0, 1, 3},
        {"negative character limit", "abcdef", 20, -1, 1, 0},
        {"no byte fits", "abcdef", 3, 3, 1, 0},
        {"limits of zero", "abcdef", 0, 0, 1, 0},
        {"first character too wide", kChinese + "abcdef", 5, 5, 1, 0},
    };
    support::for_each_row(rows, [](const auto& row) {
        const Outcome outcome = limited(row.text, row.bytes, row.characters, row.weight);
        EXPECT_EQ(outcome.result, row.result);
        // Compared up to the first zero: what follows is the filling.
        EXPECT_EQ(outcome.text.substr(0, outcome.text.find('\0')),
                  row.text.substr(0, std::min(row.text.size(), needed_bytes(row.bytes))));
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(LimitCharacterCount, CountsControlCharactersFrom0x10) {
    const Outcome outcome = limited("\x10\x1F zabcdefghijk", 12, 4, 1);
    EXPECT_EQ(outcome.result, 4);
    EXPECT_STREQ(outcome.text.c_str(), "\x10\x1F z...");
}

TEST_F(LimitCharacterCount, WritesALineForANegativeByteLimit) {
    EXPECT_EQ(limited("abcd", -1, -2, 1).result, 0);
    EXPECT_EQ(support::trace_lines(), std::vector<std::string>{kNoCount});
    EXPECT_EQ(support::trace_log(), std::vector<std::string>{std::string("=512 ") + kNoCount});
    support::clear_trace_log();
    EXPECT_EQ(limited("abc", -1, -2, 1).result, 3);
    EXPECT_EQ(limited("abcd", -3, -2, 1).result, 0);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(LimitCharacterCount, DoesNothingWithoutAText) {
    EXPECT_EQ(VlCm_LimitStringCharacterCount(nullptr, 20, 10, 1), 0);
    EXPECT_EQ(VlCm_LimitStringCharacterCount(nullptr, -1, -2, 1), 0);
    EXPECT_TRUE(support::trace_log().empty());
}

std::string random_text(std::mt19937& random) {
    static const std::string kPieces[] = {"a",        "Z",      "\x10",   "\x7F", "\xC3\xA4",
                                          "\xD0\x96", kChinese, kChinese, "\x80", "\xF0\x9F\x93\xB1",
                                          "\xFF"};
    std::string text;
    for (size_t pieces = random() % 30; pieces != 0; --pieces) text += kPieces[random() % std::size(kPieces)];
    if (random() % 4 == 0) text += std::string("\0x\tyz", 5);
    if (random() % 8 == 0) text += "\nmore";
    return text;
}

TEST_F(LimitCharacterCount, AgreesWithTheLiteralRule) {
    std::mt19937 random(1999);
    const auto between = [&random](int low, int high) {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
    };
    int lines = 0;
    for (int round = 0; round < 150000; ++round) {
        const std::string text = random_text(random);
        const int bytes = between(-3, 60), weight = between(round % 10 == 0 ? -2 : 0, 4);
        const int characters = between(-4, bytes + 1);
        bool failed = false;
        std::string expected = text.substr(0, needed_bytes(bytes));
        expected.resize(needed_bytes(bytes));
        const int result = literal_limit(expected, bytes, characters, weight, failed);
        const Outcome outcome = limited(text, bytes, characters, weight);
        ASSERT_EQ(outcome.result, result) << bytes << ", " << characters << ", " << weight << ": " << text;
        ASSERT_EQ(outcome.text, expected) << bytes << ", " << characters << ", " << weight << ": " << text;
        lines += failed ? 1 : 0;
    }
    EXPECT_GT(lines, 0);
    EXPECT_EQ(support::trace_lines().size(), static_cast<size_t>(lines));
}

TEST_F(LimitCharacterCount, AgreesWithTheLiteralRuleAtTheEndsOfTheRange) {
    const int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
    std::string text = "abcdefgh" + std::string(1, '\0');
    EXPECT_EQ(VlCm_LimitStringCharacterCount(text.data(), kLeast, kLeast, 1), 0);
    EXPECT_EQ(support::trace_lines().size(), 1U);
    EXPECT_EQ(VlCm_LimitStringCharacterCount(text.data(), kMost, kMost, 1), 9);
    std::string wide = "a" + repeat(kChinese, 5) + std::string(1, '\0');
    EXPECT_EQ(VlCm_LimitStringCharacterCount(wide.data(), kMost, kMost, kMost), 4);
    EXPECT_EQ(wide.substr(0, 8), "a" + kChinese + std::string("...\0", 4));
}

// Two million retries: neither stack nor time may be spent on each.
TEST_F(LimitCharacterCount, RetriesWithoutCost) {
    const int bytes = 3'000'000;
    std::string text = repeat(kChinese, 1'000'001);
    EXPECT_EQ(VlCm_LimitStringCharacterCount(text.data(), bytes, bytes, 1), bytes - 6);
    EXPECT_STREQ(text.c_str() + bytes - 9, (kChinese + "...").c_str());
}

}  // namespace
