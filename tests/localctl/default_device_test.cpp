// The default device of a service class.
#include "localctl_test.h"

#include <string.h>

using namespace localctl_test;

namespace {

constexpr unsigned short kHandsFree = 0x111E, kHeadsetClass = 0x1108, kObjectPush = 0x1105;
constexpr BtHandle kShortcut = 204, kOtherShortcut = 205;
constexpr uint8_t kHeadsetAddress[6] = {0x02, 0x21, 0x8B, 0x70, 0xF3, 0x5C};  // byte 0 first

using Classes = std::vector<unsigned short>;

struct ShortcutRow {
    const char* label;
    unsigned short service_class;
    BtHandle read;  // 0: no record
    std::map<unsigned short, BtHandle> defaults;
    Classes asked;
};
const ShortcutRow kShortcuts[] = {
    {"another class", kObjectPush, 201, {{kObjectPush, 201}}, {kObjectPush}},
    {"another class without one", kObjectPush, 0, {{kHandsFree, 204}, {kHeadsetClass, 205}}, {kObjectPush}},
    {"hands-free", kHandsFree, 204, {{kHandsFree, 204}, {kHeadsetClass, 205}}, {kHandsFree}},
    {"headset", kHeadsetClass, 205, {{kHandsFree, 204}, {kHeadsetClass, 205}}, {kHeadsetClass}},
    {"headset for hands-free", kHandsFree, 205, {{kHeadsetClass, 205}}, {kHandsFree, kHeadsetClass}},
    {"hands-free for headset", kHeadsetClass, 204, {{kHandsFree, 204}}, {kHeadsetClass, kHandsFree}},
    {"neither for hands-free", kHandsFree, 0, {}, {kHandsFree, kHeadsetClass}},
    {"neither for headset", kHeadsetClass, 0, {}, {kHeadsetClass, kHandsFree}},
    {"class 0", 0, 0, {{kHandsFree, 204}}, {0}},
};

struct RecordRow {
    const char* label;
    uint8_t device_valid;
    BtHandle device;
    bool looked_up;
    BtHandle found;
};
constexpr RecordRow kRecords[] = {
    {"valid: the record's device", 1, 77, false, 77},
    {"valid: also when it is none", 1, 0, false, 0},
    {"not valid: that of the address", 0, 77, true, kHeadset},
    {"2 is not valid", 2, 77, true, kHeadset},
    {"255 is not valid", 255, 77, true, kHeadset},
};

class DefaultDevice : public LocalControlTest {
protected:
    support::CallPatch<uint32_t(ShortcutProperty*)> read{"Btsdk_GetShortCutProperty",
                                                         Btsdk_GetShortCutProperty};
};

}  // namespace

TEST_F(DefaultDevice, IsThatOfTheDefaultShortcut) {
    EXPECT_EQ(VlCm_GetDefaultDevByServiceClass(kHandsFree), kHeadset);
    EXPECT_EQ(VlCm_GetDefaultDevByServiceClass(kObjectPush), kPhone);
    EXPECT_EQ(VlCm_GetDefaultDevByServiceClass(0x110B), kSpeaker);
}

TEST_F(DefaultDevice, HandsFreeAndHeadsetStandInForEachOther) {
    support::CallPatch defaults("Btsdk_GetDefaultShortCut", Btsdk_GetDefaultShortCut);
    Classes asked;
    BtHandle asked_record = 0;
    read.answer([&](ShortcutProperty* record) { return asked_record = record->shortcut, 1U; });
    support::for_each_row(kShortcuts, [&](const ShortcutRow& row) {
        asked.clear();
        asked_record = 0;
        defaults.answer([&](uint16_t service_class) {
            asked.push_back(service_class);
            const auto found = row.defaults.find(service_class);
            return found == row.defaults.end() ? 0U : found->second;
        });
        VlCm_GetDefaultDevByServiceClass(row.service_class);
        EXPECT_EQ(asked, row.asked);
        EXPECT_EQ(asked_record, row.read);
    });
}

