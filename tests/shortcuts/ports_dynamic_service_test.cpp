// Whether a local serial-port server was made on demand.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <shlobj.h>
#include <string.h>

using namespace shortcuts_test;

namespace {

constexpr uint32_t kServer = 301, kWithoutPort = 302, kOnPort0 = 303, kObjectPush = 304, kUnknown = 9999;

std::string service_read(int number, uint32_t length) {
    return "Btsdk_GetPrivateProfileString(\"LocalSPPService" + std::to_string(number) +
           "\", \"VirtualDevice\", \"\", out, 20, \"" +
           support::settings_path(support::SettingsFile::kCommon) + "\") = " + std::to_string(length);
}
const Lines kPortRead{"Btsdk_GetServerAttributes(301, {}) = 0",
                      "Btsdk_GetServerAttributes(301, {mask 8}) = 0", "Btsdk_FreeMemory(pointer)"};

class DynamicService : public support::SuiteTest {
protected:
    void SetUp() override {
        VlSim_Set("/servers", R"([
            {"handle": 301, "class": "0x1101", "port": 9},
            {"handle": 302, "class": "0x1101"},
            {"handle": 303, "class": "0x1101", "port": 0},
            {"handle": 304, "class": "0x1105", "port": 9}])");
    }
    void fixed_service(int number, const std::string& port) {
        settings().common(("LocalSPPService" + std::to_string(number)).c_str(), "VirtualDevice", port);
    }
    static BOOL ask(uint32_t server) {
        support::clear_sdk_log();
        return VlCm_IsDynamicLocSppSvc(server);
    }
};

}  // namespace

TEST_F(DynamicService, IsOneWhosePortNoFixedServiceHas) {
    EXPECT_EQ(ask(kServer), TRUE);
    Lines expected = kPortRead;
    expected.push_back(service_read(0, 0));
    expected.push_back(service_read(1, 0));
    EXPECT_EQ(support::sdk_calls(), expected);
}

TEST_F(DynamicService, IsNotOneOfTheTwoFixedServicesLookedAtInOrder) {
    fixed_service(0, "COM9");
    EXPECT_EQ(ask(kServer), FALSE);
    Lines expected = kPortRead;
    expected.push_back(service_read(0, 4));
    EXPECT_EQ(support::sdk_calls(), expected);
    fixed_service(0, "COM8");
    EXPECT_EQ(ask(kServer), TRUE);
    fixed_service(1, "COM9");
    EXPECT_EQ(ask(kServer), FALSE);
    expected.back() = service_read(0, 4);
    expected.push_back(service_read(1, 4));
    EXPECT_EQ(support::sdk_calls(), expected);
}

TEST_F(DynamicService, OnlyTwoSectionsCountWhateverTheirNumber) {
    fixed_service(2, "COM9");
    fixed_service(3, "COM9");
    for (const char* count : {"9", "0", "-1"}) {
        settings().common("LocalBluetooth", "SPPSvcNum", count);
        EXPECT_EQ(ask(kServer), TRUE) << count;
        EXPECT_TRUE(support::sdk_calls("Btsdk_GetPrivateProfileInt").empty());
    }
    fixed_service(1, "COM9");
    EXPECT_EQ(ask(kServer), FALSE);
}

TEST_F(DynamicService, PortsAreComparedWholeAndByCase) {
    const struct {
        const char* label;
        const char* port;
        BOOL expected;
    } rows[] = {
        {"equal", "COM9", FALSE},
        {"lower case", "com9", TRUE},
        {"mixed case", "Com9", TRUE},
        {"longer", "COM99", TRUE},
        {"shorter", "COM", TRUE},
        {"leading zero", "COM09", TRUE},
        {"blank behind", "\"COM9 \"", TRUE},
        {"number alone", "9", TRUE},
    };
    support::for_each_row(rows, [this](const auto& row) {
        fixed_service(0, row.port);
        EXPECT_EQ(ask(kServer), row.expected);
    });
    VlSim_Set("/servers/0/port", "255");
    fixed_service(0, "COM255");
    EXPECT_EQ(ask(kServer), FALSE);
}

TEST_F(DynamicService, IsOneWithoutAPortAndNoSettingIsRead) {
    fixed_service(0, "COM0");
    fixed_service(1, "COM-1");
    support::CallPatch folder("SHGetFolderPathA", SHGetFolderPathA);
    EXPECT_EQ(ask(kWithoutPort), TRUE);
    EXPECT_EQ(support::sdk_operations(), Lines(2, "Btsdk_GetServerAttributes"));
    EXPECT_EQ(ask(kOnPort0), TRUE);
    VlSim_Fail("Btsdk_GetServerAttributes", 2, kFailed);
    EXPECT_EQ(ask(kServer), TRUE);
    EXPECT_TRUE(support::sdk_calls("Btsdk_GetPrivateProfileString").empty());
    EXPECT_EQ(folder.count(), 0u);
}

TEST_F(DynamicService, IsNoneOfAnotherClassOrThatCannotBeRead) {
    EXPECT_EQ(ask(kObjectPush), FALSE);
    EXPECT_EQ(support::sdk_calls(), Lines{"Btsdk_GetServerAttributes(304, {}) = 0"});
    EXPECT_EQ(ask(kUnknown), FALSE);
    EXPECT_EQ(ask(0), FALSE);
    VlSim_Fail("Btsdk_GetServerAttributes", 1, kFailed);
    EXPECT_EQ(ask(kServer), FALSE);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetServerAttributes"});
    support::CallPatch attributes("Btsdk_GetServerAttributes", Btsdk_GetServerAttributes);
    attributes.answer([](BtHandle, ServerAttributes* record) {
        const ServerAttributes zero{};
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0);
        record->serviceClass = 0x1101;
        return kFailed;
    });
    EXPECT_EQ(ask(kServer), FALSE);
    EXPECT_EQ(attributes.count(), 1u);
}

TEST_F(DynamicService, ASettingThatCannotBeReadIsNobodysPort) {
    fixed_service(0, "COM9");
    VlSim_Fail("Btsdk_GetPrivateProfileString", 1, 0);
    EXPECT_EQ(ask(kServer), TRUE);
    support::CallPatch text("Btsdk_GetPrivateProfileString", Btsdk_GetPrivateProfileString);
    text.answer([](const char*, const char*, const char*, char* buffer, uint32_t size, const char*) {
        for (uint32_t i = 0; i < size; ++i) EXPECT_EQ(buffer[i], 0) << i;
        memcpy(buffer, "COM9", 5);
        return 0U;
    });
    EXPECT_EQ(ask(kServer), TRUE);
    EXPECT_EQ(text.count(), 2u);
}

TEST_F(DynamicService, OpensItsScopeOnEveryPathAndWritesNoLine) {
    for (const uint32_t server : {kServer, kWithoutPort, kObjectPush, kUnknown}) ask(server);
    EXPECT_EQ(support::trace_scopes(), Lines(4, "512 VlCm_IsDynamicLocSppSvc"));
    EXPECT_TRUE(support::trace_lines().empty());
}
