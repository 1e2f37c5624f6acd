// The extended information function: the stack's answer, the version and three settings decide.
#include "vlcm/switches.h"

#include "profile_reads.h"
#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"

#include <optional>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using support::SettingsFile;
using Setting = std::optional<int>;

class ExtendedInformation : public support::SuiteTest {
protected:
    void stack_says(uint32_t answer) {
        stack_.answer([=] { return answer; });
    }
    void flag_is(Setting flag) { personal_number("IsSupportADFunction", "Flag", flag); }
    void disabled_is(Setting value) {
        settings().common("VlConfig", "DisableExtendVLInfoFunc", value ? std::to_string(*value) : "");
    }
    void version_is(const std::string& version) { settings().common("General", "CurrentVersion", version); }

private:
    // An empty text reads as 0: a missing key is a missing file here.
    void personal_number(const char* section, const char* key, Setting value) {
        DeleteFileA(support::settings_path(SettingsFile::kPersonal).c_str());
        if (value) settings().personal(section, key, std::to_string(*value));
    }
    support::CallPatch<decltype(Btsdk_IsSupportADFunction)> stack_{"Btsdk_IsSupportADFunction",
                                                                   Btsdk_IsSupportADFunction};
};

std::string flag_read(int fallback) {
    return number_read("IsSupportADFunction", "Flag", fallback, SettingsFile::kPersonal);
}
const std::string kVersionRead() { return text_read("General", "CurrentVersion", 260); }

}  // namespace

TEST_F(ExtendedInformation, WithTheStacksSupportOnlyAFlagOf0OffersIt) {
    const struct {
        const char* label;
        Setting flag;
        BOOL expected;
    } rows[] = {{"missing", {}, FALSE}, {"0", 0, TRUE}, {"1", 1, FALSE}, {"7", 7, FALSE}, {"-1", -1, FALSE}};
    stack_says(1);
    version_is("8.0");  // does not matter here
    support::for_each_row(rows, [&](const auto& row) {
        flag_is(row.flag);
        const std::string read = flag_read(-1);
        support::clear_sdk_log();
        EXPECT_EQ(VlCm_IsSupportADFunction(), row.expected);
        EXPECT_EQ(calls_made(), Lines{read});
    });
}

TEST_F(ExtendedInformation, BelowVersion9ItIsOffered) {
    flag_is(1);
    for (const uint32_t answer : {0U, 2U, 0x101U, 0xFFFFFFFFU}) {  // anything but exactly 1
        stack_says(answer);
        for (const char* version : {"", "8.9.9", "Version 8", "0", "-9", "9.1 beta"}) {
            version_is(version);
            const std::string read = kVersionRead();
            support::clear_sdk_log();
            EXPECT_EQ(VlCm_IsSupportADFunction(), TRUE) << version;
            EXPECT_EQ(calls_made(), Lines{read}) << version;
        }
    }
}

TEST_F(ExtendedInformation, FromVersion9OnAFlagOf1TakesItAway) {
    const struct {
        const char* label;
        int disabled;
        Setting flag;
        BOOL expected;
    } rows[] = {
        {"allowed, flag missing", 0, {}, TRUE},
        {"allowed, flag 0", 0, 0, TRUE},
        {"allowed, flag 1", 0, 1, FALSE},
        {"allowed, flag 7", 0, 7, TRUE},
        {"allowed, flag -1", 0, -1, TRUE},
        {"disabled, flag missing", 1, {}, FALSE},
        {"disabled, flag 0", 1, 0, TRUE},
        {"disabled, flag 1", 1, 1, FALSE},
        {"disabled, flag 7", 1, 7, TRUE},
        {"disabled by 7, flag missing", 7, {}, FALSE},
        {"disabled by -1, flag missing", -1, {}, FALSE},
    };
    stack_says(0);
    for (const char* version : {"9", "Version 9.1.2", "10.0"}) {
        version_is(version);
        support::for_each_row(rows, [&](const auto& row) {
            disabled_is(row.disabled);
            flag_is(row.flag);
            EXPECT_EQ(VlCm_IsSupportADFunction(), row.expected) << version;
        });
    }
}

TEST_F(ExtendedInformation, ReadsVersionThenSwitchThenFlag) {
    stack_says(0);
    version_is("9");
    for (const int disabled : {0, 1}) {
        disabled_is(disabled);
        const Lines expected = {kVersionRead(), number_read("VlConfig", "DisableExtendVLInfoFunc", 0),
                                flag_read(disabled)};
        support::clear_sdk_log();
        VlCm_IsSupportADFunction();
        EXPECT_EQ(calls_made(), expected);
    }
}

TEST_F(ExtendedInformation, AMissingSwitchAllows) {
    stack_says(0);
    version_is("9");
    EXPECT_EQ(VlCm_IsSupportADFunction(), TRUE);
}

TEST_F(ExtendedInformation, AVersionThatCannotBeReadIsBelow9) {
    stack_says(0);
    version_is("9");
    flag_is(1);
    support::CallPatch reading("Btsdk_GetPrivateProfileString", Btsdk_GetPrivateProfileString);
    reading.answer([](const char*, const char*, const char*, char* text, uint32_t, const char*) {
        text[0] = '9';  // what a failing call left does not count
        text[1] = 0;
        return 0U;
    });
    EXPECT_EQ(VlCm_IsSupportADFunction(), TRUE);
    EXPECT_EQ(reading.count(), 1u);
}

TEST_F(ExtendedInformation, OpensNoScope) {
    stack_says(1);
    VlCm_IsSupportADFunction();
    stack_says(0);
    VlCm_IsSupportADFunction();
    EXPECT_TRUE(support::trace_log().empty());
}