TEST_F(DefaultDevice, IsTheRecordsOrThatOfItsAddress) {
    support::CallPatch look_up("Btsdk_GetRemoteDeviceHandle", Btsdk_GetRemoteDeviceHandle);
    look_up.answer([](const uint8_t* address) {
        EXPECT_EQ(memcmp(address, kHeadsetAddress, 6), 0);
        return BtHandle{kHeadset};
    });
    support::for_each_row(kRecords, [&](const RecordRow& row) {
        const size_t before = look_up.count();
        read.answer([&](ShortcutProperty* record) {
            record->deviceValid = row.device_valid;
            record->device = row.device;
            memcpy(record->address, kHeadsetAddress, 6);
            return 0U;
        });
        EXPECT_EQ(VlCm_GetDefaultDevByServiceClass(kHandsFree), row.found);
        EXPECT_EQ(look_up.count() - before, row.looked_up ? 1u : 0u);
    });
}

TEST_F(DefaultDevice, WithAnUnknownAddressIsNone) {
    read.answer([](ShortcutProperty*) { return 0U; });
    EXPECT_EQ(VlCm_GetDefaultDevByServiceClass(kHandsFree), 0u);
}

TEST_F(DefaultDevice, TheRecordIsZeroedButForTheShortcut) {
    read.answer([](ShortcutProperty* record) {
        ShortcutProperty expected{};
        expected.shortcut = kShortcut;
        EXPECT_EQ(memcmp(record, &expected, sizeof expected), 0);
        return 1U;
    });
    VlCm_GetDefaultDevByServiceClass(kHandsFree);
    EXPECT_EQ(read.count(), 1u);
}

TEST_F(DefaultDevice, OfARecordThatCannotBeReadIsNone) {
    read.answer([](ShortcutProperty* record) {
        record->deviceValid = 1;
        record->device = kHeadset;
        return 1U;
    });
    EXPECT_EQ(VlCm_GetDefaultDevByServiceClass(kHandsFree), 0u);
    read.answer([](ShortcutProperty* record) {
        memcpy(record->address, kHeadsetAddress, 6);
        return 0x80000000U;
    });
    EXPECT_EQ(VlCm_GetDefaultDevByServiceClass(kHandsFree), 0u);
    EXPECT_EQ(support::sdk_operations(), Lines(2, "Btsdk_GetDefaultShortCut")) << "nor is its address sought";
}

TEST_F(DefaultDevice, OpensItsScope) {
    VlCm_GetDefaultDevByServiceClass(kHandsFree);
    EXPECT_EQ(support::trace_log(), nested("VlCm_GetDefaultDevByServiceClass"));
    support::clear_trace_log();
    VlCm_GetDefaultDevByServiceClass(kHeadsetClass + 1);
    EXPECT_EQ(support::trace_log(), nested("VlCm_GetDefaultDevByServiceClass"));
}

TEST_F(DefaultDevice, IsAskedForHandsFree) {
    EXPECT_EQ(VlCm_IsDefaultDevice(kHeadset), TRUE);
    EXPECT_EQ(VlCm_IsDefaultDevice(kPhone), FALSE) << "default for another class";
    EXPECT_EQ(support::trace_log(),
              nested("VlCm_GetDefaultDevByServiceClass") + nested("VlCm_GetDefaultDevByServiceClass"));
    EXPECT_EQ(support::sdk_calls("Btsdk_GetDefaultShortCut"),
              Lines(2, "Btsdk_GetDefaultShortCut(4382) = 204"));
}

TEST_F(DefaultDevice, OfTheHeadsetCountsWithoutOneForHandsFree) {
    support::CallPatch defaults("Btsdk_GetDefaultShortCut", Btsdk_GetDefaultShortCut);
    defaults.answer([](uint16_t asked) { return asked == kHeadsetClass ? kOtherShortcut : 0U; });
    EXPECT_EQ(VlCm_IsDefaultDevice(kHeadset), TRUE);
    EXPECT_EQ(VlCm_IsDefaultDevice(kPhone), FALSE);
}

TEST_F(DefaultDevice, IsNeverDevice0AndNothingIsAsked) {
    VlSim_Set("/shortcuts", "[]");
    support::clear_sdk_log();
    EXPECT_EQ(VlCm_IsDefaultDevice(0), FALSE);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(support::trace_log().empty());
    EXPECT_EQ(VlCm_IsDefaultDevice(kHeadset), FALSE);
}
