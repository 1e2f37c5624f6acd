// Feature switches: what each key gives, and which reads it takes.
#include "vlcm/switches.h"

#include "profile_reads.h"
#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"
#include "vlcm/mobile.h"

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

class Switch : public support::SuiteTest {
protected:
    Switch() { mobile_is(0); }

    void edition_is(int edition) { settings().common("General", "VlCustomVersion", std::to_string(edition)); }
    void mobile_is(uint32_t answer) {
        mobile_.answer([=] { return answer; });
    }
    // The calls of the stack that `question` makes.
    template <typename Question>
    static Lines calls_of(Question question) {
        support::clear_sdk_log();
        question();
        return calls_made();
    }

    support::CallPatch<decltype(Btsdk_IsMobileActive)> mobile_{"Btsdk_IsMobileActive", Btsdk_IsMobileActive};
};

// One row of the switch table, with the edition and the mobile state that give its default.
struct Row {
    const char* label;
    int (*ask)();
    const char *section, *key;
    bool as_read;  // else reduced to 0 and 1
    int missing;   // answer without the key
};
int edition() { return VlCm_GetCustomVersion(); }
int uart() { return VlCm_SupportUartDeviceFlag(); }
int dialer() { return VlCm_ShouldShowDialerUI(); }
int printing() { return VlCm_IsSupportBPPFunction(); }
int mobile_dun() { return VlCm_IsMobileDUNActive(); }
constexpr Row kRows[] = {
    {"edition", edition, "General", "VlCustomVersion", true, 0},
    {"serial devices", uart, "VLConfig", "NeedSupportUARTDevice", true, 1},
    {"dialer", dialer, "vlconfig", "IsSupportDialerFunction", false, 0},
    {"basic printing", printing, "VlConfig", "IsSupportBPPFunction", false, 0},
    {"mobile dial-up", mobile_dun, "VLConfig", "NeedSupportMobileDUNFunc", false, 0},
};

Lines edition_reads(size_t count) { return Lines(count, number_read("General", "VlCustomVersion", 0)); }

Lines operator+(Lines left, const Lines& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

}  // namespace

TEST_F(Switch, GivesItsDefaultWithoutTheKey) {
    support::for_each_row(kRows, [](const Row& row) { EXPECT_EQ(row.ask(), row.missing); });
    settings().common("General", "Other", "1");  // the file exists now
    support::for_each_row(kRows, [](const Row& row) { EXPECT_EQ(row.ask(), row.missing); });
}

TEST_F(Switch, GivesTheStoredValue) {
    for (const int stored : {0, 1, 7, -1, 1000000}) {
        support::for_each_row(kRows, [&](const Row& row) {
            settings().common(row.section, row.key, std::to_string(stored));
            EXPECT_EQ(row.ask(), row.as_read ? stored : (stored != 0 ? 1 : 0)) << stored;
        });
    }
}

TEST_F(Switch, IsReadAgainAtEachCall) {
    support::for_each_row(kRows, [&](const Row& row) {
        settings().common(row.section, row.key, "1");
        EXPECT_EQ(row.ask(), 1);
        settings().common(row.section, row.key, "0");
        EXPECT_EQ(row.ask(), 0);
    });
}

TEST_F(Switch, ReadsItsOwnSpellingOfTheSection) {
    EXPECT_EQ(calls_of(edition), edition_reads(1));
    EXPECT_EQ(calls_of(dialer), Lines{number_read("vlconfig", "IsSupportDialerFunction", 0)});
    EXPECT_EQ(calls_of(printing), Lines{number_read("VlConfig", "IsSupportBPPFunction", 0)});
}

TEST_F(Switch, OpensAScopeOnlyForEditionAndSerialDevices) {
    const struct {
        const char* label;
        int (*ask)();
        Lines scopes;
    } rows[] = {
        {"edition", edition, {"512 VlCm_GetCustomVersion"}},
        {"serial devices",
         uart,
         {"512 VlCm_SupportDeviceFlag", "512 VlCm_GetCustomVersion", "512 VlCm_GetCustomVersion",
          "512 VlCm_GetCustomVersion"}},
        {"dialer", dialer, {}},
        {"basic printing", printing, {}},
        {"mobile dial-up", mobile_dun, {"512 VlCm_GetCustomVersion"}},
    };
    support::for_each_row(rows, [](const auto& row) {
        support::clear_trace_log();
        row.ask();
        EXPECT_EQ(support::trace_scopes(), row.scopes);
        EXPECT_TRUE(support::trace_lines().empty());
    });
}

