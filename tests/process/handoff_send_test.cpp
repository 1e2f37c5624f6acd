// Handing lists over: what the section holds, who is woken, how long a sender waits, what it refuses.
#include "handoff_test.h"
#include "page_watch.h"

#include <string.h>

namespace {

using Strings = std::vector<std::string>;

class SendList : public HandoffTest {
protected:
    // Sends and gives the section as it was at the wake-up.
    Bytes sent_section(const ListChannel& channel, const RecordList& list, size_t bytes) {
        Bytes section;
        on_wake_up = [&] { section = read_section(channel.section, bytes); };
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        on_wake_up = nullptr;
        return section;
    }
};

TEST_F(SendList, WritesHeaderAndRecordsWithEmptyLinks) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for (const size_t count : Sizes{1, 2, 10, 1000, 50000}) {
            const RecordList list(channel, count);
            const Bytes expected = list.image();
            EXPECT_TRUE(sent_section(channel, list, expected.size()) == expected) << count << " records";
        }
    });
}

TEST_F(SendList, FollowsTheLinksWhereverTheRecordsLie) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        constexpr size_t kOrder[] = {3, 4, 0, 2, 1};  // two of them adjacent
        const size_t size = channel.record_size;
        RecordList list(channel, 5, channel.wake_class);
        if (size == sizeof(VlSendRecord)) put_word(list.record(3) + 4, channel.wake_class);
        Bytes expected = section_image(kFreshState, static_cast<uint32_t>(12 + 5 * size), 5, {});
        for (size_t i = 0; i < 5; ++i) {
            unsigned char* record = list.record(kOrder[i]);
            unsigned char* next = i < 4 ? list.record(kOrder[i + 1]) : nullptr;
            expected.insert(expected.end(), record, record + size - sizeof next);
            expected.insert(expected.end(), sizeof next, 0);
            memcpy(record + size - sizeof next, &next, sizeof next);
        }
        Bytes section;
        on_wake_up = [&] { section = read_section(channel.section, expected.size()); };
        EXPECT_EQ(channel.send(list.record(3), 0), 0U);
        EXPECT_TRUE(section == expected);
    });
}

TEST_F(SendList, MakesAOneRecordSectionOf1644Bytes) {
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    const RecordList list(files(), 1);
    const Bytes section = sent_section(files(), list, 12);
    ASSERT_EQ(created.count(), 1U);
    EXPECT_EQ(std::get<4>(created.calls()[0]), 1644U);
    EXPECT_EQ(word_at(section, 4), 1644U);
    EXPECT_EQ(word_at(section, 8), 1U);
}

TEST_F(SendList, CreatesAndMapsTheSectionAsAgreed) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        CallPatch created("CreateFileMappingA", CreateFileMappingA);
        Strings names;
        created.answer([&](HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protect, DWORD high, DWORD low,
                           LPCSTR name) {
            names.emplace_back(name);
            return created.real(file, security, protect, high, low, name);
        });
        CallPatch mapped("MapViewOfFile", MapViewOfFile);
        const RecordList list(channel, 3);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        EXPECT_EQ(names, Strings{channel.section});
        ASSERT_EQ(created.count(), 1U);
        const auto size = static_cast<DWORD>(12 + 3 * channel.record_size);
        const auto [file, security, protect, high, low, name] = created.calls()[0];
        EXPECT_EQ(std::make_tuple(file, security, protect, high, low),
                  std::make_tuple(INVALID_HANDLE_VALUE, LPSECURITY_ATTRIBUTES{}, DWORD{PAGE_READWRITE},
                                  DWORD{0}, size));
        ASSERT_EQ(mapped.count(), 1U);
        const auto [section, access, offset_high, offset_low, bytes] = mapped.calls()[0];
        EXPECT_EQ(std::make_tuple(access, offset_high, offset_low, bytes),
                  std::make_tuple(DWORD{FILE_MAP_READ | FILE_MAP_WRITE}, DWORD{0}, DWORD{0}, SIZE_T{0}));
    });
}

TEST_F(SendList, RefusesANullListBeforeItAsksTheStack) {
    CallPatch ready("Btsdk_IsBluetoothReady", Btsdk_IsBluetoothReady);
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        EXPECT_EQ(channel.send(nullptr, 7), 773U);
        EXPECT_EQ(support::trace_scopes(), channel.own_scopes);
        support::clear_trace_log();
    });
    EXPECT_EQ(ready.count(), 0U);
    EXPECT_EQ(created.count(), 0U);
    EXPECT_EQ(foreground.count(), 0U);
}

