// Which COM port a server or a shortcut has, and which shortcuts a port serves.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <string.h>

using namespace shortcuts_test;

namespace {

using Handles = std::vector<uint32_t>;

constexpr uint16_t kSerial = 0x1101, kDialUp = 0x1103, kFax = 0x1111, kPrint = 0x1126, kScan = 0x1127;
// Handles of the built-in neighbourhood.
constexpr uint32_t kServer = 301, kServerWithoutPort = 303, kShortcut = 203, kUnknown = 9999;

std::string length_read(uint32_t shortcut) {
    return "Btsdk_GetShortCutProperty({shortcut " + std::to_string(shortcut) + ", mask 64}) = 0";
}
std::string bytes_read(uint32_t shortcut, size_t length) {
    return "Btsdk_GetShortCutProperty({shortcut " + std::to_string(shortcut) + ", mask 64, parameterLength " +
           std::to_string(length) + "}) = 0";
}

// The application parameter of shortcuts as it is told by each of both reads.
struct Parameter {
    uint16_t told_length;  // by the first read
    uint16_t read_length;  // by the second one
    uint32_t first_result = 0, second_result = 0;
    uint16_t service_class = kSerial;
};
// Byte i of a parameter is 100 + i.
uint32_t answer(const Parameter& parameter, ShortcutProperty& record) {
    record.serviceClass = parameter.service_class;
    const bool first = record.parameter == nullptr;
    const uint16_t room = record.parameterLength;
    EXPECT_EQ(room, first ? 0 : parameter.told_length);
    record.parameterLength = first ? parameter.told_length : parameter.read_length;
    for (uint16_t i = 0; !first && i < room && i < parameter.read_length; ++i) {
        static_cast<uint8_t*>(record.parameter)[i] = static_cast<uint8_t>(100 + i);
    }
    return first ? parameter.first_result : parameter.second_result;
}

class Ports : public support::SuiteTest {
protected:
    static void parameter(const std::string& hex, uint16_t service_class = kDialUp) {
        const std::string json = R"([{"handle": 203, "device": 1, "class": )" +
                                 std::to_string(service_class) + R"(, "parameter": ")" + hex + "\"}]";
        VlSim_Set("/shortcuts", json.c_str());
        support::clear_sdk_log();
    }
};

}  // namespace

// --- of a local server

using ServerPort = Ports;

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

class ShortcutPort : public Ports {
protected:
    // Lets the reads tell a parameter; which class the caller names decides its place.
    static int port_with(const Parameter& told, uint16_t service_class) {
        support::CallPatch reads("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
        reads.answer([&](ShortcutProperty* record) { return answer(told, *record); });
        return VlCm_GetComPortByShortcut(kShortcut, service_class);
    }
};

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

// --- the shortcuts of a port

class ShortcutsOfPort : public Ports {
protected:
    static constexpr uint32_t kFree = 0xCCCCCCCC;  // a place of the array that was not written

    void SetUp() override {
        VlSim_Set("/shortcuts", R"([
            {"handle": 1, "class": "0x1101", "parameter": "0000000000 07 000000 00"},
            {"handle": 2, "class": "0x1103", "parameter": "0000000000 07 000000 08"},
            {"handle": 3, "class": "0x1105", "parameter": "0000000000 07 000000 07"},
            {"handle": 4, "class": "0x1126", "parameter": "0000000000 09 000000 07"},
            {"handle": 5, "class": "0x1111", "parameter": ""},
            {"handle": 6, "class": "0x1127", "parameter": "0000000000 08"},
            {"handle": 7, "class": "0x1111", "parameter": "0000000000 FF 000000 09"}])");
        support::clear_sdk_log();
    }
    struct Answer {
        BOOL result;
        uint32_t count;
        Handles stored;  // up to the first place that was not written
    };
    static Answer ask(int port, uint32_t room = 8) {
        std::vector<uint32_t> array(10, kFree);
        Answer answer{FALSE, room, {}};
        answer.result = VlCm_GetShortcutsByComPort(array.data(), port, &answer.count);
        size_t used = 0;
        while (used < array.size() && array[used] != kFree) answer.stored.push_back(array[used++]);
        for (size_t i = used; i < array.size(); ++i) EXPECT_EQ(array[i], kFree) << i;
        return answer;
    }
    static void expect(const Answer& answer, BOOL result, uint32_t count, const Handles& stored) {
        EXPECT_EQ(answer.result, result);
        EXPECT_EQ(answer.count, count);
        EXPECT_EQ(answer.stored, stored);
    }
};

