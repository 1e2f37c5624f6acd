// Taking lists: strides, the state word, ownership, and what happens when something fails.
#include "handoff_test.h"
#include "page_watch.h"

#include "VlSim.h"

namespace {

class TakeList : public HandoffTest {
protected:
    static std::vector<Bytes> taken(const ListChannel& channel) {
        return take_apart(channel.take(), channel.record_size);
    }
    static size_t stack_blocks() { return VlSim_LiveCount(VLSIM_BLOCKS); }
};

TEST_F(TakeList, GivesOneRecordAsItWasSent) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        RecordList list(channel, 1);
        const TestSection section(channel.section, list.image());
        const std::vector<Bytes> records = taken(channel);
        ASSERT_EQ(records.size(), 1U);
        EXPECT_EQ(records[0], Bytes(list.record(0), list.record(0) + channel.record_size - 8));
        EXPECT_EQ(section.state(), kTakenState);
    });
}

// Packed at the record size, read at the stride: from the second record on a list arrives shifted.
TEST_F(TakeList, ReadsTheListOfA64BitWriterShifted) {
    VlSim_SetLogging(0);
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for (const size_t count : Sizes{2, 3, 10, 1000, 50000}) {
            const Bytes image = RecordList(channel, count).image();
            const TestSection section(channel.section, image);
            EXPECT_TRUE(taken(channel) == expected_records(image, channel.record_size, channel.stride))
                << count << " records";
        }
    });
}

TEST_F(TakeList, ShiftsTheSecondRecordByFourOrEightBytes) {
    struct Row {
        const char* label;
        size_t shift;
    };
    constexpr Row kRows[] = {{"files", 4}, {"images", 4}, {"contacts", 4}, {"outlook", 8}};
    for_each_row(kRows, [&](const Row& row) {
        const ListChannel& channel = list_channel(row.label);
        RecordList list(channel, 2);
        const TestSection section(channel.section, list.image());
        const std::vector<Bytes> records = taken(channel);
        ASSERT_EQ(records.size(), 2U);
        Bytes second(list.record(1) + row.shift, list.record(1) + channel.record_size - 8);
        second.resize(channel.record_size - 8);  // the emptied link field and what lies behind it
        EXPECT_EQ(records[1], second);
    });
}

TEST_F(TakeList, StepsByTheRecordSizeUnlessA64BitWriterMarkedIt) {
    struct Row {
        const char* label;
        uint32_t state;
        bool wide;
    };
    constexpr Row kRows[] = {
        {"fresh", kFreshState, true},
        {"32-bit writer", 1, false},
        {"mark alone", 0x10000000, true},
        {"all but the mark", 0xEFFFFFFF, false},
        {"all bits", 0xFFFFFFFF, true},
        {"taken before", 2, false},
        {"taken before, marked", 0x10000002, true},
        {"zero", 0, false},
    };
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for_each_row(kRows, [&](const Row& row) {
            Bytes image = RecordList(channel, 10).image();
            put_word(image.data(), row.state);
            const TestSection section(channel.section, image);
            const size_t stride = row.wide ? channel.stride : channel.record_size;
            EXPECT_TRUE(taken(channel) == expected_records(image, channel.record_size, stride));
            EXPECT_EQ(section.state(), kTakenState);
        });
    });
}

TEST_F(TakeList, AllocatesEachRecordFromTheStack) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, RecordList(channel, 3).image());
        CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
        std::vector<void*> blocks_given;
        allocated.answer([&](uint32_t size) {
            blocks_given.push_back(allocated.real(size));
            return blocks_given.back();
        });
        void* list = channel.take();
        const auto size = static_cast<uint32_t>(channel.record_size);
        EXPECT_EQ(allocated.calls(), (std::vector<std::tuple<uint32_t>>(3, {size})));
        for (void* block : blocks_given) {
            EXPECT_EQ(list, block);
            memcpy(&list, static_cast<char*>(list) + channel.record_size - sizeof list, sizeof list);
        }
        EXPECT_EQ(list, nullptr);
        for (void* block : blocks_given) Btsdk_FreeMemory(block);
    });
}

TEST_F(TakeList, SetsTheStateBeforeItCopies) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, RecordList(channel, 2).image());
        std::vector<uint32_t> states;
        CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
        allocated.answer([&](uint32_t size) {
            states.push_back(section.state());
            return allocated.real(size);
        });
        EXPECT_EQ(taken(channel).size(), 2U);
        EXPECT_EQ(states, (std::vector<uint32_t>{kTakenState, kTakenState}));
    });
}