TEST_F(SendList, RefusesUnlessTheLowByteOfReadinessIsOne) {
    struct Row {
        const char* label;
        uint8_t ready;
        uint32_t status;
    };
    constexpr Row kRows[] = {{"no", 0, 784}, {"yes", 1, 0}, {"two", 2, 784}, {"all bits", 0xFF, 784}};
    CallPatch ready("Btsdk_IsBluetoothReady", Btsdk_IsBluetoothReady);
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    for_each_row(kRows, [&](const Row& row) {
        ready.answer([&] { return row.ready; });
        for_each_row(list_channels(), [&](const ListChannel& channel) {
            const size_t before = created.count();
            const RecordList list(channel, 1);
            EXPECT_EQ(channel.send(list.first(), 0), row.status);
            EXPECT_EQ(created.count() - before, row.status == 0 ? 1U : 0U);
        });
    });
    EXPECT_EQ(lines(), Strings{});
}

TEST_F(SendList, TakesEachStepInItsOrder) {
    Strings steps;
    const auto noted = [&steps](auto& patch, const char* step) {
        patch.answer([&, step](auto... arguments) {
            steps.emplace_back(step);
            return patch.real(arguments...);
        });
    };
    CallPatch ready("Btsdk_IsBluetoothReady", Btsdk_IsBluetoothReady);
    CallPatch own_name("GetModuleFileNameA", GetModuleFileNameA);
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
    CallPatch closed("CloseHandle", CloseHandle);
    noted(ready, "ready");
    noted(own_name, "own name");
    noted(created, "create");
    noted(mapped, "map");
    noted(unmapped, "unmap");
    noted(closed, "close");
    find_window.answer([&](const char*, const char*) { return steps.emplace_back("find"), tray; });
    foreground.answer([&](HWND) { return steps.emplace_back("front"), TRUE; });
    on_wake_up = [&] { steps.emplace_back("wake"); };
    sleeps.on_sleep([&](size_t) {
        steps.emplace_back("sleep");
        write_state("SHARE_MEM_SENDFILE", kTakenState);
    });
    const RecordList list(files(), 1);
    EXPECT_EQ(files().send(list.first(), 0), 0U);
    const Strings expected = {"ready", "own name", "find",  "front", "create", "map",
                              "find",  "wake",     "sleep", "unmap", "close"};
    EXPECT_EQ(steps, expected);
}

TEST_F(SendList, ClosesWhatItOpened) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        CallPatch created("CreateFileMappingA", CreateFileMappingA);
        HANDLE section = nullptr;
        created.answer([&](auto... arguments) { return section = created.real(arguments...); });
        CallPatch mapped("MapViewOfFile", MapViewOfFile);
        void* view = nullptr;
        mapped.answer([&](auto... arguments) { return view = mapped.real(arguments...); });
        CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
        CallPatch closed("CloseHandle", CloseHandle);
        const RecordList list(channel, 1);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        ASSERT_EQ(unmapped.count(), 1U);
        EXPECT_EQ(std::get<0>(unmapped.calls()[0]), view);
        ASSERT_EQ(closed.count(), 1U);
        EXPECT_EQ(std::get<0>(closed.calls()[0]), section);
        EXPECT_FALSE(section_exists(channel.section));
    });
}

TEST_F(SendList, TakesNoMemoryOfItsOwn) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const RecordList list(channel, 1000);
        const size_t before = blocks().allocations();
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        EXPECT_EQ(blocks().allocations() - before, 0U);
    });
}

TEST_F(SendList, WakesTheAgentByTheFirstRecordsServiceClass) {
    struct Row {
        const char* label;
        uint32_t service_class;
        uint32_t message;  // 0: none
    };
    constexpr Row kFiles[] = {
        {"object push", 0x1105, 0x43020205},
        {"file transfer", 0x1106, 0x43050205},
        {"direct printing", 0x1118, 0x42070205},
        {"imaging", 0x111B, 0},
        {"none", 0, 0},
        {"upper bits count", 0x00011105, 0},
        {"all bits", 0xFFFFFFFF, 0},
    };
    constexpr Row kImages[] = {
        {"imaging", 0x111B, 0x42020205},     {"object push", 0x1105, 0},  {"none", 0, 0},
        {"upper bits count", 0x8000111B, 0}, {"all bits", 0xFFFFFFFF, 0},
    };
    constexpr Row kContacts[] = {
        {"none", 0, 0x60390206},
        {"object push", 0x1105, 0x60390206},
        {"all bits", 0xFFFFFFFF, 0x60390206},
    };
    const auto check = [&](const ListChannel& channel, const auto& rows) {
        for_each_row(rows, [&](const Row& row) {
            RecordList list(channel, 2, row.service_class);
            put_word(list.record(1) + 4, channel.wake_class);  // the second record's class decides nothing
            const size_t before = relay.count();
            EXPECT_EQ(channel.send(list.first(), 0x55AA), 0U);
            ASSERT_EQ(relay.count() - before, row.message != 0 ? 1U : 0U);
            if (row.message != 0) {
                EXPECT_EQ(relay.calls().back(), std::make_tuple(row.message, 0x55AAU));
            }
        });
    };
    check(files(), kFiles);
    check(images(), kImages);
    check(list_channel("contacts"), kContacts);
}