TEST_F(ShortcutsOfPort, NameItInByte5OrByte9WhateverTheirSerialClass) {
    expect(ask(7), TRUE, 3, {1, 2, 4});
    expect(ask(8), TRUE, 2, {2, 6});
    expect(ask(9), TRUE, 2, {4, 7});
    expect(ask(0), TRUE, 1, {1});
    expect(ask(255), TRUE, 1, {7});
    expect(ask(3), TRUE, 0, {});
}

TEST_F(ShortcutsOfPort, AreLooserThanThePortOfAShortcut) {
    expect(ask(7), TRUE, 3, {1, 2, 4});
    EXPECT_EQ(VlCm_GetComPortByShortcut(2, kDialUp), 8);
}

TEST_F(ShortcutsOfPort, OfAPortThatFitsInNoByteAreNone) {
    for (const int port : {-1, -249, 256, 263, 0x10007, INT32_MIN}) expect(ask(port), TRUE, 0, {});
}

TEST_F(ShortcutsOfPort, AreAskedForByACountAFetchAndTwoReadsEach) {
    ask(7);
    EXPECT_EQ(support::sdk_calls(),
              (Lines{"Btsdk_GetAllShortCuts(null, 0) = 7", "Btsdk_GetAllShortCuts(out, 7) = 7",
                     length_read(1), bytes_read(1, 10), length_read(2), bytes_read(2, 10), length_read(3),
                     length_read(4), bytes_read(4, 10), length_read(5), length_read(6), bytes_read(6, 6),
                     length_read(7), bytes_read(7, 10)}));
}

TEST_F(ShortcutsOfPort, AreStoredUpToTheRoomAndAllCounted) {
    expect(ask(7, 1), TRUE, 3, {1});
    expect(ask(7, 2), TRUE, 3, {1, 2});
    expect(ask(7, 3), TRUE, 3, {1, 2, 4});
    expect(ask(7, 0), TRUE, 3, {});
    expect(ask(7, 0xFFFFFFFF), TRUE, 3, {1, 2, 4});
    for (const uint32_t room : {0U, 1U, 5U}) {
        uint32_t count = room;
        EXPECT_EQ(VlCm_GetShortcutsByComPort(nullptr, 7, &count), TRUE);
        EXPECT_EQ(count, 3u);
    }
}

