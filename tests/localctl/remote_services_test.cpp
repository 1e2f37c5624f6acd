// Whether a remote device offers a service.
#include "vlcm/localctl.h"

#include "support/call_patch.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <string.h>

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

// The default neighbourhood's phone: eight services, shortcuts to three of them.
constexpr unsigned kPhone = 1, kUnknownDevice = 99;
constexpr unsigned short kObjectPush = 0x1105, kMessageAccess = 0x1132, kHeadset = 0x1108, kFirst = 0x1105;

class SupportedService : public support::SuiteTest {
protected:
    static BOOL ask(unsigned device, unsigned short service_class) {
        support::clear_sdk_log();
        return VlCm_IsSupportService(device, service_class);
    }
    // No device has shortcuts: the services decide.
    static void without_shortcuts() { VlSim_Set("/shortcuts", "[]"); }
    static Lines walk(size_t items) {
        Lines calls = {"Btsdk_GetShortCutByDeviceHandle", "Btsdk_StartEnumRemoteService"};
        calls.insert(calls.end(), items, "Btsdk_EnumRemoteService");
        calls.emplace_back("Btsdk_EndEnumRemoteService");
        return calls;
    }
};

}  // namespace

TEST_F(SupportedService, OfDevice0IsNoneAndNothingIsAsked) {
    EXPECT_EQ(ask(0, kObjectPush), FALSE);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(SupportedService, IsOneWithAShortcutAndNothingIsEnumerated) {
    EXPECT_EQ(ask(kPhone, kObjectPush), TRUE);
    EXPECT_EQ(support::sdk_calls(), Lines{"Btsdk_GetShortCutByDeviceHandle(1, 4357, null, 0) = 1"});
}

TEST_F(SupportedService, IsOneOfTheDevicesServices) {
    EXPECT_EQ(ask(kPhone, kMessageAccess), TRUE);
    EXPECT_EQ(support::sdk_operations(), walk(4));  // the fourth one has the class
    without_shortcuts();
    EXPECT_EQ(ask(kPhone, kFirst), TRUE);
    EXPECT_EQ(support::sdk_operations(), walk(1));
}

TEST_F(SupportedService, IsNoneOfAnotherClass) {
    EXPECT_EQ(ask(kPhone, kHeadset), FALSE);
    EXPECT_EQ(support::sdk_operations(), walk(9));  // eight and the end
}

TEST_F(SupportedService, ADeviceThatCannotBeEnumeratedHasNone) {
    VlSim_Fail("Btsdk_StartEnumRemoteService", 0, 0);
    EXPECT_EQ(ask(kPhone, kMessageAccess), FALSE);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_GetShortCutByDeviceHandle", "Btsdk_StartEnumRemoteService"}));
    VlSim_ClearFaults();
    EXPECT_EQ(ask(kUnknownDevice, kMessageAccess), FALSE);
}

TEST_F(SupportedService, AWalkThatFailsIsEnded) {
    VlSim_Fail("Btsdk_EnumRemoteService", 3, 0);
    EXPECT_EQ(ask(kPhone, kMessageAccess), FALSE);
    EXPECT_EQ(support::sdk_operations(), walk(3));
}

TEST_F(SupportedService, EachRecordIsZeroedBeforeItsCall) {
    support::CallPatch enumerate("Btsdk_EnumRemoteService", Btsdk_EnumRemoteService);
    enumerate.answer([&](BtHandle, ServerAttributes* record) {
        const ServerAttributes zero{};
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0) << enumerate.count();
        memset(record, 0xAA, sizeof *record);
        return enumerate.count() < 5 ? 7U : 0U;
    });
    EXPECT_EQ(VlCm_IsSupportService(kPhone, kMessageAccess), FALSE);
    EXPECT_EQ(enumerate.count(), 5u);
}

TEST_F(SupportedService, ARecordOfTheEndCountsNoMore) {
    support::CallPatch enumerate("Btsdk_EnumRemoteService", Btsdk_EnumRemoteService);
    enumerate.answer([&](BtHandle, ServerAttributes* record) {
        record->serviceClass = kMessageAccess;
        return 0U;
    });
    EXPECT_EQ(VlCm_IsSupportService(kPhone, kMessageAccess), FALSE);
}

TEST_F(SupportedService, OpensNoScope) {
    VlCm_IsSupportService(kPhone, kMessageAccess);
    VlCm_IsSupportService(0, kMessageAccess);
    EXPECT_TRUE(support::trace_log().empty());
}
