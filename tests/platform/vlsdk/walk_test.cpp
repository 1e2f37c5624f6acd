#include "stack_test.h"

#include <cstring>

namespace vlsim_test {
namespace {

class Walk : public StackTest {};

constexpr BtHandle kPhone = 1, kBelt = 8, kNameless = 10;

TEST_F(Walk, DevicesComeWithTheirProperties) {
    const auto devices = walk_devices();
    ASSERT_EQ(devices.size(), 10u);
    EXPECT_EQ(devices[0].handle, kPhone);
    EXPECT_EQ(devices[0].name, "Lena's phone");
    EXPECT_EQ(devices[6].name, "照相机");
}

TEST_F(Walk, ServicesOfOneDeviceComeWithTheirClassAlone) {
    const auto services = walk_services(kBelt);
    ASSERT_EQ(services.size(), 2u);
    EXPECT_EQ(services[0].handle, 171u);
    EXPECT_EQ(services[0].service_class, 0x180D);
    EXPECT_EQ(services[0].name, "");
    EXPECT_EQ(services[1].service_class, 0x180F);
}

TEST_F(Walk, ServersAndConnectionsComeInTheirOrder) {
    const auto servers = walk_servers();
    ASSERT_EQ(servers.size(), 8u);
    EXPECT_EQ(servers[3].handle, 304u);
    EXPECT_EQ(servers[3].service_class, 0x1106);
    const auto connections = walk_connections();
    ASSERT_EQ(connections.size(), 2u);
    EXPECT_EQ(connections[0].handle, 401u);
    EXPECT_EQ(connections[1].service_class, 0x1106);
}

TEST_F(Walk, NothingToWalkStartsNothing) {
    EXPECT_EQ(Btsdk_StartEnumRemoteService(kNameless), 0u);
    EXPECT_EQ(Btsdk_StartEnumRemoteService(9999), 0u);
    ASSERT_EQ(VlSim_LoadScenario("{}"), 0u);
    EXPECT_EQ(Btsdk_StartEnumRemoteDevice(0, 0), 0u);
    EXPECT_EQ(Btsdk_StartEnumLocalServer(), 0u);
    EXPECT_EQ(Btsdk_StartEnumConnection(), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_ENUMERATIONS), 0u);
}

TEST_F(Walk, MayBeNestedAndInterleavedAlsoOfOneKindAndDevice) {
    const BtHandle first = Btsdk_StartEnumRemoteService(kPhone);
    const BtHandle second = Btsdk_StartEnumRemoteService(kPhone);
    ASSERT_NE(first, second);
    ServerAttributes record{};
    EXPECT_EQ(Btsdk_EnumRemoteService(first, &record), 101u);
    record = {};
    EXPECT_EQ(Btsdk_EnumRemoteService(second, &record), 101u);
    record = {};
    EXPECT_EQ(Btsdk_EnumRemoteService(first, &record), 102u);
    EXPECT_EQ(walk_devices().size(), 10u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_ENUMERATIONS), 2u);
    EXPECT_EQ(Btsdk_EndEnumRemoteService(first), 0u);
    record = {};
    EXPECT_EQ(Btsdk_EnumRemoteService(second, &record), 102u);
    EXPECT_EQ(Btsdk_EndEnumRemoteService(second), 0u);
}

TEST_F(Walk, EndWritesNothingAndStays) {
    const BtHandle walk = Btsdk_StartEnumRemoteService(kBelt);
    ServerAttributes record{};
    EXPECT_NE(Btsdk_EnumRemoteService(walk, &record), 0u);
    record = {};
    EXPECT_NE(Btsdk_EnumRemoteService(walk, &record), 0u);
    const ServerAttributes zero{};
    for (int again = 0; again < 2; ++again) {
        record = {};
        EXPECT_EQ(Btsdk_EnumRemoteService(walk, &record), 0u);
        EXPECT_EQ(std::memcmp(&record, &zero, sizeof record), 0);
    }
    EXPECT_EQ(Btsdk_EndEnumRemoteService(walk), 0u);
}

TEST_F(Walk, PassesOverWhatIsGoneMeanwhile) {
    const BtHandle walk = Btsdk_StartEnumRemoteDevice(0, 0);
    RemoteDeviceProperty record{};
    EXPECT_EQ(Btsdk_EnumRemoteDevice(walk, &record), 1u);
    ASSERT_EQ(VlSim_Set("/devices", R"([{"handle": 3, "address": "00:00:00:00:00:03"}])"), 0u);
    record = {};
    EXPECT_EQ(Btsdk_EnumRemoteDevice(walk, &record), 3u);
    record = {};
    EXPECT_EQ(Btsdk_EnumRemoteDevice(walk, &record), 0u);
    EXPECT_EQ(Btsdk_EndEnumRemoteDevice(walk), 0u);
}

}  // namespace
}  // namespace vlsim_test
