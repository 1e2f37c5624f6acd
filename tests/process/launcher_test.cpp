// The OEM's launcher from the registry.
#include "process_test.h"

using namespace process_test;

namespace {

struct Launcher {
    int edition;
    const char* key;
    const char* value;
};
constexpr Launcher kLaunchers[] = {
    {1, R"(SOFTWARE\Marlow\Corvana6.0)", "LauchVeltrin"},
    {2, R"(SOFTWARE\Marlow\Freeline)", "LaunchVeltrin"},
    {4, R"(SOFTWARE\Marlow\BluetoothApplication)", "LaunchVeltrin"},
};
constexpr char kCommand[] = R"("C:\Oem folder\launch.exe" -now)";
const Lines kOpenMainWindow = {look_for("QVN Veltrin"),
                               R"(ShellExecuteA(null, "open", "Veltrin.exe", null, "C:\Suite", 5))"};

std::string open_of(const std::string& key) { return "RegOpenKeyExA(HKLM, " + key + ", 0, 0xf003f, given)"; }
std::string open_of(const Launcher& row) { return open_of("\"" + std::string(row.key) + "\""); }
std::string read_of(const Launcher& row) {
    return "RegQueryValueExA(key, \"" + std::string(row.value) + "\", null, null, given, 260)";
}
const std::string kWait = "WaitForSingleObject(process, 5000)";

class OpenVluiDll : public ProcessTest {
protected:
    void edition(int number) { common_setting("General", "VlCustomVersion", std::to_string(number)); }
    Lines fallback_trace() { return nested("Vlcm_OpenVluiExe", scope_of("VlCm_GetInstallDir")); }
};

TEST_F(OpenVluiDll, RunsTheCommandLineOfEachEdition) {
    for (const Launcher& row : kLaunchers) {
        edition(row.edition);
        LauncherKey key(row.key);
        key.set(row.value, kCommand);
        VlCm_OpenVluiDll();
        EXPECT_EQ(calls.take(), (Lines{open_of(row), read_of(row), start_of_command_line(kCommand), kWait} +
                                 close_program() + Lines{"RegCloseKey(key)"}));
        EXPECT_EQ(trace(), nested("Vlcm_OpenVluiDll", scope_of("VlCm_GetCustomVersion"))) << row.edition;
    }
}

TEST_F(OpenVluiDll, DoesNotFallBackWhenTheLauncherDoesNotStart) {
    for (const Launcher& row : kLaunchers) {
        edition(row.edition);
        LauncherKey key(row.key);
        key.set(row.value, kCommand);
        calls.fail("CreateProcessA");
        VlCm_OpenVluiDll();
        EXPECT_EQ(calls.take(),
                  (Lines{open_of(row), read_of(row), start_of_command_line(kCommand), "RegCloseKey(key)"}));
    }
}

TEST_F(OpenVluiDll, FallsBackWithALineWhenThereIsNoKey) {
    for (const Launcher& row : kLaunchers) {
        edition(row.edition);
        VlCm_OpenVluiDll();
        EXPECT_EQ(calls.take(), (Lines{open_of(row)} + kOpenMainWindow));
        EXPECT_EQ(trace(), nested("Vlcm_OpenVluiDll",
                                  scope_of("VlCm_GetCustomVersion") +
                                      Lines{"=512 VlCm_OpenVluiExe when reg error in Vlcm_OpenVluiDll"} +
                                      fallback_trace()));
    }
}

TEST_F(OpenVluiDll, ClosesTheKeyAndFallsBackWithoutALineWhenThereIsNoValue) {
    for (const Launcher& row : kLaunchers) {
        edition(row.edition);
        LauncherKey key(row.key);
        key.set("LaunchOther", kCommand);
        VlCm_OpenVluiDll();
        EXPECT_EQ(calls.take(), (Lines{open_of(row), read_of(row), "RegCloseKey(key)"} + kOpenMainWindow));
        EXPECT_EQ(trace(), nested("Vlcm_OpenVluiDll", scope_of("VlCm_GetCustomVersion") + fallback_trace()));
    }
}

TEST_F(OpenVluiDll, ReadsTheMisspeltValueForEditionOneOnly) {
    edition(1);
    LauncherKey key(kLaunchers[0].key);
    key.set("LaunchVeltrin", "wrong.exe");
    VlCm_OpenVluiDll();
    EXPECT_EQ(calls.count(start_of_command_line("wrong.exe")), 0U);
    EXPECT_EQ(calls.count(kOpenMainWindow.back()), 1U);
}

TEST_F(OpenVluiDll, OpensTheRootAndStartsNothingForAnyOtherEdition) {
    for (const int number : {0, 3, 5, -1, 100}) {
        edition(number);
        calls.fail("CreateProcessA");
        VlCm_OpenVluiDll();
        EXPECT_EQ(calls.take(), (Lines{open_of("null"), start_of_command_line(""), "RegCloseKey(HKLM)"}))
            << number;
        EXPECT_EQ(trace(), nested("Vlcm_OpenVluiDll", scope_of("VlCm_GetCustomVersion")));
    }
}

TEST_F(OpenVluiDll, StartsNothingWithAnEmptyCommandLine) {
    edition(0);
    calls.start_programs = true;
    VlCm_OpenVluiDll();
    EXPECT_EQ(calls.program(), nullptr);
    EXPECT_EQ(calls.take(), (Lines{open_of("null"), start_of_command_line(""), "RegCloseKey(HKLM)"}));
}

TEST_F(OpenVluiDll, FallsBackForAnyEditionWhenTheRegistryFails) {
    edition(0);
    calls.fail("RegOpenKeyExA");
    VlCm_OpenVluiDll();
    EXPECT_EQ(calls.take(), (Lines{open_of("null")} + kOpenMainWindow));
}

TEST_F(OpenVluiDll, TakesAValueOfAnyTypeAsItStands) {
    edition(2);
    LauncherKey key(kLaunchers[1].key);
    for (const DWORD type : {DWORD{REG_EXPAND_SZ}, DWORD{REG_BINARY}}) {
        key.set("LaunchVeltrin", type, "%windir%\\launch.exe");
        VlCm_OpenVluiDll();
        const Lines lines = calls.take();
        EXPECT_TRUE(support::has_line(lines, start_of_command_line("%windir%\\launch.exe"))) << type;
    }
}

TEST_F(OpenVluiDll, TerminatesAValueThatFillsTheBuffer) {
    edition(2);
    LauncherKey key(kLaunchers[1].key);
    key.set("LaunchVeltrin", REG_BINARY, std::string(260, 'c'));
    VlCm_OpenVluiDll();
    EXPECT_EQ(calls.count(start_of_command_line(std::string(259, 'c'))), 1U);
}

TEST_F(OpenVluiDll, FallsBackWhenTheValueDoesNotFit) {
    edition(2);
    LauncherKey key(kLaunchers[1].key);
    key.set("LaunchVeltrin", std::string(260, 'c'));
    VlCm_OpenVluiDll();
    EXPECT_EQ(calls.take(),
              (Lines{open_of(kLaunchers[1]), read_of(kLaunchers[1]), "RegCloseKey(key)"} + kOpenMainWindow));
}

}  // namespace
