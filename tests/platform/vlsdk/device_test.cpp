#include "stack_test.h"
#include "support/guarded_buffer.h"

#include <cstring>

namespace vlsim_test {
namespace {

class Device : public StackTest {};

constexpr BtHandle kPhone = 1, kHeadset = 2, kPrinter = 3, kHallway = 6, kBelt = 8, kNameless = 10;
constexpr BtHandle kNone = 9999;
constexpr uint8_t kPhoneAddress[6] = {0x01, 0x5E, 0x2D, 0x38, 0xC1, 0xA4};

TEST_F(Device, AddressIsLeastSignificantByteFirst) {
    uint8_t address[6] = {};
    ASSERT_EQ(Btsdk_GetRemoteDeviceAddress(kPhone, address), 0u);
    EXPECT_EQ(std::memcmp(address, kPhoneAddress, 6), 0);
    EXPECT_EQ(Btsdk_GetRemoteDeviceHandle(kPhoneAddress), kPhone);
    constexpr uint8_t kUnknown[6] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(Btsdk_GetRemoteDeviceHandle(kUnknown), 0u);
}

TEST_F(Device, ClassTypeAndParameterAreToldAsTheScenarioSays) {
    uint32_t value = 0;
    ASSERT_EQ(Btsdk_GetRemoteDeviceClass(kPrinter, &value), 0u);
    EXPECT_EQ(value, 0x040680u);
    ASSERT_EQ(Btsdk_GetRemoteDeviceParam(kHeadset, &value), 0u);
    EXPECT_EQ(value, 0x80000000u);
    EXPECT_EQ(Btsdk_GetRemoteDeviceType(kBelt), 1u);
    EXPECT_EQ(Btsdk_GetRemoteDeviceType(kPhone), 0u);
    EXPECT_EQ(Btsdk_GetRemoteDeviceType(kNone), 0u);
}

TEST_F(Device, PropertyHoldsAddressNameAndClass) {
    RemoteDeviceProperty record{};
    ASSERT_EQ(Btsdk_GetRemoteDeviceProperty(kPrinter, &record), 0u);
    EXPECT_EQ(record.address[0], 0x03);
    EXPECT_EQ(record.address[5], 0x00);
    EXPECT_STREQ(record.name, "プリンター 3階");
    EXPECT_EQ(record.deviceClass, 0x040680u);
}

TEST_F(Device, NameInARecordIsCutToItsFieldAndTerminated) {
    const std::string longest(100, 'n');
    ASSERT_EQ(VlSim_Set("/devices/0/name", ('"' + longest + '"').c_str()), 0u);
    RemoteDeviceProperty record{};
    ASSERT_EQ(Btsdk_GetRemoteDeviceProperty(kPhone, &record), 0u);
    EXPECT_EQ(std::string(record.name), longest.substr(0, 65));
    EXPECT_EQ(record.deviceClass, 0x5A020Cu);
}

TEST_F(Device, NameIsCutToItsRoomAndTerminated) {
    const std::string name = "Keyboard K380";
    for (const uint32_t room : {0u, 1u, 13u, 14u, 100u}) {
        SCOPED_TRACE(room);
        const support::GuardedBuffer buffer(room);
        uint32_t length = room;
        ASSERT_EQ(Btsdk_GetRemoteDeviceName(4, buffer.as<char>(), &length), 0u);
        const size_t written = std::min<size_t>(room, name.size() + 1);
        EXPECT_EQ(length, written);
        EXPECT_TRUE(buffer.untouched_from(written));
        if (room > 0) {
            EXPECT_EQ(std::string(buffer.as<char>()), name.substr(0, written - 1));
        }
    }
}

TEST_F(Device, NameLengthIsWrittenInItsLowHalfAlone) {
    char name[100];
    uint32_t length = 0x77770064;
    ASSERT_EQ(Btsdk_GetRemoteDeviceName(4, name, &length), 0u);
    EXPECT_EQ(length, 0x7777000Eu);
    ASSERT_EQ(Btsdk_GetRemoteDeviceName(kNameless, name, &length), 0u);
    EXPECT_STREQ(name, "");
}

// The exported function as a caller sees it that reads the whole register.
uint64_t whole_register(BtHandle device) {
    return reinterpret_cast<uint64_t (*)(BtHandle)>(reinterpret_cast<void*>(Btsdk_IsDeviceConnected))(device);
}

TEST_F(Device, ConnectedIsOneByteWithRubbishAboveIt) {
    EXPECT_EQ(Btsdk_IsDeviceConnected(kHeadset), 1);
    EXPECT_EQ(Btsdk_IsDeviceConnected(kPrinter), 0);
    EXPECT_EQ(Btsdk_IsDeviceConnected(kNone), 0);
    EXPECT_EQ(whole_register(kHeadset) & 0xFF, 1u);
    EXPECT_GT(whole_register(kPrinter), 0xFFFFFFFFu);
    EXPECT_GT(whole_register(kPrinter) & 0xFFFFFF00u, 0u);
}

TEST_F(Device, ConnectedFollowsTheConnections) {
    ASSERT_EQ(VlSim_Set("/connections", R"([{"device": 3, "service": 121}])"), 0u);
    EXPECT_EQ(Btsdk_IsDeviceConnected(kPrinter), 1);
    EXPECT_EQ(Btsdk_IsDeviceConnected(kHeadset), 0);
    ASSERT_EQ(VlSim_Set("/devices/1/connected", "true"), 0u);
    EXPECT_EQ(Btsdk_IsDeviceConnected(kHeadset), 1);
}

TEST_F(Device, PairedFlagIsWrittenInItsLowByteAlone) {
    uint32_t paired = 0xABCDEF00;  // not zeroed, to see what is written
    ASSERT_EQ(Btsdk_IsDevicePaired(kPhone, &paired), 0u);
    EXPECT_EQ(paired, 0xABCDEF01u);
    EXPECT_EQ(take_misuse().size(), 1u);
    paired = 0;
    ASSERT_EQ(Btsdk_IsDevicePaired(kHallway, &paired), 0u);
    EXPECT_EQ(paired, 0u);
}

TEST_F(Device, UnknownDeviceFailsAndWritesNothing) {
    uint8_t address[6] = {9, 9, 9, 9, 9, 9};
    uint32_t value = 0;
    char name[10] = "unchanged";
    uint32_t length = sizeof name;
    RemoteDeviceProperty record{};
    const RemoteDeviceProperty before = record;
    EXPECT_NE(Btsdk_GetRemoteDeviceAddress(kNone, address), 0u);
    EXPECT_NE(Btsdk_GetRemoteDeviceClass(kNone, &value), 0u);
    EXPECT_NE(Btsdk_GetRemoteDeviceParam(kNone, &value), 0u);
    EXPECT_NE(Btsdk_IsDevicePaired(kNone, &value), 0u);
    EXPECT_NE(Btsdk_GetRemoteDeviceName(kNone, name, &length), 0u);
    EXPECT_NE(Btsdk_GetRemoteDeviceProperty(kNone, &record), 0u);
    EXPECT_EQ(address[0] + address[5], 18);
    EXPECT_EQ(value, 0u);
    EXPECT_STREQ(name, "unchanged");
    EXPECT_EQ(length, sizeof name);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
}

TEST_F(Device, LocalClassIsStored) {
    uint32_t value = 0;
    ASSERT_EQ(Btsdk_GetLocalDeviceClass(&value), 0u);
    EXPECT_EQ(value, 0x020104u);
    ASSERT_EQ(Btsdk_SetLocalDeviceClass(0x12010C), 0u);
    ASSERT_EQ(Btsdk_GetLocalDeviceClass(&value), 0u);
    EXPECT_EQ(value, 0x12010Cu);
    EXPECT_EQ(state_value("/local/class"), "\"0x12010C\"");
}

}  // namespace
}  // namespace vlsim_test
