// Which Windows this is.
#include "vlcm/settings.h"

#include "support/call_patch.h"
#include "support/child_process.h"
#include "support/role.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include <string.h>

namespace {

class WindowsVersion : public support::SuiteTest {
protected:
    support::CallPatch<decltype(GetVersionExA)> query_{"GetVersionExA", GetVersionExA};
};

}  // namespace

TEST_F(WindowsVersion, IsVistaOrLaterFromMajorVersion6On) {
    const struct {
        const char* label;
        DWORD major, minor;
        BOOL expected;
    } rows[] = {{"none", 0, 0, FALSE},  {"2000", 5, 0, FALSE},           {"XP x64", 5, 2, FALSE},
                {"5.99", 5, 99, FALSE}, {"Vista", 6, 0, TRUE},           {"7", 6, 1, TRUE},
                {"10", 10, 0, TRUE},    {"largest", 0xFFFFFFFF, 0, TRUE}};
    support::for_each_row(rows, [&](const auto& row) {
        query_.answer([&](OSVERSIONINFOA* version) {
            version->dwMajorVersion = row.major;
            version->dwMinorVersion = row.minor;
            return TRUE;
        });
        EXPECT_EQ(VlCm_IsWindowsVistaAbove(), row.expected);
    });
}

TEST_F(WindowsVersion, AFailedQueryIsAnEarlierWindows) {
    query_.fail_from(1, FALSE, ERROR_INVALID_PARAMETER);
    EXPECT_EQ(VlCm_IsWindowsVistaAbove(), FALSE);
}

TEST_F(WindowsVersion, TheResultOfTheQueryIsNotTested) {
    query_.answer([](OSVERSIONINFOA* version) {
        version->dwMajorVersion = 6;
        return FALSE;
    });
    EXPECT_EQ(VlCm_IsWindowsVistaAbove(), TRUE);
}

TEST_F(WindowsVersion, TheRecordHas148BytesAndIsZeroOtherwise) {
    query_.answer([](OSVERSIONINFOA* version) {
        unsigned char expected[148] = {148};
        EXPECT_EQ(memcmp(version, expected, sizeof expected), 0);
        return TRUE;
    });
    VlCm_IsWindowsVistaAbove();
    EXPECT_EQ(query_.count(), 1u);
}

TEST_F(WindowsVersion, IsAskedAtEachCallWithoutAScope) {
    VlCm_IsWindowsVistaAbove();
    VlCm_IsWindowsVistaAbove();
    EXPECT_EQ(query_.count(), 2u);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(WindowsVersion, X64PlatformIsTheBuild) {
    EXPECT_EQ(VlCm_IsX64Platform(), TRUE);
    EXPECT_EQ(query_.count(), 0u);
}

TEST_ROLE(is_vista_or_later) { return VlCm_IsWindowsVistaAbove(); }

TEST(RealWindowsVersion, IsWhatWindowsTellsThisProgram) {
    const struct {
        const char* label;
        DWORD expected;
    } rows[] = {{"winxp64", FALSE}, {"vista", TRUE}, {"win7", TRUE}, {"win10", TRUE}};
    support::for_each_row(rows, [](const auto& row) {
        EXPECT_EQ(support::run_role_under_version("is_vista_or_later", row.label).exit_code, row.expected);
    });
}
