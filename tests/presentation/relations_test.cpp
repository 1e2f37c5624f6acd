// Services of the same link's two directions, local services by class, incoming connections.
#include "vlcm/visibility.h"

#include "support/call_patch.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <string.h>

#include <map>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
using support::CallPatch;
using support::for_each_row;

class Relation : public support::SuiteTest {};

uint16_t other_side(const std::map<unsigned, uint16_t>& rows, unsigned service_class) {
    const auto found = rows.find(service_class);
    return found == rows.end() ? uint16_t{0} : found->second;
}

TEST_F(Relation, IsThreeRowsReadBothWays) {
    const std::map<unsigned, uint16_t> local_of = {{0x1108, 0x1112}, {0x111E, 0x111F}, {0x110B, 0x110A}};
    const std::map<unsigned, uint16_t> remote_of = {{0x1112, 0x1108}, {0x111F, 0x111E}, {0x110A, 0x110B}};
    for (unsigned value = 0; value <= 0xFFFF; ++value) {
        const auto service_class = static_cast<uint16_t>(value);
        const uint16_t local = other_side(local_of, value), remote = other_side(remote_of, value);
        ASSERT_EQ(VlCm_GetLocSvcClsByRelevantRmtSvcCls(service_class), local) << std::hex << value;
        ASSERT_EQ(VlCm_GetRmtSvcClsByRelevantLocSvcCls(service_class), remote) << std::hex << value;
        ASSERT_EQ(VlCm_ShouldRefreshThisRmtSvcByLocSvcConn(service_class), local != 0 ? 1 : 0);
        ASSERT_EQ(VlCm_ShouldRefreshRmtSvcByThisLocSvcConn(service_class), remote != 0 ? 1 : 0);
    }
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(support::trace_log().empty());
}

class LocalServer : public support::SuiteTest {
protected:
    static uint32_t find(uint16_t service_class) {
        support::clear_sdk_log();
        return VlCm_GetLocSvcHdlBySvcCls(service_class);
    }
    static Lines walk(size_t items) {
        Lines calls = {"Btsdk_StartEnumLocalServer"};
        calls.insert(calls.end(), items, "Btsdk_EnumLocalServer");
        calls.emplace_back("Btsdk_EndEnumLocalServer");
        return calls;
    }
};

