// Questions to the list of live connections.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <string.h>

#include <utility>

using namespace shortcuts_test;

namespace {

constexpr uint16_t kHandsFree = 0x111E;

class Connections : public support::SuiteTest {
protected:
    void SetUp() override {
        VlSim_Set("/connections", R"([
            {"handle": 401, "device": 2, "class": "0x1108", "role": 2},
            {"handle": 402, "device": 1, "class": "0x111E", "role": 1},
            {"handle": 403, "device": 2, "class": "0x111E", "role": 2},
            {"handle": 404, "device": 2, "class": "0x1106", "role": 0}])");
        support::clear_sdk_log();
    }
    static Lines walk(size_t steps) {
        Lines calls{"Btsdk_StartEnumConnection"};
        calls.insert(calls.end(), steps, "Btsdk_EnumConnection");
        calls.emplace_back("Btsdk_EndEnumConnection");
        return calls;
    }
};

}  // namespace

TEST_F(Connections, OneOfTheClassAndARoleEndsTheWalk) {
    EXPECT_EQ(VlCm_ExistSameSvcClsConnection(kHandsFree, 1), TRUE);
    EXPECT_EQ(support::sdk_operations(), walk(2));
    support::clear_sdk_log();
    EXPECT_EQ(VlCm_ExistSameSvcClsConnection(kHandsFree, 2), TRUE);
    EXPECT_EQ(support::sdk_operations(), walk(3));
    support::clear_sdk_log();
    EXPECT_EQ(VlCm_ExistSameSvcClsConnection(0x1108, 3), TRUE);
    EXPECT_EQ(support::sdk_operations(), walk(1));
}

TEST_F(Connections, WithoutOneTheWalkRunsToItsEnd) {
    const struct {
        const char* label;
        uint16_t service_class;
        uint32_t mask;
    } rows[] = {
        {"other role", 0x1108, 1},          {"other class", 0x1109, 3},
        {"class differs above", 0x011E, 3}, {"no role", 0x1106, 0xFFFFFFFF},
        {"nothing wanted", kHandsFree, 0},  {"wanted beyond the role", kHandsFree, 0xFFFFFFFC},
    };
    support::for_each_row(rows, [](const auto& row) {
        support::clear_sdk_log();
        EXPECT_EQ(VlCm_ExistSameSvcClsConnection(row.service_class, row.mask), FALSE);
        EXPECT_EQ(support::sdk_operations(), walk(5));
    });
    EXPECT_TRUE(support::trace_lines().empty());
}

// Every pairing of the low bits, said by arithmetic; bits above them never count.
TEST_F(Connections, RolesAreTheTwoLowBits) {
    uint32_t role = 0;
    bool given = false;  // one connection each time
    support::CallPatch enumerate("Btsdk_EnumConnection", Btsdk_EnumConnection);
    enumerate.answer([&](BtHandle, ConnectionProperty* record) {
        *record = {};
        record->roleAndFlags = role;
        record->serviceClass = kHandsFree;
        return std::exchange(given, true) ? 0U : 401U;
    });
    for (const uint32_t upper : {0U, 0xFFFFFFF8U}) {
        for (uint32_t low = 0; low < 8; ++low) {
            role = upper + low;
            for (uint32_t mask = 0; mask < 8; ++mask) {
                given = false;
                const bool first = low % 2 == 1 && mask % 2 == 1;
                const bool second = low / 2 % 2 == 1 && mask / 2 % 2 == 1;
                const BOOL expected = first || second ? TRUE : FALSE;
                EXPECT_EQ(VlCm_ExistSameSvcClsConnection(kHandsFree, mask), expected) << role << ' ' << mask;
            }
        }
    }
}

TEST_F(Connections, AWalkThatCannotStartIsTracedAndNotEnded) {
    VlSim_Fail("Btsdk_StartEnumConnection", 1, 0);
    EXPECT_EQ(VlCm_ExistSameSvcClsConnection(kHandsFree, 3), FALSE);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_StartEnumConnection"});
    EXPECT_EQ(support::trace_log(),
              (Lines{">512 VlCm_ExistSameSvcClsConnection", "=512 Fail to Btsdk_StartEnumConnection\r\n",
                     "<512 VlCm_ExistSameSvcClsConnection"}));
}

TEST_F(Connections, AWalkThatFailsIsEnded) {
    VlSim_Fail("Btsdk_EnumConnection", 2, 0);
    EXPECT_EQ(VlCm_ExistSameSvcClsConnection(kHandsFree, 3), FALSE);
    EXPECT_EQ(support::sdk_operations(), walk(2));
    support::clear_sdk_log();
    VlSim_Fail("Btsdk_EnumConnection", 3, 0);
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(2), 1u);
    EXPECT_EQ(support::sdk_operations(), walk(3));
}

TEST_F(Connections, AnEndThatFailsChangesNothing) {
    support::CallPatch end("Btsdk_EndEnumConnection", Btsdk_EndEnumConnection);
    end.answer([&](BtHandle enumeration) {
        end.real(enumeration);
        return kFailed;
    });
    EXPECT_EQ(VlCm_ExistSameSvcClsConnection(kHandsFree, 3), TRUE);
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(2), 3u);
    EXPECT_EQ(end.count(), 2u);
}

TEST_F(Connections, RecordsAreZeroedBeforeEachCallAndTheLastOneDoesNotCount) {
    support::CallPatch enumerate("Btsdk_EnumConnection", Btsdk_EnumConnection);
    enumerate.answer([&](BtHandle, ConnectionProperty* record) {
        const ConnectionProperty zero{};
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0) << enumerate.count();
        *record = {3, 2, 0, kHandsFree, {}};
        if (enumerate.count() % 4 != 0) record->device = 3, record->serviceClass = 0x1108;
        return enumerate.count() % 4 != 0 ? 400U : 0U;
    });
    EXPECT_EQ(VlCm_ExistSameSvcClsConnection(kHandsFree, 3), FALSE);
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(2), 0u);
    EXPECT_EQ(enumerate.count(), 8u);
}

TEST_F(Connections, OpensTheScopeOfTheQuestionForAClass) {
    VlCm_ExistSameSvcClsConnection(kHandsFree, 1);
    EXPECT_EQ(support::trace_scopes(), Lines{"512 VlCm_ExistSameSvcClsConnection"});
}

TEST_F(Connections, AreCountedByDevice) {
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(2), 3u);
    EXPECT_EQ(support::sdk_operations(), walk(5));
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(1), 1u);
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(3), 0u);
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(0x10002), 0u);
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(0), 0u);
    VlSim_Set("/connections/1/device", "0");
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(0), 1u);
}

TEST_F(Connections, AreNoneWhenTheWalkCannotStart) {
    VlSim_Fail("Btsdk_StartEnumConnection", 1, 0);
    EXPECT_EQ(VlCm_GetConnectionNumByDevHdl(2), 0u);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_StartEnumConnection"});
}

TEST_F(Connections, CountingThemIsNotTraced) {
    VlCm_GetConnectionNumByDevHdl(2);
    VlSim_Fail("Btsdk_StartEnumConnection", 1, 0);
    VlCm_GetConnectionNumByDevHdl(2);
    EXPECT_TRUE(support::trace_log().empty());
}
