// One remote file's record, handed to the tray agent for its property sheet.
#include "handoff_test.h"
#include "page_watch.h"
#include "support/guarded_buffer.h"
#include "taken_states.h"

#include "VlSim.h"

#include <string.h>

namespace {

using Strings = std::vector<std::string>;

constexpr char kSection[] = "SHARE_MEM_FTPFILEDATA";
constexpr size_t kSectionBytes = 876;
constexpr size_t kRecordOffset = 8;

VlRemoteFileRecord sample_record() {
    VlRemoteFileRecord record{};
    for (size_t i = 0; i < sizeof record.data; ++i)
        record.data[i] = static_cast<uint8_t>(i * 7 + i / 256 + 1);
    return record;
}

Bytes property_image(uint32_t state, uint32_t total_size, const VlRemoteFileRecord& record) {
    Bytes image(kSectionBytes);
    put_word(image.data(), state);
    put_word(&image[4], total_size);
    memcpy(&image[kRecordOffset], &record, sizeof record);
    return image;
}

class FileProperty : public HandoffTest {
protected:
    const VlRemoteFileRecord record = sample_record();
};

using ShowFileProperty = FileProperty;

TEST_F(ShowFileProperty, WritesStateSizeAndRecord) {
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    Bytes section;
    on_wake_up = [&] { section = read_section(kSection, kSectionBytes); };
    EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 0U);
    EXPECT_TRUE(section == property_image(1, 876, record));
    ASSERT_EQ(created.count(), 1U);
    EXPECT_EQ(std::get<0>(created.calls()[0]), INVALID_HANDLE_VALUE);
    EXPECT_EQ(std::get<2>(created.calls()[0]), DWORD{PAGE_READWRITE});
    EXPECT_EQ(std::get<3>(created.calls()[0]), 0U);
    EXPECT_EQ(std::get<4>(created.calls()[0]), kSectionBytes);
    EXPECT_FALSE(section_exists(kSection));
}

TEST_F(ShowFileProperty, ReadsNothingBehindTheRecord) {
    support::GuardedBuffer buffer(sizeof record);
    memcpy(buffer.as(), &record, sizeof record);
    EXPECT_EQ(VlCm_ShowFTPFileProperty(buffer.as<VlRemoteFileRecord>(), 0), 0U);
    EXPECT_EQ(relay.count(), 1U);
}

TEST_F(ShowFileProperty, RefusesANullRecordBeforeItAsksTheStack) {
    VlSim_Patch(R"({"ready": false})");
    VlSim_ClearLog();
    EXPECT_EQ(VlCm_ShowFTPFileProperty(nullptr, 5), 773U);
    EXPECT_EQ(VlSim_CallCount(nullptr), 0U);
    EXPECT_EQ(foreground.count() + relay.count() + sleeps.count(), 0U);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(ShowFileProperty, NeedsAStackThatIsExactlyReady) {
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    CallPatch ready("Btsdk_IsBluetoothReady", Btsdk_IsBluetoothReady);
    for (const uint8_t answer : {uint8_t{0}, uint8_t{2}, uint8_t{0xFF}}) {
        ready.answer([=] { return answer; });
        EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 784U) << int{answer};
    }
    EXPECT_EQ(created.count() + foreground.count() + relay.count(), 0U);
    ready.answer([] { return uint8_t{1}; });
    EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 0U);
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(ShowFileProperty, BringsTheAgentToTheFrontBeforeItMakesTheSection) {
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    created.answer([&](auto... arguments) {
        EXPECT_EQ(foreground.count(), 1U);
        return created.real(arguments...);
    });
    EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 0U);
    ASSERT_EQ(created.count(), 1U);
    EXPECT_EQ(std::get<0>(foreground.calls().at(0)), tray);
    EXPECT_STREQ(std::get<1>(find_window.calls().at(0)), "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}");
}

TEST_F(ShowFileProperty, LiftsNothingWhenTheAgentIsAbsent) {
    tray = nullptr;
    EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 0U);
    EXPECT_EQ(foreground.count(), 0U);
    EXPECT_EQ(relay.count(), 1U);
}

