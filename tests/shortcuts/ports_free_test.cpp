// The first plugged-in virtual COM port that is free.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <limits.h>
#include <shlobj.h>

using namespace shortcuts_test;

namespace {

std::string number_read(int number, uint32_t value) {
    return "Btsdk_GetPrivateProfileInt(\"VComm enum info\", \"SerialNum" + std::to_string(number) +
           "\", 0, \"" + support::settings_path(support::SettingsFile::kCommon) +
           "\") = " + std::to_string(value);
}

class FreePort : public support::SuiteTest {
protected:
    void SetUp() override {
        VlSim_Set("/servers", R"([{"handle": 301, "class": "0x1101", "port": 5}])");
        VlSim_Set("/shortcuts", "[]");
        support::clear_sdk_log();
    }
    // The list from "SerialNum1" on.
    void list(const std::vector<int>& values) {
        std::string text = "[VComm enum info]\r\n";
        for (size_t i = 0; i < values.size(); ++i) {
            text += "SerialNum" + std::to_string(i + 1) + "=" + std::to_string(values[i]) + "\r\n";
        }
        settings().content(support::settings_path(support::SettingsFile::kCommon), text);
        support::clear_sdk_log();
    }
    static Lines numbers_read() { return support::sdk_calls("Btsdk_GetPrivateProfileInt"); }
};

}  // namespace

TEST_F(FreePort, IsTheFirstPluggedInOneThatIsFree) {
    const struct {
        const char* label;
        std::vector<int> values;
        int expected;
        size_t read;
    } rows[] = {
        {"not plugged in is skipped", {30, 41, 0}, 4, 2},
        {"the only one is taken", {30, 51, 0}, 0, 3},
        {"a taken one is skipped", {51, 61}, 6, 2},
        {"the first", {71, 81}, 7, 1},
        {"0 ends the list", {30, 0, 41}, 0, 2},
        {"a missing one ends the list", {30}, 0, 2},
        {"nothing", {}, 0, 1},
        {"negative is skipped", {-41, -5, 41}, 4, 3},
        {"lowest and highest number", {INT_MIN + 1, INT_MAX}, INT_MAX / 10, 2},
        {"three digits", {2559}, 255, 1},
        {"no port number", {5, 41}, 0, 1},
    };
    support::for_each_row(rows, [this](const auto& row) {
        list(row.values);
        EXPECT_EQ(VlCm_GetPluginAndNotUsedComport(), row.expected);
        EXPECT_EQ(numbers_read().size(), row.read);
    });
}

TEST_F(FreePort, IsPluggedInByEveryStateDigitBut0) {
    for (int state = 0; state < 10; ++state) {
        list({90 + state});
        EXPECT_EQ(VlCm_GetPluginAndNotUsedComport(), state == 0 ? 0 : 9) << state;
    }
}

TEST_F(FreePort, IsReadThroughTheStackWithDefault0) {
    list({30, -41, 41});
    support::CallPatch folder("SHGetFolderPathA", SHGetFolderPathA);
    EXPECT_EQ(VlCm_GetPluginAndNotUsedComport(), 4);
    EXPECT_EQ(folder.count(), 2u);  // once for the list, once for the virtual devices
    EXPECT_EQ(numbers_read(),
              (Lines{number_read(1, 30), number_read(2, static_cast<uint32_t>(-41)), number_read(3, 41)}));
}

TEST_F(FreePort, ListHas254EntriesAtMost) {
    std::vector<int> values(255, 30);
    values[254] = 41;
    list(values);
    EXPECT_EQ(VlCm_GetPluginAndNotUsedComport(), 0);
    EXPECT_EQ(numbers_read().size(), 254u);
    EXPECT_EQ(numbers_read().back(), number_read(254, 30));
    values[253] = 41;
    list(values);
    EXPECT_EQ(VlCm_GetPluginAndNotUsedComport(), 4);
}

TEST_F(FreePort, Candidate0TakenByADeviceWithoutDigitsIsSkipped) {
    list({5, 41});
    settings().common("LocalBluetooth", "VirtualDeviceNum", "1");
    EXPECT_EQ(VlCm_GetPluginAndNotUsedComport(), 4);
    EXPECT_EQ(numbers_read().size(), 2u);
}

TEST_F(FreePort, AnEntryThatCannotBeReadEndsTheList) {
    list({30, 41});
    VlSim_Fail("Btsdk_GetPrivateProfileInt", 2, 0);
    EXPECT_EQ(VlCm_GetPluginAndNotUsedComport(), 0);
    EXPECT_EQ(numbers_read().size(), 2u);
}

TEST_F(FreePort, AsksForCandidatesOnlyInNestedScopes) {
    list({30, -41, 51, 61});
    EXPECT_EQ(VlCm_GetPluginAndNotUsedComport(), 6);
    EXPECT_EQ(support::trace_log(),
              (Lines{">512 VlCm_GetPluginAndNotUsedComport", ">512 VlCm_IsComportBeenUsed",
                     "<512 VlCm_IsComportBeenUsed", ">512 VlCm_IsComportBeenUsed",
                     "<512 VlCm_IsComportBeenUsed", "<512 VlCm_GetPluginAndNotUsedComport"}));
}