TEST_F(LocalServer, IsTheFirstOfItsClass) {
    struct Row {
        const char* label;
        uint16_t service_class;
        uint32_t handle;
        size_t items;
    };
    const Row rows[] = {{"the first of two", 0x1101, 301, 1},
                        {"push", 0x1105, 303, 3},
                        {"the last", 0x1112, 308, 8},
                        {"none", 0x1118, 0, 9},
                        {"no class", 0, 0, 9}};
    for_each_row(rows, [](const Row& row) {
        EXPECT_EQ(find(row.service_class), row.handle);
        EXPECT_EQ(support::sdk_operations(), walk(row.items));
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(LocalServer, IsNoneWithoutAWalk) {
    VlSim_Set("/servers", "[]");
    EXPECT_EQ(find(0x1105), 0u);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_StartEnumLocalServer"});
}

TEST_F(LocalServer, IsNoneAfterAWalkThatBreaksOff) {
    VlSim_Fail("Btsdk_EnumLocalServer", 2, 0);
    EXPECT_EQ(find(0x1105), 0u);
    EXPECT_EQ(support::sdk_operations(), walk(2));
}

TEST_F(LocalServer, IsReadIntoAZeroedRecordEachTime) {
    CallPatch enumerate("Btsdk_EnumLocalServer", Btsdk_EnumLocalServer);
    enumerate.answer([&](BtHandle, ServerAttributes* record) {
        const ServerAttributes zero{};
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0);
        memset(record, 0xAA, sizeof *record);
        if (enumerate.count() == 4) record->serviceClass = 0x1105;
        return enumerate.count() < 4 ? 7U : 0U;
    });
    EXPECT_EQ(find(0x1105), 0u) << "what the end of the walk left does not count";
    EXPECT_EQ(enumerate.count(), 4u);
}

// The default neighbourhood's phone holds an incoming connection, and here the headset two more.
class IncomingConnection : public support::SuiteTest {
protected:
    static constexpr uint32_t kPhone = 1, kHeadset = 2, kUntouched = 0xCDCDCDCD;
    static constexpr uint16_t kTransfer = 0x1106, kGateway = 0x1112, kHandsFree = 0x111E;

    IncomingConnection() {
        VlSim_Set("/connections", R"([
            { "handle": 401, "device": 2, "service": 112, "class": "0x111E", "role": 1, "incoming": false },
            { "handle": 402, "device": 1, "class": "0x1106", "role": 2, "incoming": true },
            { "handle": 403, "device": 2, "class": "0x1112", "role": 2, "incoming": true },
            { "handle": 404, "device": 2, "class": "0x1112", "role": 2, "incoming": true }])");
        support::clear_sdk_log();
    }
    BOOL find(uint32_t device, uint16_t service_class) {
        support::clear_sdk_log();
        found_ = kUntouched;
        return VlCm_IsSpecialIncomingConnectionExist(device, service_class, &found_);
    }
    [[nodiscard]] uint32_t found() const { return found_; }
    static Lines reads(size_t properties) {
        Lines calls(2, "Btsdk_GetAllIncomingConnections");
        calls.insert(calls.end(), properties, "Btsdk_GetConnectionProperty");
        return calls;
    }

private:
    uint32_t found_ = 0;
};

TEST_F(IncomingConnection, OfDevice0IsNoneAndTheHandleIsLeft) {
    EXPECT_EQ(find(0, kTransfer), 0);
    EXPECT_EQ(found(), kUntouched);
    EXPECT_EQ(VlCm_IsSpecialIncomingConnectionExist(0, kTransfer, nullptr), 0);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(IncomingConnection, IsTheFirstOfDeviceAndClass) {
    struct Row {
        const char* label;
        uint32_t device;
        uint16_t service_class;
        uint32_t connection;
        size_t properties;
    };
    const Row rows[] = {{"the phone's", kPhone, kTransfer, 402, 1},
                        {"the first of two", kHeadset, kGateway, 403, 2},
                        {"another device's class", kHeadset, kTransfer, 0, 3},
                        {"another class", kPhone, kGateway, 0, 3},
                        {"outgoing", kHeadset, kHandsFree, 0, 3},
                        {"unknown device", 99, kTransfer, 0, 3}};
    for_each_row(rows, [this](const Row& row) {
        EXPECT_EQ(find(row.device, row.service_class), row.connection != 0 ? 1 : 0);
        EXPECT_EQ(found(), row.connection);
        EXPECT_EQ(support::sdk_operations(), reads(row.properties));
        EXPECT_EQ(VlCm_IsSpecialIncomingConnectionExist(row.device, row.service_class, nullptr),
                  row.connection != 0 ? 1 : 0);
    });
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(IncomingConnection, IsCountedThenFetchedIntoAZeroedArray) {
    CallPatch list("Btsdk_GetAllIncomingConnections", Btsdk_GetAllIncomingConnections);
    list.answer([&](BtHandle* connections, uint32_t count) {
        EXPECT_EQ(connections == nullptr, list.count() == 1);
        EXPECT_EQ(count, connections ? 3u : 0u);
        if (connections) {
            for (uint32_t i = 0; i < count; ++i) EXPECT_EQ(connections[i], 0u);
        }
        return list.real(connections, count);
    });
    EXPECT_EQ(find(kHeadset, kGateway), 1);
    EXPECT_EQ(list.count(), 2u);
}

TEST_F(IncomingConnection, IsNoneWithoutAPositiveCount) {
    CallPatch list("Btsdk_GetAllIncomingConnections", Btsdk_GetAllIncomingConnections);
    for (const int32_t count : {0, -1, static_cast<int32_t>(0x80000000)}) {
        list.answer([=](BtHandle*, uint32_t) { return count; });
        const size_t asked = list.count();
        EXPECT_EQ(find(kPhone, kTransfer), 0) << count;
        EXPECT_EQ(found(), 0u) << count;
        EXPECT_EQ(list.count(), asked + 1) << count;
    }
}

// The list changes between the two calls.
TEST_F(IncomingConnection, IsSoughtAmongWhatWasFetched) {
    struct Row {
        const char* label;
        int32_t counted, fetched;
        BOOL found;
    };
    const Row rows[] = {{"fewer", 3, 1, 0}, {"none", 3, 0, 0}, {"failed", 3, -1, 0}, {"more", 2, 9, 1}};
    CallPatch list("Btsdk_GetAllIncomingConnections", Btsdk_GetAllIncomingConnections);
    for_each_row(rows, [&](const Row& row) {
        list.answer([&](BtHandle* connections, uint32_t) {
            if (connections == nullptr) return row.counted;
            if (row.fetched > 0) connections[0] = 402;
            if (row.fetched > 1) connections[1] = 403;
            return row.fetched;
        });
        EXPECT_EQ(find(kHeadset, kGateway), row.found);
        EXPECT_EQ(found(), row.found ? 403u : 0u);
    });
}

TEST_F(IncomingConnection, PassesOverHandles0) {
    CallPatch list("Btsdk_GetAllIncomingConnections", Btsdk_GetAllIncomingConnections);
    list.answer([&](BtHandle* connections, uint32_t) {
        if (connections) connections[2] = 403;
        return 3;
    });
    EXPECT_EQ(find(kHeadset, kGateway), 1);
    EXPECT_EQ(found(), 403u);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetConnectionProperty"});
}

TEST_F(IncomingConnection, PassesOverWhatCannotBeRead) {
    VlSim_Fail("Btsdk_GetConnectionProperty", 2, 1);
    EXPECT_EQ(find(kHeadset, kGateway), 1);
    EXPECT_EQ(found(), 404u);
    VlSim_Fail("Btsdk_GetConnectionProperty", 0, 1);
    EXPECT_EQ(find(kHeadset, kGateway), 0);
    EXPECT_EQ(found(), 0u);
    EXPECT_EQ(support::sdk_operations(), reads(3));
}

TEST_F(IncomingConnection, IsReadIntoAZeroedRecordEachTime) {
    CallPatch property("Btsdk_GetConnectionProperty", Btsdk_GetConnectionProperty);
    property.answer([&](BtHandle, ConnectionProperty* record) {
        const ConnectionProperty zero{};
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0);
        memset(record, 0xAA, sizeof *record);
        record->device = kHeadset;
        record->serviceClass = property.count() == 1 ? kGateway : kTransfer;
        return property.count() == 1 ? 1U : 0U;  // what a failed read left does not count
    });
    EXPECT_EQ(find(kHeadset, kGateway), 0);
    EXPECT_EQ(property.count(), 3u);
}

TEST_F(IncomingConnection, IsNoneWithoutMemory) {
    const size_t before = blocks().allocations();
    EXPECT_EQ(find(kHeadset, kGateway), 1);
    const size_t needed = blocks().allocations() - before;
    EXPECT_EQ(needed, 1u) << "the array";
    for (size_t n = 1; n <= needed; ++n) {
        blocks().fail_nth(n);
        EXPECT_EQ(find(kHeadset, kGateway), 0);
        EXPECT_EQ(found(), 0u);
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetAllIncomingConnections"});
    }
    blocks().fail_nth(0);
}

}  // namespace
