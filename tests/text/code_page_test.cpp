// Conversions between UTF-8 and the ANSI code page. The program runs on several code pages.
#include "support/call_patch.h"
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "vlcm/text.h"

#include <stdlib.h>

#include <random>
#include <string>

using support::CallPatch;
using support::GuardedBuffer;

namespace {

class CodePage : public support::SuiteTest {};

using Plain = int (*)(char*, const char*, unsigned int);
using InPlace = unsigned int (*)(char*, unsigned int);

struct Direction {
    const char* label;
    Plain convert;
    InPlace convert_in_place;
    UINT from, to;
};
const Direction kDirections[] = {
    {"UTF-8 to ANSI", VlCm_UTF8ToLocal, VlCm_UTF8ToLocalEx, CP_UTF8, CP_ACP},
    {"ANSI to UTF-8", VlCm_LocalToUTF8, VlCm_LocalToUTF8Ex, CP_ACP, CP_UTF8},
};
const Direction& kToLocal = kDirections[0];
const Direction& kToUtf8 = kDirections[1];

// One text in both forms; a row without a code page holds on all of them.
struct Pair {
    const char* label;
    UINT code_page;
    const char* utf8;
    const char* local;
};
const Pair kPairs[] = {
    {"ASCII", 0, "Veltrin 12", "Veltrin 12"},
    {"one character", 0, "x", "x"},
    {"Western", 1252, "Ger\xC3\xA4t \xE2\x82\xAC", "Ger\xE4t \x80"},
    {"Chinese", 936, "\xE5\x8F\x91\xE7\x8E\xB0\xE8\xAE\xBE\xE5\xA4\x87", "\xB7\xA2\xCF\xD6\xC9\xE8\xB1\xB8"},
    {"Japanese", 932, "\xE6\xA9\x9F\xE5\x99\xA8", "\x8B\x40\x8A\xED"},
};

std::vector<Pair> pairs_of_this_code_page() {
    std::vector<Pair> pairs;
    for (const Pair& pair : kPairs) {
        if (pair.code_page == 0 || pair.code_page == GetACP()) pairs.push_back(pair);
    }
    return pairs;
}

size_t length_within(const char* text, size_t size) {
    size_t length = 0;
    while (length < size && text[length] != 0) ++length;
    return length;
}

// What the bare platform calls leave in `buffer`.
std::string platform_result(const Direction& direction, const char* source, std::string buffer) {
    if (buffer.empty()) return buffer;
    wchar_t utf16[600] = {};  // an incomplete sequence at the end may swallow the terminator
    MultiByteToWideChar(direction.from, 0, source, -1, utf16, 599);
    buffer[0] = 0;
    WideCharToMultiByte(direction.to, 0, utf16, -1, buffer.data(), static_cast<int>(buffer.size()), nullptr,
                        nullptr);
    return buffer;
}

void expect_as_platform(const Direction& direction, const char* source, size_t size) {
    const GuardedBuffer buffer(size);
    const int length = direction.convert(buffer.as(), source, static_cast<unsigned>(size));
    const std::string filled(size, static_cast<char>(GuardedBuffer::kFill));
    const std::string expected = platform_result(direction, source, filled);
    EXPECT_EQ(std::string(buffer.as(), size), expected) << "size " << size;
    EXPECT_EQ(length, static_cast<int>(length_within(expected.data(), size))) << "size " << size;
    EXPECT_TRUE(buffer.untouched_from(size));
}

TEST_F(CodePage, RunsOnTheOneThatTheTestNames) {
    const char* named = getenv("VLCM_TEST_CODE_PAGE");
    ASSERT_NE(named, nullptr) << "run by ctest, which sets language and code page";
    EXPECT_EQ(GetACP(), static_cast<UINT>(atoi(named)));
    EXPECT_GE(pairs_of_this_code_page().size(), 3U);
}

TEST_F(CodePage, ConvertsInBothDirections) {
    support::for_each_row(pairs_of_this_code_page(), [](const Pair& pair) {
        char text[64];
        EXPECT_EQ(VlCm_UTF8ToLocal(text, pair.utf8, sizeof text), static_cast<int>(strlen(pair.local)));
        EXPECT_STREQ(text, pair.local);
        EXPECT_EQ(VlCm_LocalToUTF8(text, pair.local, sizeof text), static_cast<int>(strlen(pair.utf8)));
        EXPECT_STREQ(text, pair.utf8);
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(CodePage, WritesWithinEverySize) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        for (const Pair& pair : pairs_of_this_code_page()) {
            SCOPED_TRACE(pair.label);
            const char* source = direction.from == CP_UTF8 ? pair.utf8 : pair.local;
            const size_t exact = strlen(direction.from == CP_UTF8 ? pair.local : pair.utf8) + 1;
            for (const size_t size : {size_t{1}, exact - 1, exact, exact + 1, exact + 40}) {
                expect_as_platform(direction, source, size);
            }
        }
    }
}

TEST_F(CodePage, ReplacesWhatTheCodePageLacks) {
    char text[16];
    EXPECT_EQ(VlCm_UTF8ToLocal(text, "a\xE0\xB8\x81z", sizeof text), 3);  // a Thai letter
    EXPECT_STREQ(text, "a?z");
}

TEST_F(CodePage, ConvertsAnyBytesAsThePlatformDoes) {
    std::mt19937 random(2102);
    for (int round = 0; round < 3000; ++round) {
        std::string source(random() % 40, '\0');
        for (char& byte : source) byte = static_cast<char>(1 + random() % 255);
        const Direction& direction = kDirections[round % 2];
        expect_as_platform(direction, source.c_str(), 1 + random() % 130);
        if (HasFailure()) return;
    }
}

TEST_F(CodePage, EndsBehindAnIncompleteSequence) {
    for (const char* lead : {"\xC3", "\xE4", "\xE4\xB8", "\xF0", "\xF0\x9F\x93"}) {
        SCOPED_TRACE(testing::PrintToString(lead));
        char text[64];
        const int length = VlCm_UTF8ToLocal(text, (std::string("ab") + lead).c_str(), sizeof text);
        EXPECT_EQ(std::string(text).substr(0, 3), "ab?");
        EXPECT_TRUE(std::string(text).find_first_not_of("ab?") == std::string::npos) << text;
        EXPECT_EQ(static_cast<size_t>(length), strlen(text));
    }
}

TEST_F(CodePage, DoesNothingWithoutADestination) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        char text[4] = {'k', 'e', 'p', 't'};
        EXPECT_EQ(direction.convert(nullptr, "abc", 4), 0);
        EXPECT_EQ(direction.convert(text, "abc", 0), 0);
        EXPECT_EQ(std::string(text, 4), "kept");
    }
}

