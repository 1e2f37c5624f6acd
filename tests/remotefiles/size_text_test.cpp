// The size of a remote file in words.
#include "language_library_use.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "twin.h"
#include "vlcm/remote_files.h"

namespace {

constexpr UINT kBytesWord = 1217;
constexpr uint32_t kRoom = 260;

class SizeText : public support::SuiteTest {
protected:
    // Each call with the language library there leaves one reference on it.
    Outcome<char> ask(uint32_t low, uint32_t high, BOOL detail = FALSE, uint32_t size = kRoom) {
        allow_leak("size text");
        return outcome_of<char>(
            [=](char* buffer, uint32_t room) {
                return VlCm_GetFTPFileSizeString(low, high, buffer, room, detail);
            },
            size, size);
    }
    // The text, whose length must be the result.
    std::string text(uint32_t low, uint32_t high, BOOL detail = FALSE) {
        const auto found = ask(low, high, detail);
        EXPECT_EQ(found.result, found.text.size());
        EXPECT_TRUE(found.rest_untouched);
        return found.text;
    }
    // Expects the shortest room for the text to be `bytes` and one more.
    void expect_room(uint32_t low, BOOL detail, uint32_t length, uint32_t bytes) {
        const auto fits = ask(low, 0, detail, bytes + 1);
        EXPECT_EQ(fits.result, length);
        EXPECT_EQ(fits.text.size(), bytes);
        const auto refused = ask(low, 0, detail, bytes);
        EXPECT_EQ(refused.result, 0u);
        EXPECT_TRUE(refused.untouched);
    }
    void set_word(const std::wstring& word) { strings_.set(kBytesWord, word); }

