// Starting the tray agent and waiting for it.
#include "process_test.h"

using namespace process_test;

namespace {

const std::string kLook = look_for(kTrayTitle);
const std::string kTestMutex = R"(OpenMutexA(0x1f0001, 1, "Veltrin2_VLTray"))";
const std::string kStart = start_of_file(R"(C:\Suite\VlTray.exe)");

using StartVltrayProc = ProcessTest;

TEST_F(StartVltrayProc, LeavesARunningAgentAlone) {
    QueueWindow agent(kTrayTitle);
    VlCm_StartVltrayProc();
    EXPECT_EQ(calls.take(), Lines{kLook});
}

TEST_F(StartVltrayProc, LeavesAStartingAgentAloneAndClosesItsMutexAtOnce) {
    const Mutex mutex(kTrayMutex);
    VlCm_StartVltrayProc();
    EXPECT_EQ(calls.take(), (Lines{kLook, kTestMutex, "CloseHandle(mutex)"}));
    EXPECT_FALSE(ReleaseMutex(mutex.handle())) << "the mutex was taken";
}

TEST_F(StartVltrayProc, StartsTheAgentAndLooksUntilItsWindowIsThere) {
    LateWindow agent(calls, kTrayTitle, 3);
    VlCm_StartVltrayProc();
    EXPECT_EQ(calls.take(), (Lines{kLook, kTestMutex, kStart} + close_program() + Lines{kLook} +
                             repeated(3, {sleep_of(100), kLook}) + Lines{sleep_of(500)}));
}

TEST_F(StartVltrayProc, PausesAlsoWhenTheWindowIsThereAtOnce) {
    LateWindow agent(calls, kTrayTitle, 0);
    VlCm_StartVltrayProc();
    EXPECT_EQ(calls.take(),
              (Lines{kLook, kTestMutex, kStart} + close_program() + Lines{kLook, sleep_of(500)}));
}

TEST_F(StartVltrayProc, GivesUpAfterFiftyPauses) {
    VlCm_StartVltrayProc();
    EXPECT_EQ(calls.take(), (Lines{kLook, kTestMutex, kStart} + close_program() + Lines{kLook} +
                             repeated(50, {sleep_of(100), kLook}) + Lines{sleep_of(500)}));
}

TEST_F(StartVltrayProc, DoesNotWaitForAProgramThatDoesNotStart) {
    calls.fail("CreateProcessA");
    VlCm_StartVltrayProc();
    EXPECT_EQ(calls.take(), (Lines{kLook, kTestMutex, kStart}));
}

TEST_F(StartVltrayProc, WaitsAHundredTimesForAProcessHandle) {
    calls.on_create_process = [](PROCESS_INFORMATION*) { return TRUE; };
    LateWindow agent(calls, kTrayTitle, 101);  // after the hundred pauses and one more
    VlCm_StartVltrayProc();
    EXPECT_EQ(calls.take(), (Lines{kLook, kTestMutex, kStart} + repeated(100, {sleep_of(10)}) +
                             Lines{kLook, sleep_of(100), kLook, sleep_of(500)}));
}

TEST_F(StartVltrayProc, OpensNoScopeOfItsOwn) {
    QueueWindow agent(kTrayTitle);
    VlCm_StartVltrayProc();
    EXPECT_EQ(trace(), Lines{});
}

TEST_F(StartVltrayProc, AsksForTheFolderOnlyWhenItStartsTheAgent) {
    VlCm_StartVltrayProc();
    EXPECT_EQ(trace(), scope_of("VlCm_GetInstallDir"));
}

TEST_F(StartVltrayProc, CutsALongPathAt259Bytes) {
    const std::string folder = "C:\\" + std::string(250, 'x');
    install_dir(folder);
    calls.fail("CreateProcessA");
    VlCm_StartVltrayProc();
    const std::string path = folder + "\\VlTra";
    ASSERT_EQ(path.size(), 259U);
    EXPECT_EQ(calls.take().back(), start_of_file(path));
}

}  // namespace
