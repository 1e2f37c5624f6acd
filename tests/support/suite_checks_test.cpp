// A seeded leak or misuse of every kind: each must be seen, and said in words.
#include "support/suite_checks.h"

#include "support/test_window.h"

#include "subject.h"

#include "VlSDK.h"
#include "VlTrace.h"
#include "VlTraceLog.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

using support::LeakKind;
using support::SuiteChecks;

namespace {

using Texts = std::vector<std::string>;

class SuiteChecksTest : public ::testing::Test {
protected:
    void TearDown() override { checks.clean_up(); }
    SuiteChecks checks{GetModuleHandleA("Subject.dll")};
};

bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST_F(SuiteChecksTest, FindNothingWhenNothingIsLeft) { EXPECT_EQ(checks.failures(), Texts()); }

TEST_F(SuiteChecksTest, SeeEachKindOfMemory) {
    const struct {
        const char* label;
        LeakKind kind;
        void* (*leak)();
    } rows[] = {
        {"leaked 1 x heap block, 0 allowed\n  10 bytes", LeakKind::kHeapBlock, subject_leak_block},
        {"leaked 1 x task memory block, 0 allowed\n  10 bytes", LeakKind::kTaskBlock,
         subject_leak_task_block},
        {"leaked 1 x local memory block, 0 allowed\n  10 bytes", LeakKind::kLocalBlock,
         subject_leak_local_block},
        {"leaked 1 x global memory block, 0 allowed\n  10 bytes", LeakKind::kGlobalBlock,
         subject_leak_global_block},
        {"leaked 1 x system string, 0 allowed\n  8 bytes", LeakKind::kSystemString, subject_leak_string},
    };
    for (const auto& row : rows) {
        row.leak();
        EXPECT_EQ(checks.leaks(row.kind), row.label);
    }
    EXPECT_EQ(checks.failures().size(), 5u);
}

TEST_F(SuiteChecksTest, SeeAFreeOfABlockThatIsNotLive) {
    subject_free_block(malloc(1));
    EXPECT_EQ(checks.failures(), Texts{"freed 1 x a heap block that was not live"});
}

TEST_F(SuiteChecksTest, SeeASectionLeftOpenAndMapped) {
    HANDLE section =
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, "SupportSection");
    subject_leak_view(section);
    EXPECT_EQ(checks.leaks(LeakKind::kView), "leaked 1 x mapped view, 0 allowed\n  0 bytes");
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kHandle), "SupportSection"));
    EXPECT_EQ(checks.failures().size(), 2u);
    checks.clean_up();
    EXPECT_EQ(OpenFileMappingA(FILE_MAP_READ, FALSE, "SupportSection"), nullptr);
}

TEST_F(SuiteChecksTest, SeeALoadedModule) {
    subject_leak_module();
    EXPECT_EQ(checks.failures(), Texts{"leaked 1 x loaded module, 0 allowed\n  VlTrace.dll"});
}

TEST_F(SuiteChecksTest, SeeAHandle) {
    subject_leak_event();
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kHandle), "leaked 1 x kernel handle, 0 allowed\n  "));
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kHandle), "SubjectEvent"));
    checks.clean_up();
    EXPECT_EQ(checks.failures(), Texts());
}

TEST_F(SuiteChecksTest, SeeAWindow) {
    subject_leak_window();
    EXPECT_EQ(checks.leaks(LeakKind::kWindow),
              "leaked 1 x window, 0 allowed\n  class \"Static\", title \"Left behind\"");
    subject_destroy_window();
}

TEST_F(SuiteChecksTest, SeeAnOpenScopeAndAnUnbalancedOne) {
    alignas(CVlTraceFunc) char place[2][sizeof(CVlTraceFunc)];
    char outer_name[] = "Outer", inner_name[] = "Inner";
    auto outer = new (place[0]) CVlTraceFunc(512, outer_name);
    auto inner = new (place[1]) CVlTraceFunc(512, inner_name);
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kTraceScope), "leaked 2 x open trace scope, 0 allowed"));
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kTraceScope), "512 Inner in thread"));
    outer->~CVlTraceFunc();
    inner->~CVlTraceFunc();
    EXPECT_EQ(checks.failures(),
              Texts{"unbalanced trace scopes:\n  512 Outer was left before 512 Inner, entered later"});
}

TEST_F(SuiteChecksTest, SeeAnEnumerationOfTheStack) {
    const BtHandle enumeration = Btsdk_StartEnumLocalServer();
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kSdkEnumeration), "leaked 1 x stack enumeration"));
    EXPECT_EQ(checks.failures().size(), 1u);
    Btsdk_EndEnumLocalServer(enumeration);
    EXPECT_EQ(checks.failures(), Texts());
}

TEST_F(SuiteChecksTest, SeeMemoryOfTheStack) {
    void* block = Btsdk_MallocMemory(10);
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kSdkBlock), "leaked 1 x stack memory block"));
    EXPECT_EQ(checks.failures().size(), 1u);
    Btsdk_FreeMemory(block);
    EXPECT_EQ(checks.failures(), Texts());
}

TEST_F(SuiteChecksTest, SeeARegistryKeyOfTheStack) {
    HKEY key = nullptr;
    Btsdk_RegOpenKey(HKEY_CURRENT_USER, "Software", &key);
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kSdkKey), "leaked 1 x registry key of the stack"));
    EXPECT_EQ(checks.leaks(LeakKind::kSdkFile), "");
    Btsdk_RegCloseKey(key);
    EXPECT_EQ(checks.failures(), Texts());
}

TEST_F(SuiteChecksTest, SeeAFileOfTheStack) {
    HANDLE file = Btsdk_CreateFile("C:\\support.tmp", GENERIC_WRITE, CREATE_ALWAYS, 0, nullptr);
    EXPECT_TRUE(contains(checks.leaks(LeakKind::kSdkFile), "leaked 1 x file of the stack"));
    EXPECT_EQ(checks.leaks(LeakKind::kSdkKey), "");
    Btsdk_CloseHandle(file);
    DeleteFileA("C:\\support.tmp");
    EXPECT_EQ(checks.failures(), Texts());
}

TEST_F(SuiteChecksTest, SeeMisuseOfTheStack) {
    void* block = Btsdk_MallocMemory(10);
    Btsdk_FreeMemory(block);
    Btsdk_FreeMemory(block);
    EXPECT_TRUE(contains(checks.sdk_misuse(), "misuse of the stack:\n  "));
    EXPECT_EQ(checks.failures().size(), 1u);
}

TEST_F(SuiteChecksTest, ExpectExactlyTheAllowedLeaks) {
    EXPECT_TRUE(checks.allow("guarded send after a fault"));
    EXPECT_EQ(checks.failures().size(), 2u);  // they must be there
    HANDLE section = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, nullptr);
    subject_leak_view(section);
    EXPECT_EQ(checks.failures(), Texts());
    subject_leak_event();
    EXPECT_TRUE(contains(checks.failures().at(0), "leaked 2 x kernel handle, 1 allowed"));
}

TEST_F(SuiteChecksTest, KnowOnlyListedLeaks) { EXPECT_FALSE(checks.allow("no such row")); }

TEST_F(SuiteChecksTest, AllowALeakSeveralTimes) {
    EXPECT_TRUE(checks.allow("guarded send after a fault", 2));
    EXPECT_EQ(checks.leaks(LeakKind::kView), "leaked 0 x mapped view, 2 allowed");
}
