// Which COM port a server or a shortcut has.
#include "parameter_reads.h"
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <string.h>

using namespace shortcuts_test;

namespace {

constexpr uint16_t kSerial = 0x1101, kDialUp = 0x1103, kFax = 0x1111, kPrint = 0x1126, kScan = 0x1127;
// Handles of the built-in neighbourhood.
constexpr uint32_t kServer = 301, kServerWithoutPort = 303, kShortcut = 203, kUnknown = 9999;

class Ports : public support::SuiteTest {
protected:
    static void parameter(const std::string& hex, uint16_t service_class = kDialUp) {
        const std::string json = R"([{"handle": 203, "device": 1, "class": )" +
                                 std::to_string(service_class) + R"(, "parameter": ")" + hex + "\"}]";
        VlSim_Set("/shortcuts", json.c_str());
        support::clear_sdk_log();
    }
};

using ServerPort = Ports;

class ShortcutPort : public Ports {
protected:
    // Lets the reads tell a parameter; which class the caller names decides its place.
    static int port_with(const Parameter& told, uint16_t service_class) {
        support::CallPatch reads("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
        reads.answer([&](ShortcutProperty* record) { return answer(told, *record); });
        return VlCm_GetComPortByShortcut(kShortcut, service_class);
    }
};

}  // namespace

// --- of a local server

TEST_F(ServerPort, IsByte6OfTheBlockWhichIsFreed) {
    EXPECT_EQ(VlCm_GetLocalSPPSvrComPort(kServer), 5);
    EXPECT_EQ(support::sdk_calls(),
              (Lines{"Btsdk_GetServerAttributes(301, {mask 8}) = 0", "Btsdk_FreeMemory(pointer)"}));
    const struct {
        const char* label;
        const char* block;
        int expected;
    } rows[] = {
        {"zero", "01020304050600FF", 0},
        {"highest", "010203040506FF08", 255},
        {"seven bytes", "01020304050680", 128},
    };
    support::for_each_row(rows, [](const auto& row) {
        VlSim_Set("/servers/2/extension", ('"' + std::string(row.block) + '"').c_str());
        EXPECT_EQ(VlCm_GetLocalSPPSvrComPort(kServerWithoutPort), row.expected);
    });
}

TEST_F(ServerPort, OfAServerWithoutABlockIsNone) {
    EXPECT_EQ(VlCm_GetLocalSPPSvrComPort(kServerWithoutPort), -1);
    EXPECT_EQ(support::sdk_calls(), Lines{"Btsdk_GetServerAttributes(303, {mask 8}) = 0"});
}

TEST_F(ServerPort, OfAServerThatCannotBeReadIsNone) {
    EXPECT_EQ(VlCm_GetLocalSPPSvrComPort(0), -1);
    EXPECT_EQ(VlCm_GetLocalSPPSvrComPort(kUnknown), -1);
    VlSim_Fail("Btsdk_GetServerAttributes", 1, kFailed);
    EXPECT_EQ(VlCm_GetLocalSPPSvrComPort(kServer), -1);
    EXPECT_EQ(support::sdk_operations(), Lines(3, "Btsdk_GetServerAttributes"));
}

TEST_F(ServerPort, IsReadWithAZeroedRecord) {
    support::CallPatch attributes("Btsdk_GetServerAttributes", Btsdk_GetServerAttributes);
    attributes.answer([](BtHandle, ServerAttributes* record) {
        ServerAttributes expected{};
        expected.mask = 8;
        EXPECT_EQ(memcmp(record, &expected, sizeof expected), 0);
        return 0U;
    });
    EXPECT_EQ(VlCm_GetLocalSPPSvrComPort(kServer), -1);
    EXPECT_EQ(attributes.count(), 1u);
}

TEST_F(ServerPort, IsNotTraced) {
    VlCm_GetLocalSPPSvrComPort(kServer);
    VlCm_GetLocalSPPSvrComPort(0);
    EXPECT_TRUE(support::trace_log().empty());
}

// --- of a shortcut

TEST_F(ShortcutPort, StandsAtThePlaceOfTheClassThatTheCallerNames) {
    parameter("000102030405060708090A0B");
    const struct {
        const char* label;
        uint16_t service_class;
        int expected;
    } rows[] = {
        {"serial port", kSerial, 5}, {"print", kPrint, 5}, {"scan", kScan, 5},
        {"dial-up", kDialUp, 9},     {"fax", kFax, 9},
    };
    support::for_each_row(rows, [](const auto& row) {
        support::clear_sdk_log();
        EXPECT_EQ(VlCm_GetComPortByShortcut(kShortcut, row.service_class), row.expected);
        EXPECT_EQ(support::sdk_calls(), (Lines{length_read(kShortcut), bytes_read(kShortcut, 12)}));
    });
}