TEST_F(SendList, WakesForOutlookWithParameterZero) {
    for (const size_t count : Sizes{1, 5}) {
        const RecordList list(outlook_contacts(), count);
        EXPECT_EQ(outlook_contacts().send(list.first(), 0x1234), 0U);
        EXPECT_EQ(relay.calls().back(), std::make_tuple(0x42080205U, 0U));
    }
    EXPECT_EQ(relay.count(), 2U);
}

TEST_F(SendList, CutsTheFilesTargetTo32Bits) {
    const RecordList list(files(), 1);
    const auto first = static_cast<const VlSendRecord*>(list.first());
    EXPECT_EQ(VlCm_SendFilestoBtDevice(first, 0x1234567890ABCDEF, 1, 2), 0U);
    EXPECT_EQ(relay.calls().back(), std::make_tuple(0x43020205U, 0x90ABCDEFU));
}

TEST_F(SendList, LiftsTheAgentsWindowAndOnlyFilesLookFirst) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for (const HWND window : {HWND{}, reinterpret_cast<HWND>(0x77)}) {
            Strings titles;
            find_window.answer([&](const char* window_class, const char* title) {
                if (titles.empty()) {
                    EXPECT_EQ(window_class, nullptr);
                }
                titles.emplace_back(title);
                return titles.size() == 1 ? window : tray;
            });
            const size_t before = foreground.count();
            const RecordList list(channel, 1, 0xFFFF);
            EXPECT_EQ(channel.send(list.first(), 0), 0U);
            EXPECT_EQ(titles.at(0), "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}");
            const bool lifted = window != nullptr || &channel != &files();
            ASSERT_EQ(foreground.count() - before, lifted ? 1U : 0U);
            if (lifted) {
                EXPECT_EQ(std::get<0>(foreground.calls().back()), window);
            }
        }
    });
}

TEST_F(SendList, OpensOnlyTheStatedScopes) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        Strings expected = channel.own_scopes;
        expected.emplace_back("512 VlCm_PostMsg2Vltray");
        support::clear_trace_log();
        const RecordList list(channel, 1);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        EXPECT_EQ(support::trace_scopes(), expected);
        EXPECT_EQ(lines(), Strings{});
    });
}

// What the receiver's side does to the state while a sender waits, and how long that takes.
struct WaitRow {
    const char* label;
    uint32_t at_wake_up;   // state before the first look
    uint32_t change_look;  // from this look on (counted from 1) ...
    uint32_t change_to;    // ... the state is this
    size_t looks;
    size_t pauses;
};

class SenderWait : public HandoffTest {
protected:
    void check(const ListChannel& channel, const WaitRow& row) {
        CallPatch mapped("MapViewOfFile", MapViewOfFile);
        unsigned char* view = nullptr;
        mapped.answer(
            [&](auto... arguments) { return view = static_cast<unsigned char*>(mapped.real(arguments...)); });
        PageWatch watch;
        watch.before_access([&](size_t nth) {
            if (nth == row.change_look) put_word(view, row.change_to);
        });
        on_wake_up = [&] {
            put_word(view, row.at_wake_up);
            watch.start(view);
        };
        CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
        unmapped.answer([&](const void* address) { return watch.stop(), unmapped.real(address); });
        const size_t before = sleeps.count();
        const RecordList list(channel, 1);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        EXPECT_EQ(watch.reads(0, 4), row.looks);
        EXPECT_EQ(watch.accesses().size(), row.looks) << "looks at nothing but the state";
        EXPECT_EQ(sleeps.count() - before, row.pauses);
        for (const DWORD length : sleeps.lengths()) EXPECT_EQ(length, 100U);
    }
};

TEST_F(SenderWait, SleepsWhileTheWaitingBitIsSet) {
    constexpr WaitRow kRows[] = {
        {"nobody takes it", kFreshState, 0, 0, 20, 20},
        {"taken before the first look", kTakenState, 0, 0, 1, 0},
        {"taken at the fourth look", kFreshState, 4, kTakenState, 4, 3},
        {"taken at the last look", kFreshState, 20, kTakenState, 20, 19},
        {"any odd state waits", 3, 0, 0, 20, 20},
        {"other values pass at once", kFreshState, 3, 0, 20, 2},
        {"the 64-bit mark alone passes", 0x10000000, 0, 0, 20, 0},
        {"taken with the mark is not taken", 0x10000002, 5, kTakenState, 5, 0},
        {"waiting again", 4, 11, kFreshState, 20, 10},
    };
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        if (&channel == &images()) return;
        for_each_row(kRows, [&](const WaitRow& row) { check(channel, row); });
    });
}