TEST_F(ShortcutsOfPort, WithoutACountAreNoneAndNothingIsAsked) {
    uint32_t array = kFree;
    EXPECT_EQ(VlCm_GetShortcutsByComPort(&array, 7, nullptr), FALSE);
    EXPECT_EQ(VlCm_GetShortcutsByComPort(nullptr, 7, nullptr), FALSE);
    EXPECT_EQ(array, kFree);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(ShortcutsOfPort, OfAStackWithoutShortcutsAreNoneAndTheCountStays) {
    VlSim_Set("/shortcuts", "[]");
    support::clear_sdk_log();
    expect(ask(7), FALSE, 8, {});
    EXPECT_EQ(support::sdk_calls(), Lines{"Btsdk_GetAllShortCuts(null, 0) = 0"});
}

TEST_F(ShortcutsOfPort, WithoutMemoryForTheirListAreNoneAndTheCountStays) {
    blocks().fail_nth(1);
    expect(ask(7), FALSE, 8, {});
    EXPECT_EQ(support::sdk_calls(), Lines{"Btsdk_GetAllShortCuts(null, 0) = 7"});
}

TEST_F(ShortcutsOfPort, WithoutMemoryForItsParameterAreOneFewer) {
    const Handles expected[] = {{2, 4}, {1, 4}, {1, 2}};
    for (size_t i = 0; i < std::size(expected); ++i) {
        blocks().fail_nth(2 + i);  // the first one is the list
        expect(ask(7), TRUE, 2, expected[i]);
    }
}

TEST_F(ShortcutsOfPort, PassOverOneThatCannotBeRead) {
    const struct {
        const char* label;
        uint32_t nth;
        Handles expected;
    } rows[] = {
        {"first length", 1, {2, 4}}, {"first bytes", 2, {2, 4}},          {"second bytes", 4, {1, 4}},
        {"no match", 5, {1, 2, 4}},  {"length of the fourth", 6, {1, 2}},
    };
    support::for_each_row(rows, [](const auto& row) {
        VlSim_Fail("Btsdk_GetShortCutProperty", row.nth, kFailed);
        expect(ask(7), TRUE, static_cast<uint32_t>(row.expected.size()), row.expected);
        VlSim_ClearFaults();
    });
}

TEST_F(ShortcutsOfPort, EndAtTheFirstZeroHandle) {
    support::CallPatch list("Btsdk_GetAllShortCuts", Btsdk_GetAllShortCuts);
    list.answer([](BtHandle* handles, uint32_t room) {
        if (handles == nullptr) return 3U;
        for (uint32_t i = 0; i < room; ++i) EXPECT_EQ(handles[i], 0u);
        handles[0] = 2;
        handles[2] = 1;
        return 3U;
    });
    expect(ask(7), TRUE, 1, {2});
    EXPECT_EQ(support::sdk_operations(), Lines(2, "Btsdk_GetShortCutProperty"));
}

TEST_F(ShortcutsOfPort, AreNeverReadBeyondTheListThatWasCounted) {
    support::CallPatch list("Btsdk_GetAllShortCuts", Btsdk_GetAllShortCuts);
    uint32_t written = 0;
    list.answer([&](BtHandle* handles, uint32_t room) {
        if (handles == nullptr) return 2U;
        EXPECT_EQ(room, 2u);
        handles[0] = 1;
        handles[1] = 2;
        return written;
    });
    const struct {
        const char* label;
        uint32_t written;
        Handles expected;
    } rows[] = {{"as counted", 2, {1, 2}}, {"grown", 1000, {1, 2}}, {"shrunk", 1, {1}}, {"gone", 0, {}}};
    support::for_each_row(rows, [&](const auto& row) {
        written = row.written;
        expect(ask(7), TRUE, static_cast<uint32_t>(row.expected.size()), row.expected);
    });
}

TEST_F(ShortcutsOfPort, WhoseParameterChangesMeanwhileCountByItsSmallerLength) {
    support::CallPatch reads("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
    Parameter told{};
    reads.answer([&](ShortcutProperty* record) { return answer(told, *record); });
    const struct {
        const char* label;
        Parameter told;
        uint32_t at_5, at_9;
    } rows[] = {
        {"equal", {10, 10}, 7, 7},
        {"longer", {6, 10}, 7, 0},
        {"shorter", {10, 9}, 7, 0},
        {"too short", {10, 5}, 0, 0},
    };
    support::for_each_row(rows, [&](const auto& row) {
        told = row.told;
        EXPECT_EQ(ask(105).count, row.at_5);
        EXPECT_EQ(ask(109).count, row.at_9);
    });
}

TEST_F(ShortcutsOfPort, OfOtherClassesAreNotRead) {
    support::CallPatch reads("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
    Parameter told{10, 10};
    reads.answer([&](ShortcutProperty* record) { return answer(told, *record); });
    for (uint32_t low = 0x1000; low < 0x1200; ++low) {
        told.service_class = static_cast<uint16_t>(low);
        const size_t before = reads.count();
        const bool serial = low == kSerial || low == kDialUp || low == kFax || low == kPrint || low == kScan;
        ASSERT_EQ(ask(105).count, serial ? 7u : 0u) << low;
        ASSERT_EQ(reads.count() - before, serial ? 14u : 7u) << low;
    }
}

TEST_F(ShortcutsOfPort, OpenTheirScopeOnEveryPathAndWriteNoLine) {
    ask(7);
    VlCm_GetShortcutsByComPort(nullptr, 7, nullptr);
    VlSim_Set("/shortcuts", "[]");
    ask(7);
    EXPECT_EQ(support::trace_scopes(), Lines(3, "512 VlCm_GetShortcutsByComPort"));
    EXPECT_TRUE(support::trace_lines().empty());
}
