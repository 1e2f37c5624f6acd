#include "support/block_ledger.h"

#include "subject.h"

#include <gtest/gtest.h>
#include <objbase.h>
#include <stdlib.h>

using support::BlockLedger;
using support::LeakKind;

namespace {

HMODULE subject() { return GetModuleHandleA("Subject.dll"); }

// A section of one page in the page file, closed at the end.
class Section {
public:
    Section()
        : handle_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, nullptr)) {}
    ~Section() { CloseHandle(handle_); }
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;
    [[nodiscard]] HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

struct SeededLeak {
    const char* label;
    LeakKind kind;
    void* (*leak)();
};
const SeededLeak kSeededLeaks[] = {
    {"malloc", LeakKind::kHeapBlock, subject_leak_block},
    {"new", LeakKind::kHeapBlock, subject_leak_object},
    {"HeapAlloc", LeakKind::kHeapBlock, subject_leak_heap_block},
    {"CoTaskMemAlloc", LeakKind::kTaskBlock, subject_leak_task_block},
    {"LocalAlloc", LeakKind::kLocalBlock, subject_leak_local_block},
    {"GlobalAlloc", LeakKind::kGlobalBlock, subject_leak_global_block},
    {"SysAllocString", LeakKind::kSystemString, subject_leak_string},
};

}  // namespace

TEST(BlockLedger, SeesNothingInBalancedCalls) {
    BlockLedger ledger(subject());
    subject_balanced_blocks();
    subject_balanced_other_memory();
    for (int kind = 0; kind < static_cast<int>(LeakKind::kCount); ++kind) {
        EXPECT_EQ(ledger.live(static_cast<LeakKind>(kind)), 0u) << kind;
    }
    EXPECT_EQ(ledger.wrong_frees(), 0u);
    EXPECT_EQ(ledger.allocations(), 9u);
}

TEST(BlockLedger, SeesASeededLeakOfEachKindOfMemory) {
    for (const SeededLeak& row : kSeededLeaks) {
        SCOPED_TRACE(row.label);
        BlockLedger ledger(subject());
        ASSERT_NE(row.leak(), nullptr);
        EXPECT_EQ(ledger.live(row.kind), 1u);
        ledger.release_all(row.kind);
        EXPECT_EQ(ledger.live(row.kind), 0u);
    }
}

TEST(BlockLedger, SeesAViewThatIsLeftMappedAndTakesItAway) {
    const Section section;
    BlockLedger ledger(subject());
    void* view = subject_leak_view(section.get());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(ledger.live(LeakKind::kView), 1u);
    ledger.release_all(LeakKind::kView);
    MEMORY_BASIC_INFORMATION left{};
    VirtualQuery(view, &left, sizeof left);
    EXPECT_EQ(left.State, static_cast<DWORD>(MEM_FREE));
}

TEST(BlockLedger, CountsEachLoadOfAModule) {
    BlockLedger ledger(subject());
    subject_leak_module();
    HMODULE twice = subject_leak_module();
    EXPECT_EQ(ledger.live(LeakKind::kModule), 2u);
    FreeLibrary(twice);
    EXPECT_EQ(ledger.describe(LeakKind::kModule), std::vector<std::string>{"VlTrace.dll"});
    ledger.release_all(LeakKind::kModule);
    EXPECT_EQ(ledger.live(LeakKind::kModule), 0u);
}

TEST(BlockLedger, LeavesTheSystemsOwnModulesOut) {
    BlockLedger ledger(subject());
    HMODULE loaded = subject_leak_system_module();
    EXPECT_NE(loaded, nullptr);
    EXPECT_EQ(ledger.live(LeakKind::kModule), 0u);
    FreeLibrary(loaded);
}

TEST(BlockLedger, AcceptsThatTheTestGivesBackWhatItWasHanded) {
    BlockLedger ledger(subject());
    CoTaskMemFree(subject_leak_task_block());
    LocalFree(subject_leak_local_block());
    EXPECT_EQ(ledger.live(LeakKind::kTaskBlock), 0u);
    EXPECT_EQ(ledger.live(LeakKind::kLocalBlock), 0u);
}

TEST(BlockLedger, CountsAFreeOfABlockThatIsNotLive) {
    void* never_noted = malloc(4);
    BlockLedger ledger(subject());
    subject_free_block(never_noted);
    EXPECT_EQ(ledger.wrong_frees(), 1u);
    subject_free_block(nullptr);
    EXPECT_EQ(ledger.wrong_frees(), 1u);
}

TEST(BlockLedger, MakesTheChosenAllocationsFail) {
    BlockLedger ledger(subject());
    const auto four_results = [] {
        std::string results;
        for (int i = 0; i < 4; ++i) results += subject_allocation_works() ? 'y' : 'n';
        return results;
    };
    EXPECT_EQ(four_results(), "yyyy");
    ledger.fail_every(2);
    EXPECT_EQ(four_results(), "ynyn");
    ledger.fail_nth(3);
    EXPECT_EQ(four_results(), "yyny");
    ledger.fail_from(2);
    EXPECT_EQ(four_results(), "ynnn");
    ledger.fail_nth(0);
    EXPECT_EQ(four_results(), "yyyy");
}

TEST(BlockLedger, MakesEveryAllocatorFail) {
    BlockLedger ledger(subject());
    ledger.fail_from(1);
    for (const SeededLeak& row : kSeededLeaks) EXPECT_EQ(row.leak(), nullptr) << row.label;
    EXPECT_EQ(ledger.allocations(), std::size(kSeededLeaks));
}