TEST_F(CodePage, EmptiesTheDestinationWithoutASource) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        for (const char* source : {static_cast<const char*>(nullptr), ""}) {
            const GuardedBuffer buffer(4);
            EXPECT_EQ(direction.convert(buffer.as(), source, 4), 0);
            EXPECT_EQ(buffer.as()[0], 0);
            EXPECT_TRUE(buffer.untouched_from(1));
        }
    }
}

TEST_F(CodePage, EmptiesTheDestinationBeforeItReadsTheSource) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        char text[] = "same";
        EXPECT_EQ(direction.convert(text, text, sizeof text), 0);
        EXPECT_STREQ(text, "");
    }
}

TEST_F(CodePage, TakesSizesBeyondTheSignedRange) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        char text[8] = "";
        EXPECT_EQ(direction.convert(text, "abc", 0x80000000U), 3);
        EXPECT_STREQ(text, "abc");
    }
}

TEST_F(CodePage, AsksThePlatformThreeTimesAndAllocatesOnce) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        CallPatch wide("MultiByteToWideChar", MultiByteToWideChar);
        CallPatch narrow("WideCharToMultiByte", WideCharToMultiByte);
        const size_t before = blocks().allocations();
        char text[8];
        const char* source = "abc";
        EXPECT_EQ(direction.convert(text, source, sizeof text), 3);
        EXPECT_EQ(blocks().allocations() - before, 1U);
        ASSERT_EQ(wide.count(), 2U);
        ASSERT_EQ(narrow.count(), 1U);
        const auto unit_buffer = std::get<4>(wide.calls()[1]);
        EXPECT_EQ(wide.calls()[0], std::make_tuple(direction.from, 0UL, source, -1, nullptr, 0));
        EXPECT_EQ(wide.calls()[1], std::make_tuple(direction.from, 0UL, source, -1, unit_buffer, 4));
        EXPECT_EQ(narrow.calls()[0],
                  std::make_tuple(direction.to, 0UL, unit_buffer, 4, text, 8, nullptr, nullptr));
    }
}

TEST_F(CodePage, EmptiesTheDestinationWithoutMemory) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        CallPatch wide("MultiByteToWideChar", MultiByteToWideChar);
        const GuardedBuffer buffer(8);
        blocks().fail_nth(1);
        EXPECT_EQ(direction.convert(buffer.as(), "abc", 8), 0);
        EXPECT_EQ(wide.count(), 1U) << "nothing to convert into";
        EXPECT_EQ(buffer.as()[0], 0);
        EXPECT_TRUE(buffer.untouched_from(1));
    }
}

TEST_F(CodePage, EmptiesTheDestinationWhenTheSourceCannotBeConverted) {
    for (const Direction& direction : kDirections) {
        for (const size_t failing : {size_t{1}, size_t{2}}) {
            SCOPED_TRACE(testing::Message() << direction.label << ", call " << failing);
            CallPatch wide("MultiByteToWideChar", MultiByteToWideChar);
            CallPatch narrow("WideCharToMultiByte", WideCharToMultiByte);
            wide.fail_nth(failing, 0, ERROR_INVALID_PARAMETER);
            const GuardedBuffer buffer(8);
            EXPECT_EQ(direction.convert(buffer.as(), "abc", 8), 0);
            EXPECT_EQ(buffer.as()[0], 0);
            EXPECT_TRUE(buffer.untouched_from(1));
            EXPECT_EQ(narrow.count(), 0U);
        }
    }
}