    StringLoads<wchar_t> strings_;
};

class SizeTextInW : public SizeText {
protected:
    SizeTextInW() { set_word(L"W"); }
};

struct Row {
    const char* label;
    uint32_t high;
    uint32_t low;
    const char* expected;
};

TEST_F(SizeTextInW, ChoosesTheUnit) {
    constexpr Row kRows[] = {
        {"nothing", 0, 0, "0 W"},
        {"one byte", 0, 1, "1 W"},
        {"last in bytes", 0, 1023, "1023 W"},
        {"first in kilobytes", 0, 1024, "1.00 KB"},
        {"half a kilobyte more", 0, 1536, "1.50 KB"},
        {"last in kilobytes", 0, 0xFFFFF, "1024.00 KB"},
        {"first in megabytes", 0, 0x100000, "1.00 MB"},
        {"last in megabytes", 0, 0x3FFFFFFF, "1024.00 MB"},
        {"first in gigabytes", 0, 0x40000000, "1.00 GB"},
        {"sign bit", 0, 0x80000000, "2.00 GB"},
        {"last without an upper half", 0, 0xFFFFFFFF, "4.00 GB"},
        {"first with an upper half", 1, 0, "4.00 GB"},
        {"both halves", 1, 0x40000000, "5.00 GB"},
        {"low is small", 3, 1, "12.00 GB"},
    };
    support::for_each_row(kRows, [&](const Row& row) { EXPECT_EQ(text(row.low, row.high), row.expected); });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(SizeTextInW, RoundsExactTiesAwayFromZero) {
    constexpr Row kRows[] = {
        {"kilobytes", 0, 1152, "1.13 KB"},
        {"kilobytes, odd digit", 0, 1408, "1.38 KB"},
        {"above one and a half", 0, 1664, "1.63 KB"},
        {"megabytes", 0, 1179648, "1.13 MB"},
        {"gigabytes", 0, 0x48000000, "1.13 GB"},
        {"upper half", 1, 0x08000000, "4.13 GB"},
        {"just below a tie", 0, 1151, "1.12 KB"},
        {"just above a tie", 0, 1153, "1.13 KB"},
    };
    support::for_each_row(kRows, [&](const Row& row) { EXPECT_EQ(text(row.low, row.high), row.expected); });
}

// In double precision each of these would end in another digit.
TEST_F(SizeTextInW, IsComputedInSinglePrecision) {
    constexpr Row kRows[] = {
        {"megabytes", 0, 537001964, "512.13 MB"},
        {"gigabytes", 0, 3355443100, "3.13 GB"},
        {"sum of both halves", 1000, 134207728, "4000.13 GB"},
        {"upper half alone", 0x02000001, 0, "134217728.00 GB"},
    };
    support::for_each_row(kRows, [&](const Row& row) { EXPECT_EQ(text(row.low, row.high), row.expected); });
}

TEST_F(SizeTextInW, MultipliesTheUpperHalfIn32Bits) {
    constexpr Row kRows[] = {
        {"overflow to nothing", 0x40000000, 0, "0.00 GB"},
        {"overflow, low half stays", 0x80000000, 0x40000000, "1.00 GB"},
        {"overflow to one gigabyte step", 0x40000001, 0, "4.00 GB"},
        {"least value", 0x80000000, 1, "0.00 GB"},
        {"largest product", 0x3FFFFFFF, 0, "4294967296.00 GB"},
        {"all bits", 0xFFFFFFFF, 0xFFFFFFFF, "4294967296.00 GB"},
    };
    support::for_each_row(kRows, [&](const Row& row) { EXPECT_EQ(text(row.low, row.high), row.expected); });
}

TEST_F(SizeTextInW, TellsTheExactCountInGroups) {
    constexpr Row kRows[] = {
        {"one digit", 0, 5, "5 W (5W)"},
        {"three digits", 0, 999, "999 W (999W)"},
        {"four digits", 0, 1000, "1000 W (1,000W)"},
        {"kilobytes", 0, 1024, "1.00 KB (1,024W)"},
        {"six digits", 0, 999999, "976.56 KB (999,999W)"},
        {"seven digits", 0, 1000000, "976.56 KB (1,000,000W)"},
        {"last positive count", 0, 0x7FFFFFFF, "2.00 GB (2,147,483,647W)"},
        {"first negative count", 0, 0x80000000, "2.00 GB (-2,147,483,648W)"},
        {"last negative count", 0, 0xFFFFFFFF, "4.00 GB (-1W)"},
        {"sign in a group of its own", 0, 0xFFFFFF9C, "4.00 GB (-,100W)"},
        {"sign with a digit", 0, 0xFFFFFC18, "4.00 GB (-1,000W)"},
        {"sign before two groups", 0, 0xFFF0BDC1, "4.00 GB (-,999,999W)"},
    };
    support::for_each_row(kRows,
                          [&](const Row& row) { EXPECT_EQ(text(row.low, row.high, TRUE), row.expected); });
}

TEST_F(SizeTextInW, TakesTheDigitsOfThe64BitNumbersText) {
    constexpr Row kRows[] = {
        {"one and nothing", 1, 0, "4.00 GB (4,294,967,297W)"},
        {"one and five", 1, 5, "4.00 GB (4,294,967,301W)"},
        {"two digits above one", 12, 5, "48.00 GB (51,539,607,567W)"},
        {"all bits", 0xFFFFFFFF, 0xFFFFFFFF, "4294967296.00 GB (18,446,744,073,709,551,615W)"},
    };
    support::for_each_row(kRows,
                          [&](const Row& row) { EXPECT_EQ(text(row.low, row.high, TRUE), row.expected); });
}

TEST_F(SizeTextInW, HeedsAnyDetailFlagButNotForNothing) {
    for (const BOOL flag : {1, 2, 0x100, -1, static_cast<BOOL>(0x80000000)}) {
        EXPECT_EQ(text(1, 0, flag), "1 W (1W)") << flag;
        EXPECT_EQ(text(0, 0, flag), "0 W") << flag;
    }
}

TEST_F(SizeText, HasTheWordOfTheLanguageLibrary) {
    const std::wstring wide = resource_text<wchar_t>(kBytesWord);
    const std::string word(wide.begin(), wide.end());
    EXPECT_FALSE(word.empty());
    EXPECT_EQ(text(1023, 0), "1023 " + word);
    EXPECT_EQ(text(0, 0), "0 " + word);
    EXPECT_EQ(text(1024, 0, TRUE), "1.00 KB (1,024" + word + ")");
    EXPECT_EQ(strings_.loads(), (std::vector<std::pair<UINT, int>>(3, {kBytesWord, 128})));
}

TEST_F(SizeText, LacksAWordThatIsMissing) {
    strings_.remove(kBytesWord);
    EXPECT_EQ(text(0, 0), "0 ");
    EXPECT_EQ(text(1023, 0), "1023 ");
    EXPECT_EQ(text(1024, 0, TRUE), "1.00 KB (1,024)");
}

TEST_F(SizeText, CutsTheWordTo127Characters) {
    set_word(std::wstring(300, L'w'));
    EXPECT_EQ(text(1, 0), "1 " + std::string(127, 'w'));
}

TEST_F(SizeText, LoadsTheWordBeforeItTestsAnything) {
    const LanguageLibraryUse library;
    char room = 'x';
    allow_leak("size text", 3);
    EXPECT_EQ(VlCm_GetFTPFileSizeString(1, 0, nullptr, kRoom, FALSE), 0u);
    EXPECT_EQ(VlCm_GetFTPFileSizeString(1, 0, &room, 0, FALSE), 0u);
    EXPECT_EQ(VlCm_GetFTPFileSizeString(0, 0, nullptr, 0, TRUE), 0u);
    EXPECT_EQ(room, 'x');
    EXPECT_EQ(library.loads(), 3u);
    EXPECT_EQ(strings_.loads().size(), 3u);
}

// The fixture finds the references that this leaves, and expects them.
TEST_F(SizeText, KeepsTheLanguageLibraryEachTime) {
    const LanguageLibraryUse library;
    ask(0, 0);
    ask(5, 0, TRUE);
    ask(5, 1, TRUE);
    ask(1024, 0, FALSE, 1);
    EXPECT_EQ(library.loads(), 4u);
    EXPECT_EQ(library.frees(), 0u);
}

TEST_F(SizeText, NeedsTheLanguageLibrary) {
    LanguageLibraryUse library;
    library.fail();
    for (const uint32_t low : {0u, 1u, 1024u}) {
        char buffer[] = "untouched";
        EXPECT_EQ(VlCm_GetFTPFileSizeString(low, 0, buffer, sizeof buffer, TRUE), 0u);
        EXPECT_STREQ(buffer, "untouched");
    }
    EXPECT_EQ(library.tries(), 3u);
    EXPECT_TRUE(strings_.loads().empty()) << "without a library the program's own texts would be taken";
}

TEST_F(SizeTextInW, NeedsRoomForTextAndTerminator) {
    expect_room(1, FALSE, 3, 3);
    expect_room(1024, FALSE, 7, 7);
    expect_room(1024, TRUE, 16, 16);
    for (uint32_t size = 1; size <= 16; ++size) EXPECT_TRUE(ask(1024, 0, TRUE, size).untouched) << size;
}

TEST_F(SizeText, NeedsRoomForBytesAndCountsCharacters) {
    set_word(L"\x431\x430\x439\x442");  // two bytes each
    expect_room(1, FALSE, 6, 10);
    expect_room(1024, TRUE, 14 + 4 + 1, 14 + 8 + 1);
    set_word(L"\xD83D\xDE00");  // a pair: two characters, four bytes
    expect_room(1, FALSE, 4, 6);
}

TEST_F(SizeText, HasFewerThan260Bytes) {
    set_word(std::wstring(123, L'w'));
    const auto longest = ask(1000, 0, TRUE, 1000);
    EXPECT_EQ(longest.result, 259u);
    EXPECT_EQ(longest.text.size(), 259u);
    set_word(std::wstring(127, L'w'));
    const auto too_long = ask(5, 0, TRUE, 1000);  // 260
    EXPECT_EQ(too_long.result, 0u);
    EXPECT_TRUE(too_long.untouched);
    set_word(std::wstring(127, L'\x5B57'));  // too long in bytes alone
    EXPECT_TRUE(ask(5, 0, FALSE, 1000).untouched);
}

// Straight into the caller's buffer, whatever it holds of the text.
TEST_F(SizeTextInW, OfNothingTellsItsLengthEvenWhenItDoesNotFit) {
    const std::string whole = "0 W";
    for (uint32_t size = 1; size <= 3; ++size) {
        const auto found = ask(0, 0, FALSE, size);
        EXPECT_EQ(found.result, 3u) << size;
        EXPECT_EQ(found.text.substr(0, size), whole.substr(0, found.text.size())) << size;
    }
    EXPECT_EQ(ask(0, 0, FALSE, 4).text, whole);
}

TEST_F(SizeText, OfNothingMayHaveMoreThan260Bytes) {
    set_word(std::wstring(127, L'\x5B57'));
    const auto found = ask(0, 0, FALSE, 1000);
    EXPECT_EQ(found.result, 2u + 127);
    EXPECT_EQ(found.text.size(), 2u + 3 * 127);
}

TEST_F(SizeTextInW, TakesSizesAsUnsigned) {
    for (const uint32_t size : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        for (const uint32_t low : {0u, 1024u}) {
            char buffer[kRoom];
            allow_leak("size text");
            EXPECT_EQ(VlCm_GetFTPFileSizeString(low, 0, buffer, size, FALSE), low == 0 ? 3u : 7u);
            EXPECT_STREQ(buffer, low == 0 ? "0 W" : "1.00 KB");
        }
    }
}

TEST_F(SizeTextInW, IsNothingWhenItCannotBeConverted) {
    support::CallPatch converted("WideCharToMultiByte", WideCharToMultiByte);
    converted.fail_from(1, 0, ERROR_INVALID_PARAMETER);
    const auto found = ask(1024, 0);
    EXPECT_EQ(found.result, 0u);
    EXPECT_TRUE(found.untouched);
    EXPECT_EQ(ask(0, 0).result, 3u) << "the length all the same";
    ASSERT_EQ(converted.count(), 2u);
    for (const auto& call : converted.calls()) EXPECT_EQ(std::get<0>(call), UINT{CP_UTF8});
}

TEST_F(SizeTextInW, NeedsNoMemory) {
    blocks().fail_every(1);
    EXPECT_EQ(text(5, 1, TRUE), "4.00 GB (4,294,967,301W)");
    EXPECT_EQ(text(1024, 0, TRUE), "1.00 KB (1,024W)");
    EXPECT_EQ(text(0, 0), "0 W");
    EXPECT_EQ(blocks().allocations(), 0u);
}

}  // namespace
