#include "stack_test.h"
#include "support/guarded_buffer.h"

#include <cstring>

namespace vlsim_test {
namespace {

class Stack : public StackTest {};

uint64_t whole_register() {
    return reinterpret_cast<uint64_t (*)()>(reinterpret_cast<void*>(Btsdk_IsBluetoothReady))();
}

TEST_F(Stack, ReadinessIsOneByteWithRubbishAboveIt) {
    EXPECT_EQ(Btsdk_IsBluetoothReady(), 1);
    EXPECT_EQ(whole_register() & 0xFF, 1u);
    ASSERT_EQ(VlSim_Patch(R"({"ready": false})"), 0u);
    EXPECT_EQ(Btsdk_IsBluetoothReady(), 0);
    EXPECT_GT(whole_register(), 0xFFFFFFFFu);
    EXPECT_GT(whole_register() & 0xFFFFFF00u, 0u);
}

TEST_F(Stack, FeaturesAreToldAsTheScenarioSays) {
    EXPECT_EQ(Btsdk_IsMobileActive(), 1u);
    EXPECT_EQ(Btsdk_IsSupportADFunction(), 1u);
    ASSERT_EQ(VlSim_Patch(R"({"mobileActive": 256, "adFunction": 2})"), 0u);
    EXPECT_EQ(Btsdk_IsMobileActive(), 256u);
    EXPECT_EQ(Btsdk_IsSupportADFunction(), 2u);
}

TEST_F(Stack, AudioFlagIsWrittenInItsLowByteAlone) {
    uint32_t exists = 0xABCDEF00;  // not zeroed, to see what is written
    ASSERT_EQ(Btsdk_AGAP_IsAudioConnExisted(&exists), 0u);
    EXPECT_EQ(exists, 0xABCDEF01u);
    EXPECT_EQ(take_misuse().size(), 1u);
    ASSERT_EQ(VlSim_Patch(R"({"audioConnection": false})"), 0u);
    exists = 0;
    ASSERT_EQ(Btsdk_AGAP_IsAudioConnExisted(&exists), 0u);
    EXPECT_EQ(exists, 0u);
}

TEST_F(Stack, ConnectionIsRead) {
    ConnectionProperty record{};
    ASSERT_EQ(Btsdk_GetConnectionProperty(402, &record), 0u);
    EXPECT_EQ(record.roleAndFlags, 2u);
    EXPECT_EQ(record.device, 1u);
    EXPECT_EQ(record.service, 0u);
    EXPECT_EQ(record.serviceClass, 0x1106);
    record = {};
    const ConnectionProperty before = record;
    EXPECT_NE(Btsdk_GetConnectionProperty(9999, &record), 0u);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
}

TEST_F(Stack, IncomingConnectionsAreACountedList) {
    EXPECT_EQ(Btsdk_GetAllIncomingConnections(nullptr, 0), 1);
    const support::GuardedBuffer array(2 * sizeof(BtHandle));
    EXPECT_EQ(Btsdk_GetAllIncomingConnections(array.as<BtHandle>(), 0), 0);
    EXPECT_TRUE(array.untouched_from(0));
    EXPECT_EQ(Btsdk_GetAllIncomingConnections(array.as<BtHandle>(), 2), 1);
    EXPECT_EQ(*array.as<BtHandle>(), 402u);
    EXPECT_TRUE(array.untouched_from(sizeof(BtHandle)));
}

TEST_F(Stack, PortsHaveSerialNumbersAndCanBeClosedAndTakenOut) {
    EXPECT_EQ(Btsdk_CommNumToSerialNum(7), 71u);
    EXPECT_EQ(Btsdk_CommNumToSerialNum(200), 0u);
    EXPECT_EQ(Btsdk_DeinitCommObj(7), 0u);
    EXPECT_EQ(Btsdk_PlugOutVComm(71, 16), 0u);
    EXPECT_EQ(state_value("/ports/2"), R"({"open":false,"plugged":false,"port":7,"serial":71})");
    EXPECT_NE(Btsdk_DeinitCommObj(200), 0u);
    EXPECT_NE(Btsdk_PlugOutVComm(7777, 16), 0u);
}

}  // namespace
}  // namespace vlsim_test
