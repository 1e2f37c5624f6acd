// Scopes that are not left as they were entered, and many threads at once.
#include "fresh_facility.h"

#include "support/trace_log.h"

#include "VlTraceLog.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <vector>

using vltrace_test::ScopeBytes;

namespace {

using Lines = std::vector<std::string>;

char g_outer[] = "Outer", g_inner[] = "Inner";

CVlTraceFunc* enter(ScopeBytes& place, char* name) { return new (&place) CVlTraceFunc(512, name); }
void leave(ScopeBytes& place) { reinterpret_cast<CVlTraceFunc*>(&place)->~CVlTraceFunc(); }

void in_another_thread(std::function<void()> body) {
    const auto run = [](void* b) -> DWORD {
        (*static_cast<std::function<void()>*>(b))();
        return 0;
    };
    HANDLE thread = CreateThread(nullptr, 0, run, &body, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

Lines reports() {
    Lines lines;
    for (uint32_t i = 0; i < VlTraceLog_Unbalanced(); ++i) {
        char text[200];
        VlTraceLog_GetReport(i, text, sizeof text);
        lines.emplace_back(text);
    }
    return lines;
}

std::string open_scope(uint32_t index) {
    char text[200];
    VlTraceLog_GetOpenScope(index, text, sizeof text);
    return text;
}

class ScopeBalance : public ::testing::Test {
protected:
    ScopeBalance() { VlTraceLog_Enable(1); }
    ~ScopeBalance() override { VlTraceLog_Enable(0); }
    ScopeBytes outer_{}, inner_{};
};

}  // namespace

TEST_F(ScopeBalance, NamesTheOpenScopesInnermostLast) {
    enter(outer_, g_outer);
    enter(inner_, g_inner);
    const std::string thread = " in thread " + std::to_string(GetCurrentThreadId());
    EXPECT_EQ(VlTraceLog_OpenScopes(), 2u);
    EXPECT_EQ(open_scope(0), "512 Outer" + thread);
    EXPECT_EQ(open_scope(1), "512 Inner" + thread);
    EXPECT_EQ(open_scope(2), "");
    leave(inner_);
    leave(outer_);
    EXPECT_EQ(VlTraceLog_OpenScopes(), 0u);
    EXPECT_EQ(reports(), Lines());
}

TEST_F(ScopeBalance, ReportsAScopeLeftTwice) {
    enter(outer_, g_outer);
    leave(outer_);
    leave(outer_);
    EXPECT_EQ(reports(), Lines{"a scope was left twice"});
    EXPECT_EQ(VlTraceLog_Count(), 2u);
}

TEST_F(ScopeBalance, ReportsAScopeThatWasNeverEntered) {
    leave(outer_);
    EXPECT_EQ(reports(), Lines{"a scope was left that was never entered"});
    EXPECT_EQ(VlTraceLog_Count(), 0u);
}

TEST_F(ScopeBalance, ReportsACopyThatIsLeft) {
    enter(outer_, g_outer);
    ScopeBytes copy = outer_;
    leave(outer_);
    leave(copy);
    EXPECT_EQ(reports(), Lines{"a copy of a scope was left"});
}

TEST_F(ScopeBalance, ReportsScopesLeftInAnotherOrder) {
    enter(outer_, g_outer);
    enter(inner_, g_inner);
    leave(outer_);
    EXPECT_EQ(VlTraceLog_OpenScopes(), 1u);
    leave(inner_);
    EXPECT_EQ(reports(), Lines{"512 Outer was left before 512 Inner, entered later"});
    EXPECT_EQ(VlTraceLog_OpenScopes(), 0u);
}

TEST_F(ScopeBalance, ReportsAScopeLeftByAnotherThread) {
    enter(outer_, g_outer);
    in_another_thread([this] { leave(outer_); });
    EXPECT_EQ(reports(), Lines{"512 Outer was left by another thread than entered it"});
    EXPECT_EQ(VlTraceLog_OpenScopes(), 0u);
}

TEST_F(ScopeBalance, ReportsAScopeThatWasAbandoned) {
    enter(outer_, g_outer);
    enter(outer_, g_inner);  // at the same place: the first one's function is gone
    EXPECT_EQ(reports(), Lines{"512 Outer was abandoned: its function ended without leaving it"});
    EXPECT_EQ(VlTraceLog_OpenScopes(), 1u);
    leave(outer_);
    EXPECT_EQ(VlTraceLog_OpenScopes(), 0u);
}

TEST_F(ScopeBalance, ReportsAScopeThatIsOpenWhenItsThreadEnds) {
    in_another_thread([this] { enter(outer_, g_outer); });
    EXPECT_EQ(reports(), Lines{"512 Outer was open when its thread ended"});
    EXPECT_EQ(VlTraceLog_OpenScopes(), 1u);
    EXPECT_EQ(open_scope(0), "512 Outer in an ended thread");
}

TEST_F(ScopeBalance, ForgetsReportsWhenItStartsAgain) {
    leave(outer_);
    VlTraceLog_Enable(1);
    EXPECT_EQ(reports(), Lines());
}

TEST_F(ScopeBalance, CountsNothingWhileItIsOff) {
    VlTraceLog_Enable(0);
    leave(outer_);
    EXPECT_EQ(reports(), Lines());
}

TEST_F(ScopeBalance, KeepsTheScopesOfThreadsApart) {
    enter(outer_, g_outer);
    in_another_thread([] {
        ScopeBytes own{};
        enter(own, g_inner);
        leave(own);
    });
    leave(outer_);
    EXPECT_EQ(reports(), Lines());
}

TEST_F(ScopeBalance, CountsEveryEntryOfManyThreadsAtOnce) {
    constexpr int kThreads = 4, kRounds = 20000;
    const auto run = [](void* start) -> DWORD {
        WaitForSingleObject(start, INFINITE);
        for (int i = 0; i < kRounds; ++i) {
            const CVlTraceFunc scope(512, g_outer);
            VlTrace_UserDef(512, "round %d", i);
        }
        return 0;
    };
    HANDLE start = CreateEventA(nullptr, TRUE, FALSE, nullptr), threads[kThreads];
    for (HANDLE& thread : threads) thread = CreateThread(nullptr, 0, run, start, 0, nullptr);
    SetEvent(start);
    WaitForMultipleObjects(kThreads, threads, TRUE, INFINITE);
    for (HANDLE thread : threads) CloseHandle(thread);
    CloseHandle(start);
    EXPECT_EQ(VlTraceLog_Count(), 3u * kThreads * kRounds);
    EXPECT_EQ(VlTraceLog_OpenScopes(), 0u);
    EXPECT_EQ(reports(), Lines());
}
