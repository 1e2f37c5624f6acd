// The emulation flag, which the library carries and does not use.
#include "frame/platform_query.h"

#include "vlcm/settings.h"

#include "support/call_patch.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

HANDLE g_process = nullptr;

BOOL WINAPI emulated(HANDLE process, BOOL* flag) {
    g_process = process;
    *flag = TRUE;
    return TRUE;
}
BOOL WINAPI not_emulated(HANDLE /*process*/, BOOL* flag) {
    *flag = FALSE;
    return TRUE;
}
BOOL WINAPI failing(HANDLE /*process*/, BOOL* /*flag*/) { return FALSE; }

class Wow64Flag : public testing::Test {
protected:
    BOOL flag_with(BOOL(WINAPI* query)(HANDLE, BOOL*)) {
        const auto found = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(query));
        functions_.answer([=](HMODULE, const char*) { return found; });
        modules_before_ = modules_.count();  // the kit asks as well
        return vl::GetWow64Flag();
    }
    // The modules that the library asked for since.
    std::vector<std::string> modules_asked() const {
        std::vector<std::string> names;
        const auto calls = modules_.calls();
        for (size_t i = modules_before_; i < calls.size(); ++i) names.emplace_back(std::get<0>(calls[i]));
        return names;
    }

    size_t modules_before_ = 0;
    support::CallPatch<decltype(GetModuleHandleA)> modules_{"GetModuleHandleA", GetModuleHandleA};
    support::CallPatch<decltype(GetProcAddress)> functions_{"GetProcAddress", GetProcAddress};
};

}  // namespace

TEST_F(Wow64Flag, IsWhatWindowsSaysOfThisProcess) {
    EXPECT_EQ(flag_with(emulated), TRUE);
    EXPECT_EQ(g_process, GetCurrentProcess());
    EXPECT_EQ(flag_with(not_emulated), FALSE);
}

TEST_F(Wow64Flag, IsLookedUpInTheKernel) {
    flag_with(emulated);
    EXPECT_EQ(modules_asked(), std::vector<std::string>{"kernel32"});
    ASSERT_EQ(functions_.count(), 1u);
    const auto [module, function] = functions_.calls()[0];
    EXPECT_EQ(module, modules_.real("kernel32.dll"));
    EXPECT_STREQ(function, "IsWow64Process");
}

TEST_F(Wow64Flag, IsFalseWhenTheFunctionIsMissing) { EXPECT_EQ(flag_with(nullptr), FALSE); }

TEST_F(Wow64Flag, IsFalseWhenTheFunctionFails) { EXPECT_EQ(flag_with(failing), FALSE); }

TEST_F(Wow64Flag, IsFalseInThis64BitProcess) { EXPECT_EQ(vl::GetWow64Flag(), FALSE); }

TEST_F(Wow64Flag, IsNotAskedByIsX64Platform) {  // which answers for the build
    modules_before_ = modules_.count();
    EXPECT_EQ(VlCm_IsX64Platform(), TRUE);
    EXPECT_TRUE(modules_asked().empty());
    EXPECT_EQ(functions_.count(), 0u);
}