TEST_F(SenderWait, OfImagesSleepsOnlyWhileTheStateIsOne) {
    constexpr WaitRow kRows[] = {
        {"nobody takes them: all looks at once", kFreshState, 0, 0, 20, 0},
        {"taken before the first look", kTakenState, 0, 0, 1, 0},
        {"taken at the seventh look", kFreshState, 7, kTakenState, 7, 0},
        {"the state is one", 1, 0, 0, 20, 20},
        {"one, then taken", 1, 6, kTakenState, 6, 5},
        {"other odd values pass", 3, 0, 0, 20, 0},
        {"zero passes", 0, 0, 0, 20, 0},
    };
    for_each_row(kRows, [&](const WaitRow& row) { check(images(), row); });
}

TEST_F(SenderWait, GoesOnWithoutAWakeUp) {
    const RecordList list(files(), 1, 0x1234);
    EXPECT_EQ(files().send(list.first(), 0), 0U);
    EXPECT_EQ(relay.count(), 0U);
    EXPECT_EQ(sleeps.lengths(), std::vector<DWORD>(20, 100));
}

class SendFailure : public HandoffTest {
protected:
    // One failing send: its status, what it traced, and that nobody is woken and nothing waits.
    void refused(const ListChannel& channel, const std::string& line) {
        support::clear_trace_log();
        const RecordList list(channel, 2);
        EXPECT_EQ(channel.send(list.first(), 0), 770U);
        EXPECT_EQ(lines(), Strings{line});
        EXPECT_EQ(support::trace_scopes(), channel.own_scopes);
        EXPECT_EQ(relay.count(), 0U);
        EXPECT_EQ(sleeps.count(), 0U);
    }
};

TEST_F(SendFailure, SectionCannotBeCreated) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        CallPatch created("CreateFileMappingA", CreateFileMappingA);
        created.fail_nth(1, nullptr, ERROR_ALREADY_EXISTS);  // no handle outweighs the error's kind
        CallPatch closed("CloseHandle", CloseHandle);
        refused(channel, channel.creation_failed);
        EXPECT_EQ(closed.count(), 0U);
    });
}

TEST_F(SendFailure, AnEarlierHandOffIsPending) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection pending(channel.section, 1644);
        CallPatch mapped("MapViewOfFile", MapViewOfFile);
        refused(channel, channel.already_exists);
        EXPECT_EQ(mapped.count(), 0U);
        EXPECT_EQ(pending.state(), 0U);
    });
}

TEST_F(SendFailure, ASecondSendDuringTheFirst) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const RecordList list(channel, 1);
        uint32_t second = 0;
        on_wake_up = [&] { second = channel.send(list.first(), 0); };
        support::clear_trace_log();
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        EXPECT_EQ(second, 770U);
        EXPECT_EQ(lines(), Strings{channel.already_exists});
    });
}

TEST_F(SendFailure, AnObjectOfAnotherKindHoldsTheName) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, channel.section);
        refused(channel, channel.creation_failed);
        CloseHandle(event);
    });
}

TEST_F(SendFailure, ViewCannotBeMapped) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        CallPatch mapped("MapViewOfFile", MapViewOfFile);
        mapped.fail_nth(1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
        CallPatch closed("CloseHandle", CloseHandle);
        CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
        refused(channel, channel.map_failed);
        EXPECT_EQ(closed.count(), 1U);
        EXPECT_EQ(unmapped.count(), 0U);
        EXPECT_FALSE(section_exists(channel.section));
    });
}

// Records may overlap: only their links are read until a section is there.
TEST_F(SendFailure, TheListIsLargerThanASection) {
    constexpr size_t kStep = sizeof(void*);
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const size_t count = (size_t{1} << 32) / channel.record_size + 1;
        Bytes memory((count - 1) * kStep + channel.record_size);
        for (size_t i = 0; i + 1 < count; ++i) {
            unsigned char* next = &memory[(i + 1) * kStep];
            memcpy(&memory[i * kStep + channel.record_size - kStep], &next, kStep);
        }
        CallPatch created("CreateFileMappingA", CreateFileMappingA);
        support::clear_trace_log();
        EXPECT_EQ(channel.send(memory.data(), 0), 770U);
        EXPECT_EQ(lines(), Strings{channel.creation_failed});
        EXPECT_EQ(created.count(), 0U);
    });
}

}  // namespace
