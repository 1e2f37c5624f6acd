// The time of a remote file in words, in English; the program's local time is not that of the files.
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "twin.h"
#include "vlcm/remote_files.h"

namespace {

constexpr uint32_t kRoom = 300;

template <typename Char>
class TimeText : public support::SuiteTest {
protected:
    static uint32_t call(const FILETIME* time, Char* buffer, uint32_t size) {
        return form_of<Char>(VlCm_GetFTPFileTimeString, VlCm_GetFTPFileTimeStringW)(time, buffer, size);
    }
    static Outcome<Char> ask(const FILETIME& time, uint32_t size = kRoom) {
        return outcome_of<Char>([&](Char* buffer, uint32_t room) { return call(&time, buffer, room); }, size,
                                kRoom);
    }
    static void expect_nothing(const FILETIME& time) {
        const auto found = ask(time);
        EXPECT_EQ(found.result, 0u);
        EXPECT_TRUE(found.untouched);
    }
    using Format = int(LCID, DWORD, const SYSTEMTIME*, const Char*, Char*, int);
    support::CallPatch<Format> dates_{kIsPlain<Char> ? "GetDateFormatA" : "GetDateFormatW",
                                      form_of<Char>(GetDateFormatA, GetDateFormatW)};
    support::CallPatch<Format> clocks_{kIsPlain<Char> ? "GetTimeFormatA" : "GetTimeFormatW",
                                       form_of<Char>(GetTimeFormatA, GetTimeFormatW)};
};
TYPED_TEST_SUITE(TimeText, TwinForms, TwinFormName);

FILETIME file_time(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second) {
    const SYSTEMTIME time{year, month, 0, day, hour, minute, second, 0};
    FILETIME made{};
    EXPECT_TRUE(SystemTimeToFileTime(&time, &made));
    return made;
}

const FILETIME kAfternoon = file_time(2011, 3, 14, 15, 9, 26);

TYPED_TEST(TimeText, NeedsATimeAndABufferWithRoom) {
    TypeParam room = 'x';
    EXPECT_EQ(this->call(nullptr, &room, kRoom), 0u);
    EXPECT_EQ(this->call(&kAfternoon, nullptr, kRoom), 0u);
    EXPECT_EQ(this->call(&kAfternoon, &room, 0), 0u);
    EXPECT_EQ(room, TypeParam{'x'});
    EXPECT_EQ(this->dates_.count() + this->clocks_.count(), 0u);
}

TYPED_TEST(TimeText, IsDateAndTimeAsTheFileHasThem) {
    const struct {
        const char* label;
        FILETIME time;
        const char* expected;
    } rows[] = {
        {"afternoon", kAfternoon, "3/14/2011 3:09 PM"},
        {"midnight", file_time(2009, 12, 31, 0, 0, 0), "12/31/2009 12:00 AM"},
        {"last second of a day", file_time(2024, 2, 29, 23, 59, 59), "2/29/2024 11:59 PM"},
        {"least time", FILETIME{0, 0}, "1/1/1601 12:00 AM"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        const auto found = this->ask(row.time);
        EXPECT_EQ(found.text, ascii<TypeParam>(row.expected));
        EXPECT_EQ(found.result, found.text.size());
        EXPECT_TRUE(found.rest_untouched);
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TYPED_TEST(TimeText, AsksForTheStandardShortForms) {
    this->ask(kAfternoon);
    ASSERT_EQ(this->dates_.count(), 1u);
    ASSERT_EQ(this->clocks_.count(), 1u);
    const auto [date_locale, date_flags, date, date_form, date_text, date_size] = this->dates_.calls()[0];
    EXPECT_EQ(date_locale, LCID{LOCALE_USER_DEFAULT});
    EXPECT_EQ(date_flags, DWORD{LOCALE_NOUSEROVERRIDE | DATE_SHORTDATE});
    EXPECT_EQ(date_form, nullptr);
    EXPECT_EQ(date_size, 260);
    const auto [time_locale, time_flags, time, time_form, time_text, time_size] = this->clocks_.calls()[0];
    EXPECT_EQ(time_locale, LCID{LOCALE_USER_DEFAULT});
    EXPECT_EQ(time_flags, DWORD{LOCALE_NOUSEROVERRIDE | TIME_NOSECONDS});
    EXPECT_EQ(time_form, nullptr);
    EXPECT_EQ(time_size, 260);
}

TYPED_TEST(TimeText, MustBeShorterThanTheSize) {
    constexpr uint32_t kLength = 17;
    EXPECT_EQ(this->ask(kAfternoon, kLength + 1).result, kLength);
    EXPECT_EQ(this->ask(kAfternoon, 0xFFFFFFFF).result, kLength);
    for (uint32_t size = 1; size <= kLength; ++size) {
        const auto found = this->ask(kAfternoon, size);
        EXPECT_EQ(found.result, 0u) << size;
        EXPECT_TRUE(found.untouched) << size;
    }
}

TYPED_TEST(TimeText, HoldsTheLongestParts) {
    const auto fill = [](LCID, DWORD, const SYSTEMTIME*, const TypeParam*, TypeParam* text, int size) {
        std::fill_n(text, size - 1, TypeParam{'d'});
        text[size - 1] = 0;
        return size;
    };
    this->dates_.answer(fill);
    this->clocks_.answer(fill);
    const support::GuardedBuffer buffer(520 * sizeof(TypeParam));
    EXPECT_EQ(this->call(&kAfternoon, buffer.as<TypeParam>(), 520), 519u);
    const std::basic_string<TypeParam> text = buffer.as<TypeParam>();
    EXPECT_EQ(text, ascii<TypeParam>(std::string(259, 'd') + " " + std::string(259, 'd')));
}

TYPED_TEST(TimeText, IsNothingForTimesThatAreNone) {
    this->expect_nothing({0, 0x80000000});
    this->expect_nothing({0xFFFFFFFF, 0xFFFFFFFF});
    EXPECT_EQ(this->dates_.count() + this->clocks_.count(), 0u);
}

TYPED_TEST(TimeText, IsNothingWhenACallFails) {
    {
        support::CallPatch converted("FileTimeToSystemTime", FileTimeToSystemTime);
        converted.fail_nth(1, FALSE, ERROR_INVALID_PARAMETER);
        this->expect_nothing(kAfternoon);
    }
    this->dates_.fail_nth(1, 0, ERROR_INSUFFICIENT_BUFFER);
    this->expect_nothing(kAfternoon);
    this->dates_.fail_nth(SIZE_MAX, 0);
    this->clocks_.fail_nth(1, 0, ERROR_INSUFFICIENT_BUFFER);
    this->expect_nothing(kAfternoon);
    EXPECT_EQ(this->clocks_.count(), 1u);
    EXPECT_EQ(this->ask(kAfternoon).result, 17u);
}

}  // namespace