TEST_F(ShortcutPort, OfEveryOtherClassIsNoneAndNothingIsAsked) {
    for (uint32_t service_class = 0; service_class <= 0xFFFF; ++service_class) {
        switch (service_class) {
            case kSerial:
            case kDialUp:
            case kFax:
            case kPrint:
            case kScan:
                continue;
            default:
                ASSERT_EQ(VlCm_GetComPortByShortcut(kShortcut, static_cast<uint16_t>(service_class)), -1);
        }
        if (service_class % 4096 == 0) support::clear_trace_log();
    }
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(ShortcutPort, BehindTheEndOfTheParameterIsNone) {
    const struct {
        const char* label;
        const char* parameter;
        int serial, dial_up;
    } rows[] = {
        {"5 bytes", "0001020304", -1, -1},
        {"6 bytes", "0001020304FF", 255, -1},
        {"9 bytes", "000102030400060708", 0, -1},
        {"10 bytes", "000102030405060708FF", 5, 255},
    };
    support::for_each_row(rows, [](const auto& row) {
        parameter(row.parameter);
        EXPECT_EQ(VlCm_GetComPortByShortcut(kShortcut, kSerial), row.serial);
        EXPECT_EQ(VlCm_GetComPortByShortcut(kShortcut, kDialUp), row.dial_up);
    });
}

TEST_F(ShortcutPort, WithoutAParameterIsNoneAfterOneRead) {
    parameter("");
    EXPECT_EQ(VlCm_GetComPortByShortcut(kShortcut, kSerial), -1);
    EXPECT_EQ(support::sdk_calls(), Lines{length_read(kShortcut)});
}

TEST_F(ShortcutPort, OfTwoDifferingLengthsTheSmallerHolds) {
    const struct {
        const char* label;
        Parameter told;
        int serial, dial_up;
    } rows[] = {
        {"equal", {10, 10}, 105, 109},        {"became longer", {6, 10}, 105, -1},
        {"became shorter", {10, 6}, 105, -1}, {"became too short", {10, 5}, -1, -1},
        {"vanished", {10, 0}, -1, -1},        {"longest", {0xFFFF, 0xFFFF}, 105, 109},
        {"was too short", {5, 10}, -1, -1},
    };
    support::for_each_row(rows, [](const auto& row) {
        EXPECT_EQ(port_with(row.told, kSerial), row.serial);
        EXPECT_EQ(port_with(row.told, kDialUp), row.dial_up);
    });
}

TEST_F(ShortcutPort, OfAReadThatFailsIsNone) {
    EXPECT_EQ(port_with({10, 10, kFailed}, kSerial), -1);
    EXPECT_EQ(port_with({10, 10, 0, kFailed}, kSerial), -1);
    EXPECT_EQ(VlCm_GetComPortByShortcut(0, kSerial), -1);
    EXPECT_EQ(VlCm_GetComPortByShortcut(kUnknown, kSerial), -1);
    for (const uint32_t nth : {1U, 2U}) {
        support::clear_sdk_log();
        VlSim_Fail("Btsdk_GetShortCutProperty", nth, kFailed);
        EXPECT_EQ(VlCm_GetComPortByShortcut(kShortcut, kDialUp), -1);
        EXPECT_EQ(support::sdk_operations(), Lines(nth, "Btsdk_GetShortCutProperty"));
    }
}

TEST_F(ShortcutPort, WithoutMemoryIsNone) {
    int expected = 7;
    EXPECT_EQ(fail_each_allocation(blocks(),
                                   [&] {
                                       EXPECT_EQ(VlCm_GetComPortByShortcut(kShortcut, kDialUp), expected);
                                       expected = -1;
                                   }),
              1u);
    EXPECT_EQ(support::sdk_calls(), Lines{length_read(kShortcut)});
}

TEST_F(ShortcutPort, IsReadWithZeroedRecords) {
    support::CallPatch reads("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
    reads.answer([&](ShortcutProperty* record) {
        ShortcutProperty expected{};
        expected.shortcut = kShortcut;
        expected.mask = 64;
        if (reads.count() == 2) expected.parameterLength = 6, expected.parameter = record->parameter;
        EXPECT_EQ(memcmp(record, &expected, sizeof expected), 0) << reads.count();
        EXPECT_EQ(record->parameter == nullptr, reads.count() == 1);
        *record = {};
        record->connection = 7;
        record->parameterLength = 6;
        return 0U;
    });
    EXPECT_EQ(VlCm_GetComPortByShortcut(kShortcut, kSerial), 0);
    EXPECT_EQ(reads.count(), 2u);
}

TEST_F(ShortcutPort, OpensItsScopeOnEveryPathAndWritesNoLine) {
    VlCm_GetComPortByShortcut(kShortcut, kDialUp);
    VlCm_GetComPortByShortcut(kUnknown, kDialUp);
    VlCm_GetComPortByShortcut(kShortcut, 0x1105);
    EXPECT_EQ(support::trace_scopes(), Lines(3, "512 VlCm_GetComPortByShortcut"));
    EXPECT_TRUE(support::trace_lines().empty());
}
