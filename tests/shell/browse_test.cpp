// Handing a list to the program that opens a folder window on it.
#include "shell_scene.h"

#include "support/guarded_buffer.h"

using namespace shell_test;

namespace {

const Bytes kList = list_of({kRootItem, bytes_of(kPhoneItem)});
const Lines kScopes = {">512 VlCm_BrowseFolder", ">512 VlCm_GetInstallDir", "<512 VlCm_GetInstallDir",
                       "<512 VlCm_BrowseFolder"};

Lines refused(const std::string& line) {
    return {">512 VlCm_BrowseFolder", "=512 " + line, "<512 VlCm_BrowseFolder"};
}

class BrowseFolder : public ShellTest {
protected:
    static void browse() { VlCm_BrowseFolder(as_list(kList)); }

    support::CallPatch<decltype(CreateFileMappingA)> created_{"CreateFileMappingA", CreateFileMappingA};
    support::CallPatch<decltype(MapViewOfFile)> mapped_{"MapViewOfFile", MapViewOfFile};
};

// The section made by somebody else, whose name alone is the lock.
class PendingHandOff {
public:
    PendingHandOff()
        : section_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, kSection)) {}
    ~PendingHandOff() { CloseHandle(section_); }
    PendingHandOff(const PendingHandOff&) = delete;
    PendingHandOff& operator=(const PendingHandOff&) = delete;

private:
    HANDLE section_;
};

}  // namespace

TEST_F(BrowseFolder, HandsOverStateSizeAndList) {
    browse();
    const auto size = static_cast<uint32_t>(kList.size());
    EXPECT_EQ(handed, (std::vector<HandedOver>{{1, size, kList}}));
    EXPECT_EQ(support::trace_log(), kScopes);
    EXPECT_FALSE(section_exists());
}

TEST_F(BrowseFolder, BlockIsEightBytesLargerThanTheList) {
    struct Row {
        const char* label;
        Bytes list;
        DWORD size;
    };
    const Row rows[] = {
        {"terminator alone", list_of({}), 10},
        {"one small item", kRoot, 18},
        {"device", kList, 132},
        {"largest item", list_of({Bytes(0xFFFF, 0xFF)}), 0xFFFF + 10},
    };
    support::for_each_row(rows, [&](const Row& row) {
        handed.clear();
        VlCm_BrowseFolder(as_list(row.list));
        EXPECT_EQ(std::get<4>(created_.calls().back()), row.size);
        EXPECT_EQ(handed, (std::vector<HandedOver>{{1, row.size - 8, row.list}}));
    });
}

TEST_F(BrowseFolder, MakesAndMapsTheSectionAsAgreed) {
    std::string made;
    created_.answer(
        [&](HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protect, DWORD high, DWORD low, LPCSTR name) {
            made = name;
            return created_.real(file, security, protect, high, low, name);
        });
    browse();
    EXPECT_EQ(made, kSection);
    ASSERT_EQ(created_.count(), 1U);
    const auto [file, security, protect, high, low, name] = created_.calls()[0];
    EXPECT_EQ(
        std::make_tuple(file, security, protect, high),
        std::make_tuple(INVALID_HANDLE_VALUE, LPSECURITY_ATTRIBUTES{}, DWORD{PAGE_READWRITE}, DWORD{0}));
    ASSERT_EQ(mapped_.count(), 1U);
    EXPECT_EQ(std::get<1>(mapped_.calls()[0]), DWORD{FILE_MAP_READ | FILE_MAP_WRITE});
}

TEST_F(BrowseFolder, ReadsNothingBehindTheList) {
    support::GuardedBuffer buffer(kList.size());
    memcpy(buffer.as(), kList.data(), kList.size());
    VlCm_BrowseFolder(buffer.as<ITEMIDLIST>());
    ASSERT_EQ(handed.size(), 1U);
    EXPECT_EQ(handed[0].list, kList);
}

TEST_F(BrowseFolder, StartsTheExecutionModuleInTheInstallationFolder) {
    browse();
    settings().common("General", "InstallDir", "D:\\Other");
    browse();
    const std::string word = "QVN_VLEXECUTEMODULE_BROWSEFTPFOLDER";
    EXPECT_EQ(starts, (std::vector<Start>{{nullptr, "open", "VlExecuteModule.exe", word, "C:\\Veltrin\\", 4},
                                          {nullptr, "open", "VlExecuteModule.exe", word, "D:\\Other\\", 4}}));
}

TEST_F(BrowseFolder, NullDoesNothing) {
    VlCm_BrowseFolder(nullptr);
    EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_BrowseFolder", "<512 VlCm_BrowseFolder"}));
    EXPECT_EQ(created_.count(), 0U);
    EXPECT_TRUE(starts.empty());
}

TEST_F(BrowseFolder, AHelperThatTookTheListBeforeTheFirstLookIsNotWaitedFor) {
    on_start = [] { OpenSection().set_state(2); };
    browse();
    EXPECT_EQ(sleeps.count(), 0U);
}

