// Whether a device's automatic default connection is offered.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <string.h>

using namespace shortcuts_test;
using support::SettingsFile;

namespace {

constexpr uint32_t kDevice = 1, kUnknown = 99;  // the built-in phone, A4:C1:38:2D:5E:01
constexpr char kSection[] = "01:5E:2D:38:C1:A4";
constexpr char kNoAddress[] = "00:00:00:00:00:00";

class DefaultConnection : public support::SuiteTest {
protected:
    void entry(const char* section, const char* value) {
        settings().set(SettingsFile::kRemoteDevices, section, "AutoConnectShc", value);
    }
    static std::string read_of(const char* section) {
        return std::string("Btsdk_GetPrivateProfileString(\"") + section +
               "\", \"AutoConnectShc\", \"\", out, 100, \"" +
               support::settings_path(SettingsFile::kRemoteDevices) + "\") = ";
    }
};

}  // namespace

TEST_F(DefaultConnection, IsOfferedWithAnEntryInTheSectionNamedByteZeroFirst) {
    entry(kSection, "A4:C1:38:2D:5E:01 1105 OBEX Object Push");
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), TRUE);
    EXPECT_EQ(support::sdk_calls(),
              (Lines{"Btsdk_GetRemoteDeviceAddress(1, out) = 0", read_of(kSection) + "39"}));
}

TEST_F(DefaultConnection, IsOfferedForAnyValueButAnEmptyOne) {
    const struct {
        const char* label;
        const char* value;
        BOOL expected;
    } rows[] = {
        {"zero", "0", TRUE},
        {"quoted blank", "\" \"", TRUE},
        {"empty", "", FALSE},
        {"name", "a", TRUE},
    };
    support::for_each_row(rows, [this](const auto& row) {
        entry(kSection, row.value);
        EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), row.expected);
    });
    entry(kSection, std::string(500, 'x').c_str());
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), TRUE);
}

TEST_F(DefaultConnection, IsNotOfferedWithoutAnEntryOfTheDevice) {
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), FALSE);
    entry("A4:C1:38:2D:5E:01", "x");  // printed the other way round
    settings().set(SettingsFile::kRemoteDevices, kSection, "AutoConnect", "x");
    settings().common(kSection, "AutoConnectShc", "x");
    settings().set(SettingsFile::kShortcuts, kSection, "AutoConnectShc", "x");
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), FALSE);
}

TEST_F(DefaultConnection, PrintsEachByteOfTheAddressByTwoUpperCaseDigits) {
    VlSim_Set("/devices/0/address", "\"FF:0A:00:B0:9C:07\"");
    entry("07:9C:B0:00:0A:FF", "x");
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), TRUE);
    EXPECT_TRUE(support::has_line(support::sdk_calls(), read_of("07:9C:B0:00:0A:FF") + "1"));
}

TEST_F(DefaultConnection, OfADeviceWithoutAnAddressIsThatOfTheZeroAddress) {
    for (const uint32_t device : {0U, kUnknown}) {
        support::clear_sdk_log();
        EXPECT_EQ(VlCm_ShouldShowDefaultConn(device), FALSE);
        EXPECT_TRUE(support::has_line(support::sdk_calls(), read_of(kNoAddress) + "0"));
    }
    entry(kNoAddress, "x");
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kUnknown), TRUE);
    VlSim_Fail("Btsdk_GetRemoteDeviceAddress", 1, kFailed);
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), TRUE);
}

TEST_F(DefaultConnection, TakesTheAddressWhateverTheStacksResult) {
    support::CallPatch address("Btsdk_GetRemoteDeviceAddress", Btsdk_GetRemoteDeviceAddress);
    address.answer([](BtHandle, uint8_t* bytes) {
        const uint8_t zero[6] = {};
        EXPECT_EQ(memcmp(bytes, zero, sizeof zero), 0);
        bytes[0] = 0x12;
        return kFailed;
    });
    entry("12:00:00:00:00:00", "x");
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), TRUE);
}

TEST_F(DefaultConnection, IsNotOfferedWhenTheEntryCannotBeRead) {
    entry(kSection, "x");
    VlSim_Fail("Btsdk_GetPrivateProfileString", 1, 0);
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), FALSE);
    EXPECT_EQ(VlCm_ShouldShowDefaultConn(kDevice), TRUE);
}

TEST_F(DefaultConnection, IsNotTraced) {
    VlCm_ShouldShowDefaultConn(kDevice);
    VlCm_ShouldShowDefaultConn(kUnknown);
    EXPECT_TRUE(support::trace_log().empty());
}
