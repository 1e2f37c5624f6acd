// Devices and services with connection shortcuts, and the selected service.
#include "localctl_test.h"

#include <limits.h>

using namespace localctl_test;

namespace {

using support::CallPatch;

constexpr unsigned kPhonePush = 101, kPhoneMessages = 104;

struct SelectedRow {
    const char* label;
    BOOL selected;
    const char* parameter;
};
constexpr SelectedRow kSelected[] = {
    {"no", FALSE, "0"},    {"yes", TRUE, "1"},         {"another yes", 2, "1"},
    {"negative", -1, "1"}, {"low byte 0", 0x100, "1"}, {"top bit", INT_MIN, "1"},
};

class DeviceShortcuts : public support::SuiteTest {};

}  // namespace

TEST_F(DeviceShortcuts, MakeADeviceAnAddedOne) {
    EXPECT_EQ(VlCm_IsAddedDevice(kPhone), TRUE);
    EXPECT_EQ(VlCm_IsAddedDevice(kNameless), FALSE);
    EXPECT_EQ(support::sdk_calls(), (Lines{"Btsdk_GetShortCutByDeviceHandle(1, 0, null, 0) = 3",
                                           "Btsdk_GetShortCutByDeviceHandle(10, 0, null, 0) = 0"}));
}

TEST_F(DeviceShortcuts, MakeAServiceAnInstalledOne) {
    EXPECT_EQ(VlCm_IsInstalledService(kPhone, kPhonePush), TRUE);
    EXPECT_EQ(VlCm_IsInstalledService(kPhone, kPhoneMessages), FALSE);
    EXPECT_EQ(support::sdk_calls(), (Lines{"Btsdk_GetShortCutByServiceHandle(1, 101, null, 0) = 1",
                                           "Btsdk_GetShortCutByServiceHandle(1, 104, null, 0) = 0"}));
}

TEST_F(DeviceShortcuts, AnyNumberOfThemIsTrue) {
    CallPatch of_device("Btsdk_GetShortCutByDeviceHandle", Btsdk_GetShortCutByDeviceHandle);
    CallPatch of_service("Btsdk_GetShortCutByServiceHandle", Btsdk_GetShortCutByServiceHandle);
    for (const uint32_t count : {0U, 1U, 2U, 0x100U, 0x10000U}) {
        of_device.answer([count](BtHandle, uint16_t, BtHandle*, uint32_t) { return count; });
        of_service.answer([count](BtHandle, BtHandle, BtHandle*, uint32_t) { return count; });
        EXPECT_EQ(VlCm_IsAddedDevice(kPhone), count != 0 ? TRUE : FALSE) << count;
        EXPECT_EQ(VlCm_IsInstalledService(kPhone, kPhonePush), count != 0 ? TRUE : FALSE) << count;
    }
}

TEST_F(DeviceShortcuts, OfHandle0AreAskedForLikeAnyOther) {
    EXPECT_EQ(VlCm_IsAddedDevice(0), FALSE);
    EXPECT_EQ(VlCm_IsInstalledService(0, 0), FALSE);
    EXPECT_EQ(support::sdk_operations(),
              (Lines{"Btsdk_GetShortCutByDeviceHandle", "Btsdk_GetShortCutByServiceHandle"}));
}

TEST_F(DeviceShortcuts, AskingOpensNoScope) {
    VlCm_IsAddedDevice(kPhone);
    VlCm_IsInstalledService(kPhone, kPhonePush);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(DeviceShortcuts, ASelectedServiceIsToldAs0Or1) {
    support::for_each_row(kSelected, [](const SelectedRow& row) {
        support::clear_sdk_log();
        EXPECT_EQ(VlCm_SetSelectedService(kPhonePush, row.selected), 0u);
        EXPECT_EQ(support::sdk_calls(),
                  Lines{"Btsdk_SetRemoteServiceParam(101, " + std::string(row.parameter) + ") = 0"});
    });
}

TEST_F(DeviceShortcuts, SelectingAServiceGives0WhateverTheStackSays) {
    VlSim_Fail("Btsdk_SetRemoteServiceParam", 0, 5);
    EXPECT_EQ(VlCm_SetSelectedService(kPhonePush, TRUE), 0u);
    EXPECT_EQ(VlCm_SetSelectedService(0, TRUE), 0u);
    EXPECT_EQ(support::sdk_operations(), Lines(2, "Btsdk_SetRemoteServiceParam"));
}

TEST_F(DeviceShortcuts, TheSelectionsScopeBeginsWithABlank) {
    VlCm_SetSelectedService(kPhonePush, TRUE);
    EXPECT_EQ(support::trace_log(), nested(" VlCm_SetSelectedService"));
}
