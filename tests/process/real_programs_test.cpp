// The library and stand-ins for the suite's programs in processes of their own.
#include "process_test.h"

#include <filesystem>
#include <fstream>

using namespace process_test;

namespace {

constexpr DWORD kDeadlineMs = 20000;

class RealPrograms : public ProcessTest {
protected:
    RealPrograms() {
        char temporary[MAX_PATH] = {};
        GetTempPathA(MAX_PATH, temporary);
        folder_ = temporary + std::string("process_test");
        remove_folder();
        CreateDirectoryA(folder_.c_str(), nullptr);
        install_dir(folder_);
        calls.start_programs = true;
        calls.on_sleep = [this](DWORD) { WaitForSingleObject(started_, kDeadlineMs); };
    }
    ~RealPrograms() override {
        remove_folder();
        CloseHandle(started_);
    }
    void remove_folder() {
        std::error_code none;
        std::filesystem::remove_all(folder_, none);
    }
    // Puts a program of that name into the installation folder.
    void install(const std::string& file) {
        EXPECT_TRUE(CopyFileA("process_stand_in.exe", path(file).c_str(), FALSE));
    }
    void wait_for_start() {
        EXPECT_EQ(WaitForSingleObject(started_, kDeadlineMs), WAIT_OBJECT_0);
        ResetEvent(started_);
    }
    void wait_for_end() {
        ASSERT_NE(calls.program(), nullptr);
        EXPECT_EQ(WaitForSingleObject(calls.program(), kDeadlineMs), WAIT_OBJECT_0);
    }
    // What the programs wrote down.
    Lines log() const {
        std::ifstream file(path("started.txt"));
        Lines lines;
        for (std::string line; std::getline(file, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            lines.push_back(line);
        }
        return lines;
    }
    std::string path(const std::string& file) const { return folder_ + "\\" + file; }

    std::string folder_;
    HANDLE started_ = CreateEventA(nullptr, TRUE, FALSE, "ProcessTest.Started");
};

std::string hex_of(HWND window) {
    char text[32];
    snprintf(text, sizeof text, "0x%llx",
             static_cast<unsigned long long>(reinterpret_cast<ULONG_PTR>(window)));
    return text;
}

TEST_F(RealPrograms, AnAbsentAgentIsStartedOnceAndTakesMessages) {
    install("VlTray.exe");
    VlCm_StartVltrayProc();
    VlCm_StartVltrayProc();
    QueueWindow own("own");
    VlCm_RegisterWindowToVltray(own.handle());
    wait_for_end();
    EXPECT_EQ(log(),
              (Lines{"VlTray.exe|\"" + path("VlTray.exe") + "\"", "message 0x4902 " + hex_of(own.handle())}));
}

TEST_F(RealPrograms, AnAgentThatIsStartingIsNotStartedAgain) {
    install("VlTray.exe");
    const Mutex starting(kTrayMutex);
    VlCm_StartVltrayProc();
    EXPECT_EQ(calls.program(), nullptr);
    EXPECT_EQ(log(), Lines{});
}

TEST_F(RealPrograms, TheDialerIsStartedAndToldToDial) {
    install("VlDialer.exe");
    VlCm_DialPhone("00:11:22:33:44:55", "110");
    wait_for_end();
    EXPECT_EQ(log(), (Lines{"VlDialer.exe|\"" + path("VlDialer.exe") + "\"", "message 0x584 0x0"}));
    EXPECT_TRUE(calls.worker_ended());
}

TEST_F(RealPrograms, TheConnectionManagerGetsItsArgument) {
    install("VlMgr.exe");
    VlCm_OpenConnectMgrDlg(255);
    wait_for_end();
    EXPECT_EQ(log(), Lines{"VlMgr.exe|" + path("VlMgr.exe 0x000000ff")});
    allow_leak("connection manager started");
}

TEST_F(RealPrograms, TheLauncherIsRunFromTheRegistryAndAwaited) {
    install("launch.exe");
    common_setting("General", "VlCustomVersion", "2");
    LauncherKey key(R"(SOFTWARE\Marlow\Freeline)");
    key.set("LaunchVeltrin", "\"" + path("launch.exe") + "\" -now");
    VlCm_OpenVluiDll();
    EXPECT_EQ(WaitForSingleObject(calls.program(), 0), WAIT_OBJECT_0);
    EXPECT_EQ(log(), Lines{"launch.exe|\"" + path("launch.exe") + "\" -now"});
}

TEST_F(RealPrograms, TheCompanionsAreStartedByTheirSwitches) {
    install("veltrin voip.exe");
    install("Veltrin Quill.exe");
    personal_setting("LocalBluetooth", "SupportVOIP", "1");
    personal_setting("LocalBluetooth", "SupportQuill", "1");
    VlCm_StartUpNimbrel();
    wait_for_start();
    VlCm_StartUpQuill();
    wait_for_start();
    const Lines lines = log();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].substr(0, 17), "veltrin voip.exe|");
    EXPECT_EQ(lines[1].substr(0, 18), "Veltrin Quill.exe|");
}

}  // namespace