TEST_F(Switch, SerialDevicesAskTheEditionUntilItMatches) {
    const struct {
        const char* label;
        int edition;
        size_t edition_reads;
        int fallback;
    } rows[] = {{"1", 1, 1, 0}, {"2", 2, 2, 0}, {"4", 4, 3, 0},  {"0", 0, 3, 1},
                {"3", 3, 3, 1}, {"5", 5, 3, 1}, {"-1", -1, 3, 1}};
    support::for_each_row(rows, [&](const auto& row) {
        edition_is(row.edition);
        EXPECT_EQ(calls_of([&] { EXPECT_EQ(uart(), row.fallback); }),
                  edition_reads(row.edition_reads) +
                      Lines{number_read("VLConfig", "NeedSupportUARTDevice", row.fallback)});
    });
}

TEST_F(Switch, SerialDevicesCompareEachReadOfTheEditionAnew) {
    const struct {
        const char* label;
        std::vector<uint32_t> editions;
        int fallback;
    } rows[] = {{"becomes 2", {9, 2}, 0},
                {"was 2", {2, 9, 9}, 1},
                {"becomes 4", {2, 4, 4}, 0},
                {"1 too late", {9, 1, 1}, 1}};
    support::for_each_row(rows, [&](const auto& row) {
        support::CallPatch reading("Btsdk_GetPrivateProfileInt", Btsdk_GetPrivateProfileInt);
        reading.answer([&](const char*, const char* key, int32_t fallback, const char*) {
            const size_t nth = reading.count();
            if (std::string(key) == "VlCustomVersion") {
                return nth <= row.editions.size() ? row.editions[nth - 1] : 99U;
            }
            EXPECT_EQ(fallback, row.fallback);
            return static_cast<uint32_t>(fallback);
        });
        EXPECT_EQ(uart(), row.fallback);
        EXPECT_EQ(reading.count(), row.editions.size() + 1);
    });
}

TEST_F(Switch, SerialDevicesGiveAStoredValueUnderEveryEdition) {
    settings().common("VLConfig", "NeedSupportUARTDevice", "7");
    for (const int number : {0, 1, 2, 3, 4}) {
        edition_is(number);
        EXPECT_EQ(uart(), 7) << number;
    }
}

TEST_F(Switch, MobileDialUpIsOnForEdition3OrActiveMobileSupport) {
    const struct {
        const char* label;
        int edition;
        uint32_t mobile;
        size_t mobile_asked;
        int fallback;
    } rows[] = {{"edition 3", 3, 0, 0, 1}, {"edition 3 and active", 3, 1, 0, 1},
                {"active", 0, 1, 1, 1},    {"active by any value", 1, 0x80000000, 1, 1},
                {"neither", 0, 0, 1, 0},   {"edition 4", 4, 0, 1, 0}};
    support::for_each_row(rows, [&](const auto& row) {
        edition_is(row.edition);
        mobile_is(row.mobile);
        const size_t asked = mobile_.count();
        const Lines calls = calls_of([&] { EXPECT_EQ(mobile_dun(), row.fallback); });
        EXPECT_EQ(calls, edition_reads(1) +
                             Lines{number_read("VLConfig", "NeedSupportMobileDUNFunc", row.fallback)});
        EXPECT_EQ(mobile_.count() - asked, row.mobile_asked);
    });
}

TEST_F(Switch, MobileDialUpFollowsItsKeyAgainstTheDefault) {
    edition_is(3);
    settings().common("VLConfig", "NeedSupportMobileDUNFunc", "0");
    EXPECT_EQ(mobile_dun(), 0);
    edition_is(0);
    settings().common("VLConfig", "NeedSupportMobileDUNFunc", "2");
    EXPECT_EQ(mobile_dun(), 1);
}

TEST_F(Switch, MobileFileTransferIsNeverOn) {
    mobile_is(1);
    edition_is(3);
    EXPECT_EQ(calls_of([] { EXPECT_EQ(VlCm_IsMobileFTPActive(), FALSE); }), Lines{});
    EXPECT_TRUE(support::trace_log().empty());
}
