// The decorated exports and the in-process log.
#include "fresh_facility.h"

#include "support/debug_output.h"
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlTraceLog.h"

#include <gtest/gtest.h>

#include <vector>

using support::GuardedBuffer;
using vltrace_test::FreshFacility;
using vltrace_test::kConstructor;
using vltrace_test::kDestructor;
using vltrace_test::ScopeBytes;

namespace {

using Lines = std::vector<std::string>;

class TraceLog : public ::testing::Test {
protected:
    TraceLog() { VlTraceLog_Enable(1); }
    ~TraceLog() override { VlTraceLog_Enable(0); }
    char outer_[6] = "Outer", inner_[6] = "Inner";
};

}  // namespace

TEST_F(TraceLog, IsReachedByTheNamesOfThePlatformsCompiler) {
    HMODULE dll = GetModuleHandleA("VlTrace.dll");
    const auto construct = reinterpret_cast<void* (*)(void*, unsigned long, char*)>(
        reinterpret_cast<void*>(GetProcAddress(dll, kConstructor)));
    const auto destroy =
        reinterpret_cast<void (*)(void*)>(reinterpret_cast<void*>(GetProcAddress(dll, kDestructor)));
    ASSERT_NE(construct, nullptr);
    ASSERT_NE(destroy, nullptr);
    ScopeBytes scope{};
    EXPECT_EQ(construct(&scope, 8, outer_), &scope);  // the constructor returns its object
    destroy(&scope);
    EXPECT_EQ(support::trace_log(), (Lines{">8 Outer", "<8 Outer"}));
}

TEST_F(TraceLog, StaysInsideTheCallersBytes) {
    const GuardedBuffer place(sizeof(CVlTraceFunc));
    (new (place.as<CVlTraceFunc>()) CVlTraceFunc(512, outer_))->~CVlTraceFunc();
    EXPECT_TRUE(place.untouched_from(sizeof(CVlTraceFunc)));
    EXPECT_EQ(VlTraceLog_Unbalanced(), 0u);
}

TEST_F(TraceLog, KeepsScopesAndLinesInTheirOrder) {
    {
        const CVlTraceFunc outer(512, outer_);
        VlTrace_UserDef(512, "error!!! %s %d, 0x%08x\r\n", "three", 3, 0xABCu);
        { const CVlTraceFunc inner(1024, inner_); }
        VlTrace_UserDef(8, "done\n");
    }
    EXPECT_EQ(support::trace_log(), (Lines{">512 Outer", "=512 error!!! three 3, 0x00000abc\r\n",
                                           ">1024 Inner", "<1024 Inner", "=8 done\n", "<512 Outer"}));
    EXPECT_EQ(support::trace_scopes(), (Lines{"512 Outer", "1024 Inner"}));
    EXPECT_EQ(VlTraceLog_OpenScopes(), 0u);
    EXPECT_EQ(VlTraceLog_Unbalanced(), 0u);
}

TEST_F(TraceLog, KeepsFormatsAsTheyWerePassed) {
    VlTrace_UserDef(512, "class %l\r\n", 0x110203);
    VlTrace_UserDef(512, "%ld of %d\r\n", 5L, 7);
    VlTrace_UserDef(512, "");
    EXPECT_EQ(support::trace_formats(), (Lines{"class %l\r\n", "%ld of %d\r\n", ""}));
    EXPECT_TRUE(support::has_line(support::trace_lines(), "5 of 7\r\n"));
    char format[16] = "untouched";
    const CVlTraceFunc scope(512, outer_);
    EXPECT_EQ(VlTraceLog_GetFormat(3, format, sizeof format), 0u);
    EXPECT_STREQ(format, "");
}

TEST_F(TraceLog, FormatsAsTheSystemsRuntimeDoes) {
    VlTrace_UserDef(512, "%I64u %S", 18446744073709551615ull, L"wide");
    EXPECT_EQ(support::trace_lines(), Lines{"18446744073709551615 wide"});
}

