// The structured-exception guard and its report.
#include "frame/guard.h"

#include "support/debug_output.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace {

constexpr char kHandlerLine[] = "handler line\r\n";

std::string report(const char* code, const std::string& function) {
    return "VLTRACE_MODULE_BCOMMON: Catch exception:0x" + std::string(code) + " in function " + function +
           " processID=" + std::to_string(GetCurrentProcessId()) + "\r\n";
}

uint32_t run(vl::GuardedBody body, void* context) {
    return vl::run_guarded(body, context, "Body", kHandlerLine);
}

uint32_t write_to(void* address) {
    *static_cast<volatile int*>(address) = 1;
    return 5;
}

uint32_t copy_from(void* page) {
    char target[64];
    memcpy(target, page, sizeof target);
    return static_cast<uint32_t>(target[0]) + 1;
}

uint32_t divide_by(void* value) {
    const volatile int zero = *static_cast<int*>(value);
    return static_cast<uint32_t>(100 / zero);
}

struct Raised {
    DWORD code, flags;
};
uint32_t raise(void* context) {
    const Raised& raised = *static_cast<Raised*>(context);
    RaiseException(raised.code, raised.flags, 0, nullptr);
    return 5;
}

// clang sees that the call in a tail position could reuse the frame: the array keeps it.
__attribute__((noinline)) uint32_t deeper(void* address, int depth) {
    volatile char room[100] = {};
    return depth == 0 ? write_to(address) : deeper(address, depth - 1) + static_cast<uint32_t>(room[0]);
}

// Overwrites registers that a callee must keep, and faults before it restores them.
uint32_t spoil_registers(void* address) {
    asm volatile(
        "xorl %%ebx, %%ebx\n xorl %%esi, %%esi\n xorl %%edi, %%edi\n xorl %%r12d, %%r12d\n"
        "xorl %%r13d, %%r13d\n xorl %%r14d, %%r14d\n xorl %%r15d, %%r15d\n xorps %%xmm6, %%xmm6\n"
        "xorps %%xmm15, %%xmm15\n movl $1, (%0)" ::"c"(address)
        : "rbx", "rsi", "rdi", "r12", "r13", "r14", "r15", "xmm6", "xmm15", "memory");
    return 5;
}

struct NoAccessPage {
    void* page = VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_NOACCESS);
    ~NoAccessPage() { VirtualFree(page, 0, MEM_RELEASE); }
};

class Guard : public testing::Test {
protected:
    // What went to the debugger since the last look.
    std::string output() {
        const std::string all = output_.text();
        std::string news = all.substr(seen_);
        seen_ = all.size();
        return news;
    }

private:
    support::DebugOutput output_;
    size_t seen_ = 0;
};
using ExceptionReport = Guard;

}  // namespace

TEST_F(ExceptionReport, HasCodeNameAndProcess) {
    EXPECT_EQ(vl::report_caught_exception(0xC0000005, "VlCm_Name"), 1);
    EXPECT_EQ(output(), report("c0000005", "VlCm_Name"));
}

TEST_F(ExceptionReport, WritesTheCodeInEightLowercaseDigits) {
    const struct {
        unsigned code;
        const char* digits;
    } rows[] = {{0, "00000000"}, {0x1A, "0000001a"}, {0xE0ABCDEF, "e0abcdef"}, {0xFFFFFFFF, "ffffffff"}};
    for (const auto& row : rows) {
        EXPECT_EQ(vl::report_caught_exception(row.code, "f"), 1);
        EXPECT_EQ(output(), report(row.digits, "f"));
    }
}

TEST_F(ExceptionReport, NamesANullNameUnKnown) {
    EXPECT_EQ(vl::report_caught_exception(5, nullptr), 1);
    EXPECT_EQ(output(), report("00000005", "UnKnown"));
}

TEST_F(ExceptionReport, IsCutAtTheBufferOf200) {
    const std::string name(300, 'n');
    EXPECT_EQ(vl::report_caught_exception(5, name.c_str()), 1);
    EXPECT_EQ(output(), report("00000005", name).substr(0, 199));
}