TEST_F(ShowFileProperty, WakesTheAgentWithTheParameter) {
    for (const uint32_t parameter : {0U, 5U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, parameter), 0U);
        EXPECT_EQ(relay.calls().back(), std::make_tuple(0x43060205U, parameter));
    }
    EXPECT_EQ(support::trace_scopes(), Strings(4, "512 VlCm_PostMsg2Vltray"));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(ShowFileProperty, WaitsAlsoWhenTheWakeUpFails) {
    relay.fail_from(1, 1U);
    EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 0U);
    EXPECT_EQ(sleeps.lengths(), std::vector<DWORD>(20, 100));
}

TEST_F(ShowFileProperty, SleepsWhileTheStateIsOne) {
    expect_sleeps_while_the_state_is_one(on_wake_up, sleeps,
                                         [&] { return VlCm_ShowFTPFileProperty(&record, 5); });
}

TEST_F(ShowFileProperty, UnmapsBeforeItCloses) {
    Strings steps;
    CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
    unmapped.answer([&](const void* view) { return steps.emplace_back("unmap"), unmapped.real(view); });
    CallPatch closed("CloseHandle", CloseHandle);
    closed.answer([&](HANDLE handle) { return steps.emplace_back("close"), closed.real(handle); });
    EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 0U);
    EXPECT_EQ(steps, (Strings{"unmap", "close"}));
}

class ShowFilePropertyFailure : public FileProperty {
protected:
    void refused() {
        EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 770U);
        EXPECT_EQ(foreground.count(), 1U);
        EXPECT_EQ(relay.count() + sleeps.count(), 0U);
        EXPECT_TRUE(support::trace_log().empty());
    }
};

TEST_F(ShowFilePropertyFailure, SectionCannotBeCreated) {
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    created.fail_nth(1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    refused();
}

TEST_F(ShowFilePropertyFailure, AnEarlierRecordIsPending) {
    const TestSection pending(kSection, kSectionBytes);
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    CallPatch closed("CloseHandle", CloseHandle);
    refused();
    EXPECT_EQ(mapped.count(), 0U);
    EXPECT_EQ(closed.count(), 1U);
    EXPECT_EQ(pending.state(), 0U);
}

TEST_F(ShowFilePropertyFailure, AnObjectOfAnotherKindHoldsTheName) {
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, kSection);
    refused();
    CloseHandle(event);
}