TEST_F(TakeList, GivesNothingForAnEmptyListButTakesIt) {
    struct Row {
        const char* label;
        uint32_t total_size;
        uint32_t count;
    };
    constexpr Row kRows[] = {{"count 0", 1644, 0}, {"total size 0", 0, 1}, {"both 0", 0, 0}};
    CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for_each_row(kRows, [&](const Row& row) {
            const Bytes image = section_image(kFreshState, row.total_size, row.count, Bytes(1632, 7));
            const TestSection section(channel.section, image);
            EXPECT_EQ(channel.take(), nullptr);
            EXPECT_EQ(section.state(), kTakenState);
        });
    });
    EXPECT_EQ(allocated.count(), 0U);
}

TEST_F(TakeList, GivesNothingSilentlyWhenNothingIsPending) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        CallPatch opened("OpenFileMappingA", OpenFileMappingA);
        std::string name;
        opened.answer([&](DWORD access, BOOL inherit, const char* section) {
            name = section;
            return opened.real(access, inherit, section);
        });
        CallPatch last_error("GetLastError", GetLastError);
        EXPECT_EQ(channel.take(), nullptr);
        EXPECT_EQ(name, channel.section);
        ASSERT_EQ(opened.count(), 1U);
        EXPECT_EQ(std::get<0>(opened.calls()[0]), DWORD{FILE_MAP_READ | FILE_MAP_WRITE});
        EXPECT_EQ(std::get<1>(opened.calls()[0]), FALSE);
        EXPECT_EQ(last_error.count(), &channel == &files() ? 1U : 0U);
    });
    EXPECT_EQ(support::trace_log(), std::vector<std::string>{});
}

TEST_F(TakeList, ClosesTheSectionThatCannotBeMapped) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, RecordList(channel, 1).image());
        CallPatch mapped("MapViewOfFile", MapViewOfFile);
        mapped.fail_nth(1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
        CallPatch closed("CloseHandle", CloseHandle);
        EXPECT_EQ(channel.take(), nullptr);
        ASSERT_EQ(mapped.count(), 1U);
        EXPECT_EQ(std::get<1>(mapped.calls()[0]), DWORD{FILE_MAP_READ | FILE_MAP_WRITE});
        ASSERT_EQ(closed.count(), 1U);
        EXPECT_EQ(std::get<0>(closed.calls()[0]), std::get<0>(mapped.calls()[0]));
        EXPECT_EQ(section.state(), kFreshState);
    });
    EXPECT_EQ(support::trace_log(), std::vector<std::string>{});
}

TEST_F(TakeList, UnmapsBeforeItCloses) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, RecordList(channel, 1).image());
        std::vector<std::string> steps;
        CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
        unmapped.answer([&](const void* view) { return steps.emplace_back("unmap"), unmapped.real(view); });
        CallPatch closed("CloseHandle", CloseHandle);
        closed.answer([&](HANDLE handle) { return steps.emplace_back("close"), closed.real(handle); });
        EXPECT_EQ(taken(channel).size(), 1U);
        EXPECT_EQ(steps, (std::vector<std::string>{"unmap", "close"}));
    });
}

TEST_F(TakeList, FreesWhatItMadeWhenMemoryRunsOut) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for (const uint32_t nth : {1U, 2U, 5U, 10U}) {
            const TestSection section(channel.section, RecordList(channel, 10).image());
            CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
            CallPatch freed("Btsdk_FreeMemory", Btsdk_FreeMemory);
            allocated.fail_nth(nth, nullptr);
            EXPECT_EQ(channel.take(), nullptr) << nth;
            EXPECT_EQ(allocated.count(), nth);
            EXPECT_EQ(freed.count(), nth - 1);
            EXPECT_EQ(section.state(), kTakenState);
        }
    });
    EXPECT_EQ(stack_blocks(), 0U);
}

TEST_F(TakeList, LooksAtEachHeaderFieldOnce) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, RecordList(channel, 2).image());
        PageWatch watch;
        CallPatch queried("VirtualQuery", VirtualQuery);
        queried.answer([&](const void* address, MEMORY_BASIC_INFORMATION* region, SIZE_T size) {
            const SIZE_T result = queried.real(address, region, size);
            watch.start(const_cast<void*>(address));
            return result;
        });
        CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
        unmapped.answer([&](const void* view) { return watch.stop(), unmapped.real(view); });
        EXPECT_EQ(taken(channel).size(), 2U);
        EXPECT_EQ(queried.count(), 1U);
        EXPECT_EQ(watch.reads(0, 4), 1U) << "state";
        EXPECT_EQ(watch.reads(4, 4), 1U) << "total size";
        EXPECT_EQ(watch.reads(8, 4), 1U) << "count";
    });
}

}  // namespace
