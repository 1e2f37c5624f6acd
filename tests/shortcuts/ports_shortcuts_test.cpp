// Which shortcuts a COM port serves.
#include "parameter_reads.h"
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

using namespace shortcuts_test;

namespace {

using Handles = std::vector<uint32_t>;

constexpr uint16_t kSerial = 0x1101, kDialUp = 0x1103, kFax = 0x1111, kPrint = 0x1126, kScan = 0x1127;

class ShortcutsOfPort : public support::SuiteTest {
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

}  // namespace

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
    blocks().fail_nth(2);  // the first one is the list
    expect(ask(7), TRUE, 2, {2, 4});
    // The next parameter that needs more room than those before, and the one after it, which needs less.
    VlSim_Set("/shortcuts/1/parameter", R"("0000000000 07 000000 00 00000000000000000000")");
    blocks().fail_nth(3);
    expect(ask(7), TRUE, 2, {1, 4});
}

// A block that held one shortcut's parameter says nothing of the next one.
TEST_F(ShortcutsOfPort, WithAShorterParameterAreNotTakenForTheOneBefore) {
    VlSim_Set("/shortcuts", R"([{"handle": 1, "class": "0x1101", "parameter": "0000000000 07 000000 09"},
                               {"handle": 2, "class": "0x1101", "parameter": "00000000"}])");
    expect(ask(7), TRUE, 1, {1});
    support::CallPatch read("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
    read.answer([](ShortcutProperty* record) {
        record->serviceClass = kSerial;
        const auto bytes = static_cast<uint8_t*>(record->parameter);
        if (bytes != nullptr && record->shortcut == 1) bytes[5] = 7;
        record->parameterLength = 10;
        return 0U;
    });
    expect(ask(7), TRUE, 1, {1});
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
