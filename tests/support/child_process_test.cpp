#include "support/child_process.h"
#include "support/role.h"
#include "support/settings_scope.h"

#include <gtest/gtest.h>
#include <stdio.h>

using support::ChildProcess;
using support::NamedEvent;
using support::ProgramCopy;
using support::RoleResult;

TEST_ROLE(echo) {
    for (const std::string& argument : arguments) printf("[%s]", argument.c_str());
    printf("%s", getenv("VLCM_ECHO") ? getenv("VLCM_ECHO") : "unset");
    return static_cast<int>(arguments.size());
}

TEST_ROLE(fails_an_expectation) {
    EXPECT_EQ(1, 2) << "seeded";
    return 0;
}

TEST_ROLE(waits) {
    NamedEvent("vlcm support ready").set();
    printf("ready");
    fflush(stdout);
    return NamedEvent("vlcm support never").wait(INFINITE) ? 1 : 2;
}

TEST_ROLE(meets) {
    NamedEvent ready("vlcm support ready"), go("vlcm support go");
    ready.set();
    return go.wait() ? 7 : 8;
}

TEST_ROLE(tells_name) {
    const std::string path = support::own_path();
    printf("%s|%d", path.substr(path.rfind('\\') + 1).c_str(), LoadLibraryA("VlCommon.dll") != nullptr);
    return 0;
}

TEST_ROLE(tells_version) {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExA(&version);
    printf("%lu.%lu", version.dwMajorVersion, version.dwMinorVersion);
    return 0;
}

TEST(RunRole, PassesArgumentsAndAnswersCodeAndOutput) {
    const RoleResult result = support::run_role("echo", {"a b", "c\"d", "e\\", ""});
    EXPECT_EQ(result.exit_code, 4u);
    EXPECT_EQ(result.output, "[a b][c\"d][e\\][]unset");
}

TEST(RunRole, PassesTheEnvironment) {
    EXPECT_EQ(support::run_role("echo", {}, {{"VLCM_ECHO", "set"}}).output, "set");
}

TEST(RunRole, TellsFailedExpectationsAndUnknownRoles) {
    const RoleResult failed = support::run_role("fails_an_expectation");
    EXPECT_EQ(failed.exit_code, static_cast<DWORD>(98));
    EXPECT_NE(failed.output.find("seeded"), std::string::npos) << failed.output;
    EXPECT_EQ(support::run_role("no such role").exit_code, static_cast<DWORD>(99));
}

TEST(RunRole, RunsUnderAnotherNameBesideTheSameModules) {
    EXPECT_EQ(support::run_role_as("Another Name.exe", "tells_name").output, "Another Name.exe|1");
}

TEST(RunRole, RunsUnderAnotherWindowsVersion) {
    EXPECT_EQ(support::run_role_under_version("tells_version", "winxp64").output, "5.2");
    EXPECT_EQ(support::run_role_under_version("tells_version", "vista").output, "6.0");
    EXPECT_EQ(support::run_role("tells_version").output, "6.1");
}

TEST(ChildProcess, SaysWhenAProgramCannotBeStarted) {
    ChildProcess child("no such program.exe");
    EXPECT_FALSE(child.started());
    EXPECT_FALSE(child.running());
    EXPECT_EQ(child.wait(0), ChildProcess::kStillRunning);
}

TEST(ChildProcess, IsEndedWhenTheObjectGoes) {
    NamedEvent ready("vlcm support ready");
    HANDLE process = nullptr;
    {
        ChildProcess child(support::own_path(), support::role_options("waits"));
        ASSERT_TRUE(ready.wait());
        EXPECT_TRUE(child.running());
        EXPECT_EQ(child.wait(0), ChildProcess::kStillRunning);
        process = OpenProcess(SYNCHRONIZE, FALSE, child.id());
    }
    EXPECT_EQ(WaitForSingleObject(process, 0), static_cast<DWORD>(WAIT_OBJECT_0));
    CloseHandle(process);
}

TEST(ChildProcess, MeetsTheTestAtNamedEvents) {
    NamedEvent ready("vlcm support ready"), go("vlcm support go");
    ChildProcess child(support::own_path(), support::role_options("meets"));
    ASSERT_TRUE(ready.wait());
    go.set();
    EXPECT_EQ(child.wait(), 7u);
}

TEST(ProgramCopy, IsRemovedAtTheEnd) {
    std::string path;
    {
        const ProgramCopy copy("Copy.exe");
        path = copy.path();
        EXPECT_TRUE(support::read_file(path).has_value());
    }
    EXPECT_FALSE(support::read_file(path).has_value());
}