TEST_F(BrowseFolder, LooksAgainEvery100MillisecondsUntilTheListIsTaken) {
    for (const size_t rounds : {size_t{1}, size_t{5}, size_t{19}, size_t{20}}) {
        const size_t before = sleeps.count();
        sleeps.on_sleep([&](size_t nth) {
            EXPECT_EQ(OpenSection().read().state, 1U);
            if (nth - before == rounds) OpenSection().set_state(2);
        });
        browse();
        EXPECT_EQ(sleeps.count() - before, rounds);
    }
    EXPECT_EQ(sleeps.lengths(), std::vector<DWORD>(45, 100));
}

TEST_F(BrowseFolder, AHelperThatNeverAnswersIsGivenUpAfter20Looks) {
    HandedOver last{};
    sleeps.on_sleep([&](size_t) { last = OpenSection().read(); });
    browse();
    EXPECT_EQ(last, (HandedOver{1, static_cast<uint32_t>(kList.size()), kList}));
    EXPECT_EQ(sleeps.lengths(), std::vector<DWORD>(20, 100));
    EXPECT_FALSE(section_exists());
    EXPECT_EQ(support::trace_log(), kScopes);
}

TEST_F(BrowseFolder, AnyOtherStateCountsALookWithoutSleeping) {
    for (const uint32_t state : {0U, 3U, 0x10000001U, 0x10000002U, 0xFFFFFFFFU}) {
        const size_t before = sleeps.count();
        on_start = [state] { OpenSection().set_state(state); };
        sleeps.on_sleep([](size_t) { FAIL() << "it sleeps"; });
        browse();
        EXPECT_EQ(sleeps.count(), before) << state;
        // After three sleeps the other 17 looks take no time.
        on_start = nullptr;
        sleeps.on_sleep([&](size_t nth) {
            if (nth - before == 3) OpenSection().set_state(state);
        });
        browse();
        EXPECT_EQ(sleeps.count() - before, 3U) << state;
    }
}

TEST_F(BrowseFolder, AProgramThatDoesNotStartIsWaitedForAllTheSame) {
    support::CallPatch start("ShellExecuteA", ShellExecuteA);
    start.fail_from(1, reinterpret_cast<HINSTANCE>(SE_ERR_FNF));
    sleeps.on_sleep(nullptr);
    browse();
    EXPECT_EQ(start.count(), 1U);
    EXPECT_EQ(sleeps.count(), 20U);
    EXPECT_EQ(support::trace_log(), kScopes);
}

TEST_F(BrowseFolder, IsRefusedWhileAnotherOneIsPending) {
    const PendingHandOff pending;
    browse();
    EXPECT_EQ(support::trace_log(), refused("Error! A same name memory file already exists!!!!!!!!\r\n"));
    EXPECT_EQ(mapped_.count(), 0U);
    EXPECT_TRUE(starts.empty());
    EXPECT_EQ(sleeps.count(), 0U);
}

TEST_F(BrowseFolder, OfTwoAtOnceOnlyTheFirstIsHandedOver) {
    on_start = [this] {
        on_start = nullptr;
        support::clear_trace_log();
        VlCm_BrowseFolder(as_list(kRoot));
        EXPECT_EQ(support::trace_log(), refused("Error! A same name memory file already exists!!!!!!!!\r\n"));
    };
    browse();
    EXPECT_EQ(starts.size(), 1U);
    ASSERT_EQ(handed.size(), 1U);
    EXPECT_EQ(handed[0].list, kList);
    browse();  // the name is free again
    EXPECT_EQ(starts.size(), 2U);
}

TEST_F(BrowseFolder, BlockLivesOnWhileTheHelperHoldsIt) {
    std::optional<OpenSection> held;
    on_start = [&] { held.emplace(); };
    browse();
    EXPECT_EQ(held->read().list, kList);
    support::clear_trace_log();
    browse();
    EXPECT_EQ(support::trace_log(), refused("Error! A same name memory file already exists!!!!!!!!\r\n"));
    held.reset();
    on_start = nullptr;
    browse();
    EXPECT_EQ(starts.size(), 2U);
}

TEST_F(BrowseFolder, ASectionThatCannotBeMadeIsTraced) {
    created_.fail_nth(1, HANDLE{}, ERROR_NOT_ENOUGH_MEMORY);
    browse();
    EXPECT_EQ(support::trace_log(), refused("Error! Can not create memory file!!!!!!!!\r\n"));
    EXPECT_EQ(mapped_.count(), 0U);
    EXPECT_TRUE(starts.empty());
}

TEST_F(BrowseFolder, ASectionThatCannotBeMappedIsTracedAndClosed) {
    mapped_.fail_nth(1, static_cast<void*>(nullptr), ERROR_NOT_ENOUGH_MEMORY);
    browse();
    EXPECT_EQ(support::trace_log(), refused("Error! Can not map view of the memory file!!!!!!!!\r\n"));
    EXPECT_TRUE(starts.empty());
    EXPECT_FALSE(section_exists());
}