TEST_F(ExceptionReport, IsWholeWhenItJustFits) {
    const std::string name(199 - report("00000005", "").size(), 'n');
    vl::report_caught_exception(5, name.c_str());
    EXPECT_EQ(output(), report("00000005", name));
    vl::report_caught_exception(5, (name + "n").c_str());
    EXPECT_EQ(output(), report("00000005", name + "n").substr(0, 199));
}

TEST_F(Guard, HandsTheResultOfAnUndisturbedBodyOn) {
    int target = 0;
    EXPECT_EQ(run(write_to, &target), 5u);
    EXPECT_EQ(target, 1);
    EXPECT_EQ(output(), "");
}

TEST_F(Guard, ReportsThenWritesTheHandlerLineAndGivesZero) {
    EXPECT_EQ(run(write_to, nullptr), 0u);
    EXPECT_EQ(output(), report("c0000005", "Body") + kHandlerLine);
}

TEST_F(Guard, CatchesWhatHappensInCalledFunctions) {
    const NoAccessPage page;
    EXPECT_EQ(run(copy_from, page.page), 0u);
    EXPECT_EQ(output(), report("c0000005", "Body") + kHandlerLine);
    EXPECT_EQ(run([](void* address) { return deeper(address, 200); }, nullptr), 0u);
    EXPECT_EQ(output(), report("c0000005", "Body") + kHandlerLine);
}

TEST_F(Guard, CatchesEveryCode) {
    int zero = 0;
    EXPECT_EQ(run(divide_by, &zero), 0u);
    EXPECT_EQ(output(), report("c0000094", "Body") + kHandlerLine);
    const struct {
        const char* label;
        Raised raised;
        const char* digits;
    } rows[] = {{"own code", {0xE0000001, 0}, "e0000001"},
                {"small code", {0x2A, 0}, "0000002a"},
                {"cannot be continued", {0xE0000002, EXCEPTION_NONCONTINUABLE}, "e0000002"}};
    for (auto row : rows) {
        EXPECT_EQ(run(raise, &row.raised), 0u) << row.label;
        EXPECT_EQ(output(), report(row.digits, "Body") + kHandlerLine) << row.label;
    }
}

TEST_F(Guard, LeavesTheThreadInOrderOverAThousandRounds) {
    for (int round = 0; round < 1000; ++round) {
        ASSERT_EQ(run(write_to, nullptr), 0u) << round;
        ASSERT_EQ(output(), report("c0000005", "Body") + kHandlerLine) << round;
    }
}

TEST_F(Guard, GivesTheCallerItsRegistersBack) {
    volatile int seed = 3;
    int numbers[8];
    double floats[4];
    for (int i = 0; i < 8; ++i) numbers[i] = seed * (i + 1);
    for (int i = 0; i < 4; ++i) floats[i] = seed * 0.5 + i;
    EXPECT_EQ(run(spoil_registers, nullptr), 0u);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(numbers[i], 3 * (i + 1));
    for (int i = 0; i < 4; ++i) EXPECT_EQ(floats[i], 1.5 + i);
}

TEST_F(Guard, AnInnerGuardCatchesFirstAndTheOuterGoesOn) {
    auto body = [](void* context) {
        return vl::run_guarded(write_to, context, "Inner", "inner line\r\n") + 3;
    };
    EXPECT_EQ(run(body, nullptr), 3u);
    EXPECT_EQ(output(), report("c0000005", "Inner") + "inner line\r\n");
}

TEST_F(Guard, TheOuterGuardStillStandsAfterAnInnerOneCaught) {
    auto body = [](void* context) {
        vl::run_guarded(write_to, context, "Inner", "inner line\r\n");
        return write_to(context);
    };
    EXPECT_EQ(run(body, nullptr), 0u);
    EXPECT_EQ(output(),
              report("c0000005", "Inner") + "inner line\r\n" + report("c0000005", "Body") + kHandlerLine);
}