TEST_F(ShowFilePropertyFailure, ViewCannotBeMapped) {
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    mapped.fail_nth(1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    CallPatch closed("CloseHandle", CloseHandle);
    refused();
    EXPECT_EQ(closed.count(), 1U);
    EXPECT_FALSE(section_exists(kSection));
}

class TakeFileProperty : public FileProperty {
protected:
    // Takes the record, compares its bytes, frees it.
    static void expect_taken(const Bytes& expected) {
        VlRemoteFileRecord* taken = VlCm_GetFTPFileData();
        ASSERT_NE(taken, nullptr);
        EXPECT_EQ(memcmp(taken, expected.data(), sizeof *taken), 0);
        Btsdk_FreeMemory(taken);
    }
    static Bytes record_bytes(const Bytes& image) {
        return Bytes(image.begin() + kRecordOffset, image.begin() + kSectionBytes);
    }
};

TEST_F(TakeFileProperty, GivesTheWholeRecordInTheStacksMemory) {
    const Bytes image = property_image(1, 876, record);
    const TestSection section(kSection, image);
    CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
    expect_taken(record_bytes(image));
    EXPECT_EQ(section.state(), kTakenState);
    ASSERT_EQ(allocated.count(), 1U);
    EXPECT_EQ(std::get<0>(allocated.calls()[0]), 868U);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(TakeFileProperty, SetsTheStateBeforeItAllocates) {
    const TestSection section(kSection, property_image(1, 876, record));
    CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
    uint32_t state = 0;
    allocated.answer([&](uint32_t size) {
        state = section.state();
        return allocated.real(size);
    });
    Btsdk_FreeMemory(VlCm_GetFTPFileData());
    EXPECT_EQ(state, kTakenState);
}

TEST_F(TakeFileProperty, TakesAnyStateAndAnySizeButNone) {
    for (const uint32_t state : {0U, 1U, 2U, kFreshState, 0xFFFFFFFFU}) {
        for (const uint32_t size : {1U, 875U, 876U, 0x80000000U, 0xFFFFFFFFU}) {
            const Bytes image = property_image(state, size, record);
            const TestSection section(kSection, image);
            expect_taken(record_bytes(image));
            EXPECT_EQ(section.state(), kTakenState);
        }
    }
}

TEST_F(TakeFileProperty, GivesNothingForTheSizeNothingButTakesIt) {
    const TestSection section(kSection, property_image(1, 0, record));
    CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
    EXPECT_EQ(VlCm_GetFTPFileData(), nullptr);
    EXPECT_EQ(allocated.count(), 0U);
    EXPECT_EQ(section.state(), kTakenState);
}

TEST_F(TakeFileProperty, GivesNothingWhenNothingIsPending) {
    CallPatch opened("OpenFileMappingA", OpenFileMappingA);
    EXPECT_EQ(VlCm_GetFTPFileData(), nullptr);
    EXPECT_TRUE(support::trace_log().empty());
    ASSERT_EQ(opened.count(), 1U);
    EXPECT_EQ(std::get<0>(opened.calls()[0]), DWORD{FILE_MAP_READ | FILE_MAP_WRITE});
    EXPECT_STREQ(std::get<2>(opened.calls()[0]), kSection);
}

TEST_F(TakeFileProperty, GivesNothingWhenTheSectionCannotBeMapped) {
    const TestSection section(kSection, property_image(1, 876, record));
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    mapped.fail_nth(1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    CallPatch closed("CloseHandle", CloseHandle);
    EXPECT_EQ(VlCm_GetFTPFileData(), nullptr);
    EXPECT_EQ(closed.count(), 1U);
    EXPECT_EQ(section.state(), 1U);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(TakeFileProperty, GivesNothingWithoutMemoryButTakesIt) {
    const TestSection section(kSection, property_image(1, 876, record));
    VlSim_Fail("Btsdk_MallocMemory", 1, 0);
    EXPECT_EQ(VlCm_GetFTPFileData(), nullptr);
    EXPECT_EQ(section.state(), kTakenState);
}

TEST_F(TakeFileProperty, TakesNothingFromMemoryThatIsNotCommitted) {
    const TestSection section(kSection, 16 * kPageBytes, SEC_RESERVE);
    EXPECT_EQ(VlCm_GetFTPFileData(), nullptr);
    ASSERT_NE(VirtualAlloc(section.view(), kPageBytes, MEM_COMMIT, PAGE_READWRITE), nullptr);
    EXPECT_EQ(section.state(), 0U) << "nothing was written either";
}

TEST_F(TakeFileProperty, TakesNothingFromMemoryThatCanOnlyBeRead) {
    const Bytes image = property_image(1, 876, record);
    const ReadOnlySection section(kSection, image);
    EXPECT_EQ(VlCm_GetFTPFileData(), nullptr);
    EXPECT_TRUE(read_section(kSection, image.size()) == image);
}

TEST_F(TakeFileProperty, ReadsTheSizeOnce) {
    PageWatch watch;
    CallPatch queried("VirtualQuery", VirtualQuery);
    queried.answer([&](const void* address, MEMORY_BASIC_INFORMATION* region, SIZE_T size) {
        const SIZE_T result = queried.real(address, region, size);
        watch.start(const_cast<void*>(address));
        return result;
    });
    CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
    unmapped.answer([&](const void* address) { return watch.stop(), unmapped.real(address); });
    const TestSection section(kSection, property_image(1, 0, record));
    EXPECT_EQ(VlCm_GetFTPFileData(), nullptr);
    ASSERT_EQ(watch.accesses().size(), 2U);
    EXPECT_TRUE(watch.accesses()[0].write) << "the state first";
    EXPECT_EQ(watch.accesses()[1].offset, 4U);
    EXPECT_FALSE(watch.accesses()[1].write);
}

// Sender and receiver in one program: the receiver takes the record in the wake-up.
TEST_F(TakeFileProperty, TakesWhatIsShown) {
    on_wake_up = [&] {
        const Bytes image = property_image(1, 876, record);
        expect_taken(record_bytes(image));
    };
    EXPECT_EQ(VlCm_ShowFTPFileProperty(&record, 5), 0U);
    EXPECT_EQ(relay.count(), 1U);
    EXPECT_EQ(sleeps.count(), 0U);
}

}  // namespace
