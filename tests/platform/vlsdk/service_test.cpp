#include "stack_test.h"

#include <cstring>

namespace vlsim_test {
namespace {

class Service : public StackTest {};

constexpr BtHandle kSerialServer = 301, kPushServer = 303, kTransferServer = 304;
constexpr BtHandle kPhonePush = 101;
constexpr BtHandle kNone = 9999;

ServerAttributes query(uint16_t mask) {
    ServerAttributes record{};
    record.mask = mask;
    return record;
}

TEST_F(Service, AttributesAreFilledAsTheMaskAsks) {
    struct Row {
        uint32_t (*ask)(BtHandle, ServerAttributes*);
        BtHandle handle;
        uint16_t service_class;
        const char* name;
    };
    const Row kRows[] = {{Btsdk_GetServerAttributes, kSerialServer, 0x1101, "Serial Port A"},
                         {Btsdk_GetRemoteServiceAttributes, kPhonePush, 0x1105, "OBEX Object Push"}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        ServerAttributes record = query(kServerMaskPlain);
        ASSERT_EQ(row.ask(row.handle, &record), 0u);
        EXPECT_EQ(record.serviceClass, row.service_class);
        EXPECT_STREQ(record.name, "");
        EXPECT_EQ(record.extension, nullptr);
        record = query(kServerMaskName);
        ASSERT_EQ(row.ask(row.handle, &record), 0u);
        EXPECT_STREQ(record.name, row.name);
        EXPECT_EQ(record.extension, nullptr);
    }
}

TEST_F(Service, ExtensionIsABlockOfTheStacksAllocator) {
    ServerAttributes record = query(kServerMaskExtension);
    ASSERT_EQ(Btsdk_GetServerAttributes(kSerialServer, &record), 0u);
    ASSERT_NE(record.extension, nullptr);
    EXPECT_EQ(static_cast<const uint8_t*>(record.extension)[6], 5);
    EXPECT_STREQ(record.name, "");
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 1u);
    Btsdk_FreeMemory(record.extension);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 0u);
}

TEST_F(Service, ExtensionIsWhole) {
    VlSim_Set("/servers", R"([{"handle": 1, "class": "0x1101", "extension": "01 02 03 04 05 06 07 08"}])");
    ServerAttributes record = query(kServerMaskExtension);
    ASSERT_EQ(Btsdk_GetServerAttributes(1, &record), 0u);
    const uint8_t expected[] = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(memcmp(record.extension, expected, sizeof expected), 0);
    Btsdk_FreeMemory(record.extension);
}

TEST_F(Service, WithoutExtendedAttributesThereIsNoBlock) {
    ServerAttributes record = query(kServerMaskExtension);
    ASSERT_EQ(Btsdk_GetServerAttributes(kPushServer, &record), 0u);
    EXPECT_EQ(record.extension, nullptr);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 0u);
}

TEST_F(Service, UnknownHandleFailsAndWritesNothing) {
    for (auto* ask : {Btsdk_GetServerAttributes, Btsdk_GetRemoteServiceAttributes}) {
        ServerAttributes record = query(9);
        const ServerAttributes before = record;
        EXPECT_NE(ask(kNone, &record), 0u);
        EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
    }
    uint32_t status = 77;
    EXPECT_NE(Btsdk_GetServerStatus(kNone, &status), 0u);
    EXPECT_EQ(status, 77u);
    EXPECT_NE(Btsdk_StartServer(kNone), 0u);
    EXPECT_NE(Btsdk_StopServer(kNone), 0u);
    EXPECT_NE(Btsdk_SetRemoteServiceParam(kNone, 1), 0u);
}

TEST_F(Service, StatusFollowsStartAndStop) {
    uint32_t status = 0;
    ASSERT_EQ(Btsdk_GetServerStatus(kTransferServer, &status), 0u);
    EXPECT_EQ(status, 3u);
    ASSERT_EQ(Btsdk_StopServer(kTransferServer), 0u);
    ASSERT_EQ(Btsdk_GetServerStatus(kTransferServer, &status), 0u);
    EXPECT_EQ(status, 2u);
    ASSERT_EQ(Btsdk_StartServer(kTransferServer), 0u);
    ASSERT_EQ(Btsdk_GetServerStatus(kTransferServer, &status), 0u);
    EXPECT_EQ(status, 1u);
}

TEST_F(Service, ParameterIsStoredWithTheService) {
    ASSERT_EQ(Btsdk_SetRemoteServiceParam(kPhonePush, 1), 0u);
    EXPECT_EQ(state_value("/devices/0/services/0/parameter"), "1");
}

}  // namespace
}  // namespace vlsim_test
