// Records that cross the boundary: what the stack writes stands at the stated offsets, and the fields
// of the declared records are these bytes.
#include "support/suite_test.h"

#include "VlSDK.h"
#include "vlcm/mobile.h"

#include <string.h>

#include <string>

namespace {

class StackRecord : public support::SuiteTest {};

template <typename T>
T at(const void* record, size_t offset) {
    T value;
    memcpy(&value, static_cast<const char*>(record) + offset, sizeof value);
    return value;
}
const char* text_at(const void* record, size_t offset) { return static_cast<const char*>(record) + offset; }

// Devices of the default neighbourhood.
constexpr BtHandle kHeadset = 2;
constexpr uint8_t kHeadsetAddress[6] = {0x02, 0x21, 0x8B, 0x70, 0xF3, 0x5C};
constexpr uint32_t kHeadsetClass = 0x240404;
constexpr BtHandle kHandsFree = 112, kHandsFreeShortcut = 204, kHandsFreeConnection = 401;
constexpr uint16_t kHandsFreeClass = 0x111E;

}  // namespace

TEST_F(StackRecord, ShortcutFieldsStandAtTheirOffsets) {
    ShortcutProperty record{};
    record.shortcut = kHandsFreeShortcut;
    record.mask = kShortcutMaskDefault | kShortcutMaskShellItem;
    ASSERT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
    EXPECT_EQ(at<uint32_t>(&record, 0), kHandsFreeShortcut);
    EXPECT_EQ(at<uint32_t>(&record, 4), kHandsFreeConnection);
    EXPECT_EQ(at<uint32_t>(&record, 8), kHeadset);
    EXPECT_EQ(at<uint32_t>(&record, 12), kHandsFree);
    EXPECT_EQ(at<uint8_t>(&record, 16), 1);
    EXPECT_EQ(memcmp(text_at(&record, 18), kHeadsetAddress, 6), 0);
    EXPECT_EQ(at<uint16_t>(&record, 24), kHandsFreeClass);
    EXPECT_EQ(at<uint16_t>(&record, 26), 16 | 4);
    EXPECT_STREQ(text_at(&record, 28), "5C:F3:70:8B:21:02 111e Hands-Free");
    EXPECT_STREQ(text_at(&record, 192), "Hands-Free");
    EXPECT_EQ(at<uint32_t>(&record, 272), kHeadsetClass);
    EXPECT_EQ(at<uint8_t>(&record, 276), 1);
}

TEST_F(StackRecord, ShortcutParameterStandsInTheCallersBlock) {
    constexpr BtHandle kSerialShortcut = 203;  // its port is 7
    unsigned char block[16] = {};
    ShortcutProperty record{};
    record.shortcut = kSerialShortcut;
    record.mask = kShortcutMaskParameter;
    const uint16_t room = sizeof block;
    void* const address = block;
    memcpy(reinterpret_cast<char*>(&record) + 278, &room, sizeof room);
    memcpy(reinterpret_cast<char*>(&record) + 280, &address, sizeof address);
    ASSERT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
    EXPECT_EQ(record.parameter, block);
    EXPECT_GT(at<uint16_t>(&record, 278), 0);
    EXPECT_NE(memchr(block, 7, sizeof block), nullptr);
}

TEST_F(StackRecord, ConnectionFieldsStandAtTheirOffsets) {
    ConnectionProperty record{};
    ASSERT_EQ(Btsdk_GetConnectionProperty(kHandsFreeConnection, &record), 0u);
    EXPECT_EQ(at<uint32_t>(&record, 0) & 3, 1u);
    EXPECT_EQ(at<uint32_t>(&record, 4), kHeadset);
    EXPECT_EQ(at<uint32_t>(&record, 8), kHandsFree);
    EXPECT_EQ(at<uint16_t>(&record, 12), kHandsFreeClass);
}

TEST_F(StackRecord, ServerFieldsStandAtTheirOffsets) {
    constexpr BtHandle kSerialServer = 301;  // its port is 5
    ServerAttributes record{};
    record.mask = kServerMaskName | kServerMaskExtension;
    ASSERT_EQ(Btsdk_GetServerAttributes(kSerialServer, &record), 0u);
    EXPECT_EQ(at<uint16_t>(&record, 2), 0x1101);
    EXPECT_STREQ(text_at(&record, 8), "Serial Port A");
    const auto block = at<const uint8_t*>(&record, 88);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block[6], 5);
    Btsdk_FreeMemory(record.extension);
}

TEST_F(StackRecord, EnumeratedServicesHaveTheSameLayout) {
    const BtHandle walk = Btsdk_StartEnumRemoteService(kHeadset);
    ServerAttributes record{};
    EXPECT_EQ(Btsdk_EnumRemoteService(walk, &record), 111u);
    EXPECT_EQ(at<uint16_t>(&record, 2), 0x1108);
    Btsdk_EndEnumRemoteService(walk);
}

TEST_F(StackRecord, DeviceFieldsStandAtTheirOffsets) {
    RemoteDeviceProperty record{};
    ASSERT_EQ(Btsdk_GetRemoteDeviceProperty(kHeadset, &record), 0u);
    EXPECT_EQ(memcmp(text_at(&record, 8), kHeadsetAddress, 6), 0);
    EXPECT_STREQ(text_at(&record, 14),
                 "B\xC3\xBCro Headset Gr\xC3\xB6\xC3\x9F"
                 "e L");
    EXPECT_EQ(at<uint32_t>(&record, 80), kHeadsetClass);
}

TEST_F(StackRecord, TheDeclaredSizesAreThoseOfTheStack) {
    EXPECT_EQ(sizeof(ShortcutProperty), 288u);
    EXPECT_EQ(sizeof(ConnectionProperty), 28u);
    EXPECT_EQ(sizeof(ServerAttributes), 104u);
    EXPECT_EQ(sizeof(RemoteDeviceProperty), 116u);
    EXPECT_EQ(sizeof(VlSmsRecord), 14092u);
}