TEST_F(TraceLog, CutsALineOfMoreThanTwoThousandCharacters) {
    const std::string text(5000, 'x');
    VlTrace_UserDef(512, "%s", text.c_str());
    EXPECT_EQ(support::trace_lines(), Lines{text.substr(0, 2047)});
}

TEST_F(TraceLog, CopesWithNullNamesAndFormats) {
    {
        const CVlTraceFunc scope(512, nullptr);
        VlTrace_UserDef(512, nullptr);
    }
    EXPECT_EQ(support::trace_log(), (Lines{">512 (null)", "<512 (null)"}));
}

TEST_F(TraceLog, KeepsANameThatIsGoneWhenTheScopeIsLeft) {
    {
        const CVlTraceFunc scope(512, outer_);
        outer_[0] = 'X';
    }
    EXPECT_EQ(support::trace_log(), (Lines{">512 Outer", "<512 Outer"}));
}

TEST_F(TraceLog, AnswersWholeLengthsAndCutsToTheBuffer) {
    VlTrace_UserDef(512, "line");
    char text[9];
    memset(text, 'x', sizeof text);
    EXPECT_EQ(VlTraceLog_Get(0, nullptr, 100), 9u);
    EXPECT_EQ(VlTraceLog_Get(0, text, 0), 9u);
    EXPECT_EQ(text[0], 'x');
    EXPECT_EQ(VlTraceLog_Get(0, text, 4), 9u);
    EXPECT_STREQ(text, "=51");
    EXPECT_EQ(text[4], 'x');
    EXPECT_EQ(VlTraceLog_Get(0, text, 9), 9u);
    EXPECT_STREQ(text, "=512 lin");
    EXPECT_EQ(VlTraceLog_Get(1, text, 9), 0u);
    EXPECT_STREQ(text, "");
}

TEST_F(TraceLog, KeepsOpenScopesCountedWhenItIsCleared) {
    const CVlTraceFunc outer(512, outer_);
    VlTraceLog_Clear();
    EXPECT_EQ(VlTraceLog_Count(), 0u);
    EXPECT_EQ(VlTraceLog_OpenScopes(), 1u);
}

TEST_F(TraceLog, StartsFromZeroWhenItIsSwitchedOn) {
    {
        const CVlTraceFunc before(512, outer_);
        VlTraceLog_Enable(1);
        EXPECT_EQ(VlTraceLog_OpenScopes(), 0u);
        EXPECT_EQ(VlTraceLog_Count(), 0u);
    }
    EXPECT_EQ(VlTraceLog_Count(), 0u);
    EXPECT_EQ(VlTraceLog_Unbalanced(), 0u);
}

TEST_F(TraceLog, IgnoresAScopeThatWasEnteredWhileItWasOff) {
    VlTraceLog_Enable(0);
    {
        const CVlTraceFunc scope(512, outer_);
        VlTrace_UserDef(512, "unheard");
        VlTraceLog_Enable(1);
    }
    EXPECT_EQ(VlTraceLog_Count(), 0u);
    EXPECT_EQ(VlTraceLog_Unbalanced(), 0u);
}

TEST_F(TraceLog, ForgetsAScopeThatIsLeftWhileItIsOff) {
    {
        const CVlTraceFunc scope(512, outer_);
        VlTraceLog_Enable(0);
    }
    VlTraceLog_Enable(1);
    EXPECT_EQ(VlTraceLog_OpenScopes(), 0u);
    EXPECT_EQ(VlTraceLog_Unbalanced(), 0u);
}

TEST(TraceFacility, IsSilentByDefault) {
    const support::DebugOutput output;
    FreshFacility facility(nullptr);
    ScopeBytes scope{};
    facility.enter(scope, 512, "Scope");
    facility.write(512, "line");
    facility.leave(scope);
    EXPECT_EQ(facility.function<uint32_t()>("VlTraceLog_Count")(), 0u);
    facility.unload();
    EXPECT_EQ(output.text(), "");
}
