// Whether a local server of a class runs.
#include "localctl_test.h"

#include <string.h>

using namespace localctl_test;

namespace {

constexpr unsigned short kSerialPort = 0x1101, kObjectPush = 0x1105, kGroupNetwork = 0x1117,
                         kUnknown = 0x1200;
constexpr unsigned kFirstSerialServer = 301;

struct StatusRow {
    const char* label;
    uint32_t status;
    BOOL started;
};
constexpr StatusRow kStatuses[] = {
    {"none", 0, FALSE},
    {"started", 1, TRUE},
    {"stopped", 2, FALSE},
    {"in use", 3, TRUE},
    {"four", 4, TRUE},
    {"low byte 2", 0x102, TRUE},
    {"low half 0", 0x10000, TRUE},
    {"the largest", 0xFFFFFFFF, TRUE},
};

class ServiceStarted : public support::SuiteTest {
protected:
    static BOOL ask(unsigned short service_class) {
        support::clear_sdk_log();
        return VlCm_IsServiceStarted(service_class);
    }
    // A walk over so many items, with `inside` done before it ends.
    static Lines walk(size_t items, const Lines& inside = {}) {
        return Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumLocalServer"} +
               Lines(items, "Btsdk_EnumLocalServer") + inside + Lines{"Btsdk_EndEnumLocalServer"};
    }
};

const Lines kStatus = {"Btsdk_GetServerStatus"};

}  // namespace

TEST_F(ServiceStarted, NeedsBluetoothReady) {
    support::CallPatch ready("Btsdk_IsBluetoothReady", Btsdk_IsBluetoothReady);
    for (const int each : {0, 2, 255}) {
        ready.answer([each] { return static_cast<uint8_t>(each); });
        EXPECT_EQ(ask(kSerialPort), FALSE) << each;
        EXPECT_TRUE(support::sdk_calls().empty()) << each;
    }
    ready.answer([] { return uint8_t{1}; });
    EXPECT_EQ(ask(kSerialPort), TRUE);
}

TEST_F(ServiceStarted, IsToldByTheStatus) {
    support::CallPatch status("Btsdk_GetServerStatus", Btsdk_GetServerStatus);
    support::for_each_row(kStatuses, [&](const StatusRow& row) {
        status.answer([&](BtHandle server, uint32_t* written) {
            EXPECT_EQ(server, kFirstSerialServer);
            return *written = row.status, 0U;
        });
        EXPECT_EQ(ask(kSerialPort), row.started);
    });
}

TEST_F(ServiceStarted, AStatusThatCannotBeReadIsNone) {
    VlSim_Fail("Btsdk_GetServerStatus", 1, 5);
    EXPECT_EQ(ask(kSerialPort), FALSE);
    EXPECT_EQ(support::sdk_operations(), walk(1, kStatus));
    support::CallPatch status("Btsdk_GetServerStatus", Btsdk_GetServerStatus);
    status.answer([](BtHandle, uint32_t* written) { return *written = 1U, 5U; });
    EXPECT_EQ(ask(kSerialPort), FALSE);
    status.answer([](BtHandle, uint32_t*) { return 0U; });
    EXPECT_EQ(ask(kSerialPort), FALSE) << "what is not written is 0";
}

TEST_F(ServiceStarted, TheFirstServerOfTheClassCounts) {
    EXPECT_EQ(ask(kSerialPort), TRUE) << "the second one is stopped";
    EXPECT_EQ(support::sdk_operations(), walk(1, kStatus));
    VlSim_Set("/servers/0/status", "2");
    VlSim_Set("/servers/1/status", "1");
    EXPECT_EQ(ask(kSerialPort), FALSE) << "the second one is started";
    EXPECT_EQ(support::sdk_operations(), walk(1, kStatus));
}

TEST_F(ServiceStarted, IsSoughtAmongAllServers) {
    EXPECT_EQ(ask(kObjectPush), TRUE);
    EXPECT_EQ(support::sdk_operations(), walk(3, kStatus));
    EXPECT_EQ(ask(kGroupNetwork), FALSE) << "it is stopped";
    EXPECT_EQ(support::sdk_operations(), walk(6, kStatus));
}

TEST_F(ServiceStarted, WithoutAServerIsFalse) {
    EXPECT_EQ(ask(kUnknown), FALSE);
    EXPECT_EQ(support::sdk_operations(), walk(9));  // eight and the end
    EXPECT_EQ(ask(0), FALSE) << "the record of the end counts no more";
}

TEST_F(ServiceStarted, WithoutAWalkIsFalseAndNothingIsEnded) {
    VlSim_Fail("Btsdk_StartEnumLocalServer", 1, 0);
    EXPECT_EQ(ask(kSerialPort), FALSE);
    EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_IsBluetoothReady", "Btsdk_StartEnumLocalServer"}));
}

TEST_F(ServiceStarted, AWalkThatFailsIsEnded) {
    VlSim_Fail("Btsdk_EnumLocalServer", 2, 0);
    EXPECT_EQ(ask(kObjectPush), FALSE);
    EXPECT_EQ(support::sdk_operations(), walk(2));
}

TEST_F(ServiceStarted, EachRecordIsZeroedBeforeItsCall) {
    support::CallPatch enumerate("Btsdk_EnumLocalServer", Btsdk_EnumLocalServer);
    enumerate.answer([&](BtHandle, ServerAttributes* record) {
        const ServerAttributes zero{};
        EXPECT_EQ(memcmp(record, &zero, sizeof zero), 0) << enumerate.count();
        memset(record, 0xAA, sizeof *record);
        return enumerate.count() < 4 ? 7U : 0U;
    });
    EXPECT_EQ(VlCm_IsServiceStarted(kSerialPort), FALSE);
    EXPECT_EQ(enumerate.count(), 4u);
}

TEST_F(ServiceStarted, OpensNoScope) {
    VlCm_IsServiceStarted(kSerialPort);
    VlCm_IsServiceStarted(kUnknown);
    EXPECT_TRUE(support::trace_log().empty());
}