// The second conversion leaves "ab" and then fails with `error`.
int convert_leaving_part(const Direction& direction, char* text, unsigned size, DWORD error) {
    CallPatch narrow("WideCharToMultiByte", WideCharToMultiByte);
    narrow.answer([error](UINT, DWORD, LPCWCH, int, LPSTR destination, int, LPCCH, LPBOOL) {
        memcpy(destination, "ab", 2);
        SetLastError(error);
        return 0;
    });
    return direction.convert(text, "abc", size);
}

TEST_F(CodePage, LeavesWhatFittedAndCountsItWithinTheSize) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        const GuardedBuffer buffer(2);
        EXPECT_EQ(convert_leaving_part(direction, buffer.as(), 2, ERROR_INSUFFICIENT_BUFFER), 2);
        EXPECT_EQ(std::string(buffer.as(), 2), "ab");
    }
}

TEST_F(CodePage, EmptiesTheDestinationWhenTheSecondConversionFails) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        const GuardedBuffer buffer(8);
        EXPECT_EQ(convert_leaving_part(direction, buffer.as(), 8, ERROR_INVALID_PARAMETER), 0);
        EXPECT_EQ(buffer.as()[0], 0);
    }
}

// In place: the buffer ends behind its text at a page that cannot be touched.
std::string converted_in_place(const Direction& direction, const std::string& text, unsigned& length) {
    const GuardedBuffer buffer(text.size());
    memcpy(buffer.as(), text.data(), text.size());
    length = direction.convert_in_place(buffer.as(), static_cast<unsigned>(text.size()));
    return std::string(buffer.as(), text.size());
}

TEST_F(CodePage, LeavesAsciiInPlaceUnchangedWithoutATerminator) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        for (const std::string text : {"a", "Veltrin"}) {
            unsigned length = 0;
            EXPECT_EQ(converted_in_place(direction, text, length), text);
            EXPECT_EQ(length, text.size());
        }
    }
}

TEST_F(CodePage, TerminatesTextThatShrinksInPlace) {
    for (const Pair& pair : pairs_of_this_code_page()) {
        SCOPED_TRACE(pair.label);
        const std::string local = pair.local;
        if (local.size() == strlen(pair.utf8)) continue;
        unsigned length = 0;
        const std::string left = converted_in_place(kToLocal, pair.utf8, length);
        EXPECT_EQ(length, local.size());
        EXPECT_STREQ(left.c_str(), local.c_str());
    }
}

TEST_F(CodePage, CutsTextThatGrowsInPlace) {
    for (const Pair& pair : pairs_of_this_code_page()) {
        SCOPED_TRACE(pair.label);
        const std::string local = pair.local;
        unsigned length = 0;
        const std::string left = converted_in_place(kToUtf8, local, length);
        EXPECT_EQ(left, platform_result(kToUtf8, pair.local, local));
        EXPECT_EQ(length, length_within(left.data(), left.size()));
    }
}

TEST_F(CodePage, EndsAtATerminatorWithinTheLength) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        unsigned length = 0;
        EXPECT_STREQ(converted_in_place(direction, std::string("ab\0cd", 5), length).c_str(), "ab");
        EXPECT_EQ(length, 2U);
    }
}

TEST_F(CodePage, GivesThePlainFunctionTheTextsLengthAsItsSize) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        CallPatch narrow("WideCharToMultiByte", WideCharToMultiByte);
        char text[] = "abcd";
        EXPECT_EQ(direction.convert_in_place(text, 3), 3U);
        ASSERT_EQ(narrow.count(), 1U);
        EXPECT_EQ(std::get<5>(narrow.calls()[0]), 3);
        EXPECT_STREQ(text, "abcd");
    }
}

TEST_F(CodePage, LeavesTheTextInPlaceWithoutMemoryForItsCopy) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        char text[] = "abc";
        blocks().fail_nth(1);
        EXPECT_EQ(direction.convert_in_place(text, 3), 3U);
        EXPECT_STREQ(text, "abc");
    }
}

TEST_F(CodePage, EmptiesTheTextInPlaceWithoutMemoryForTheConversion) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        char text[] = "abc";
        blocks().fail_nth(2);
        EXPECT_EQ(direction.convert_in_place(text, 3), 0U);
        EXPECT_STREQ(text, "");
    }
}

TEST_F(CodePage, DoesNothingInPlaceWithoutAText) {
    for (const Direction& direction : kDirections) {
        SCOPED_TRACE(direction.label);
        char text[] = "kept";
        EXPECT_EQ(direction.convert_in_place(nullptr, 4), 0U);
        EXPECT_EQ(direction.convert_in_place(text, 0), 0U);
        EXPECT_STREQ(text, "kept");
    }
}

}  // namespace
