#include "support/call_patch.h"

#include "subject.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <shlwapi.h>

using support::CallPatch;
using support::ImportPatch;
using support::ProcAddressPatch;
using support::SleepPatch;

namespace {

HMODULE subject() { return GetModuleHandleA("Subject.dll"); }
DWORD WINAPI ticks_42() { return 42; }
DWORD WINAPI process_43() { return 43; }
BOOL WINAPI always_relative(const wchar_t*) { return 77; }

}  // namespace

TEST(ImportPatch, ReplacesAnOrdinaryImportWhileItLives) {
    {
        const ImportPatch patch(subject(), "GetTickCount", ticks_42);
        EXPECT_EQ(patch.slots(), 1u);
        EXPECT_EQ(subject_ticks(), 42u);
        EXPECT_NE(GetTickCount(), 42u);
    }
    EXPECT_NE(subject_ticks(), 42u);
}

TEST(ImportPatch, ReplacesADelayedImportBeforeAndAfterItsFirstCall) {
    for (int round = 0; round < 2; ++round) {
        {
            const ImportPatch patch(subject(), "PathIsRelativeW", always_relative);
            EXPECT_EQ(patch.slots(), 1u);
            EXPECT_EQ(subject_is_relative(L"C:\\x"), 77);
            // To call the unbound thunk would bind the slot and end the patch.
            EXPECT_EQ(patch.original<BOOL (*)(const wchar_t*)>()(L"C:\\x"), 0);
            EXPECT_EQ(subject_is_relative(L"C:\\x"), 77);
        }
        EXPECT_EQ(subject_is_relative(L"C:\\x"), 0);  // binds the real one
        EXPECT_EQ(subject_is_relative(L"x"), 1);
    }
}

TEST(ImportPatch, HasNoSlotForWhatTheModuleDoesNotImport) {
    EXPECT_EQ(ImportPatch(subject(), "PathIsRelativeA", ticks_42).slots(), 0u);
}

TEST(ProcAddressPatch, ReplacesAndHidesWhatIsResolvedAtRunTime) {
    {
        const ProcAddressPatch patch(subject(),
                                     {{"GetCurrentProcessId", reinterpret_cast<void*>(process_43)}});
        EXPECT_EQ(patch.slots(), 1u);
        EXPECT_EQ(subject_resolved_at_run_time(), 43u);
    }
    {
        const ProcAddressPatch patch(subject(), {{"GetCurrentProcessId", nullptr}});
        EXPECT_EQ(subject_resolved_at_run_time(), 0u);
    }
    EXPECT_EQ(subject_resolved_at_run_time(), GetCurrentProcessId());
}

TEST(CallPatch, ObservesCallsAndPassesThemOn) {
    const CallPatch patch("DeleteFileA", DeleteFileA, subject());
    SetLastError(0);
    EXPECT_FALSE(subject_delete_file("C:\\no such file"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    ASSERT_EQ(patch.count(), 1u);
    EXPECT_STREQ(std::get<0>(patch.calls()[0]), "C:\\no such file");
}

TEST(CallPatch, AnswersInsteadOfTheFunction) {
    CallPatch patch("DeleteFileA", DeleteFileA, subject());
    std::string deleted;
    patch.answer([&](const char* path) {
        deleted = path;
        return 7;
    });
    EXPECT_EQ(subject_delete_file("C:\\x"), 7);
    EXPECT_EQ(deleted, "C:\\x");
}

TEST(CallPatch, FailsTheNthCallOnly) {
    CallPatch patch("DeleteFileA", DeleteFileA, subject());
    patch.answer([](const char*) { return TRUE; });
    patch.fail_nth(2, FALSE, ERROR_ACCESS_DENIED);
    EXPECT_TRUE(subject_delete_file("1"));
    EXPECT_FALSE(subject_delete_file("2"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    EXPECT_TRUE(subject_delete_file("3"));
}

TEST(CallPatch, FailsFromTheNthCallOn) {
    CallPatch patch("DeleteFileA", DeleteFileA, subject());
    patch.answer([](const char*) { return TRUE; });
    patch.fail_from(2, FALSE);
    EXPECT_TRUE(subject_delete_file("1"));
    EXPECT_FALSE(subject_delete_file("2"));
    EXPECT_FALSE(subject_delete_file("3"));
}

TEST(CallPatch, KeepsPatchesOfOneSignatureApart) {
    CallPatch ticks("GetTickCount", GetTickCount, subject());
    ticks.answer([] { return DWORD{1}; });
    {
        CallPatch again("GetTickCount", GetTickCount, subject());
        again.answer([&again] { return again.real() + 10; });
        EXPECT_EQ(subject_ticks(), 11u);
    }
    EXPECT_EQ(subject_ticks(), 1u);
    EXPECT_EQ(ticks.count(), 2u);
}

TEST(CallPatch, FailsATestThatPatchesWhatTheLibraryDoesNotImport) {
    EXPECT_NONFATAL_FAILURE(CallPatch("CopyFileA", CopyFileA, GetModuleHandleA("Subject.dll")),
                            "does not import CopyFileA");
}

TEST(SleepPatch, TakesNoTimeAndKeepsTheLengths) {
    SleepPatch sleeps(subject());
    std::vector<size_t> numbers;
    sleeps.on_sleep([&numbers](size_t nth) { numbers.push_back(nth); });
    const ULONGLONG before = GetTickCount64();
    subject_wait(3600000, 2);
    EXPECT_LT(GetTickCount64() - before, 3600000u);
    EXPECT_EQ(sleeps.lengths(), (std::vector<DWORD>{3600000, 3600000}));
    EXPECT_EQ(sleeps.count(), 2u);
    EXPECT_EQ(sleeps.total(), 7200000u);
    EXPECT_EQ(numbers, (std::vector<size_t>{1, 2}));
}
