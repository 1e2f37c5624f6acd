// Each call to the platform and to the stack fails once on every path: nothing is left open.
#include "process_test.h"

using namespace process_test;

namespace {

struct Path {
    const char* label;
    void (*run)();
    bool with_windows;  // all windows of the suite's programs are there
    int edition;
};

void dial() { VlCm_DialPhone("00:11:22:33:44:55", "110"); }
void post() { VlCm_PostMsg2Vltray(1, 2, 3); }
void send() { VlCm_SendMsg2Vltray(1, 2, 3); }
void filter() { VlCm_ChangeMsgFiter(1, 1); }
void manager() { VlCm_OpenConnectMgrDlg(1); }

const Path kPaths[] = {
    {"start agent", VlCm_StartVltrayProc, false, 0},
    {"agent there", VlCm_StartVltrayProc, true, 0},
    {"post", post, false, 0},
    {"send", send, true, 0},
    {"agent to top", VlCm_SetTrayWindowToTop, true, 0},
    {"main window there", VlCm_OpenVluiExe, true, 0},
    {"main window absent", VlCm_OpenVluiExe, false, 0},
    {"launcher 0", VlCm_OpenVluiDll, true, 0},
    {"launcher 1", VlCm_OpenVluiDll, false, 1},
    {"launcher 2", VlCm_OpenVluiDll, true, 2},
    {"launcher 4", VlCm_OpenVluiDll, false, 4},
    {"voice companion", VlCm_StartUpNimbrel, false, 0},
    {"send tool", VlCm_StartUpQuill, false, 0},
    {"voice companion closed", VlCm_ShutDownNimbrel, true, 0},
    {"send tool closed", VlCm_ShutDownQuill, true, 0},
    {"dialer there", dial, true, 0},
    {"dialer absent", dial, false, 0},
    {"message filter", filter, false, 0},
    {"classic window", VlCm_CloseFtpClassicUI, true, 0},
    {"connection manager", manager, false, 0},
};

constexpr const char* kPlatform[] = {
    "FindWindowA",   "IsWindow",         "PostMessageA",       "SetForegroundWindow", "SetWindowPos",
    "OpenMutexA",    "CreateThread",     "GetWindowLongPtrA",  "CreateProcessA",      "ShellExecuteA",
    "RegOpenKeyExA", "RegQueryValueExA", "GetModuleHandleExA", "WaitForSingleObject",
};
constexpr const char* kStack[] = {
    "Btsdk_GetPrivateProfileString",   "Btsdk_GetPrivateProfileInt",    "Btsdk_IsBluetoothReady",
    "Btsdk_WritePrivateProfileString", "Btsdk_PostMessageToCtrlCenter",
};

class EveryFailure : public ProcessTest {
protected:
    EveryFailure() {
        SetWindowLongPtrA(main_.handle(), GWLP_USERDATA, 0x396);
        key_.set("LaunchVeltrin", "launch.exe");
        personal_setting("LocalBluetooth", "SupportVOIP", "1");
        personal_setting("LocalBluetooth", "SupportQuill", "1");
    }
    void run(const Path& path) {
        common_setting("General", "VlCustomVersion", std::to_string(path.edition));
        calls.find_windows(path.with_windows);
        path.run();
        if (calls.worker() != nullptr) {
            EXPECT_TRUE(calls.worker_ended());
        }
        if (path.run == manager) calls.close_handles();  // left open by the function, as required
    }
    void expect_nothing_left(const std::string& what) {
        EXPECT_EQ(calls.open_handles(), Lines{}) << what;
        EXPECT_EQ(calls.library_references(), 0) << what;
        EXPECT_EQ(VlTraceLog_OpenScopes(), 0U) << what;
        EXPECT_EQ(VlTraceLog_Unbalanced(), 0U) << what;
    }
    LauncherKey key_{R"(SOFTWARE\Marlow\Freeline)"};
    const QueueWindow agent_{kTrayTitle}, main_{"QVN Veltrin"}, dialer_{"Veltrin Dialer"},
        voice_{"{95DFDC9E-F427-4FBC-A090-E420DC98CDE4}"}, tool_{"{3B1A61DA-6444-4c4a-B01F-2E2EEE6374C2}"};
};

TEST_F(EveryFailure, OfThePlatformLeavesNothingOpen) {
    for (const Path& path : kPaths) {
        for (const char* function : kPlatform) {
            bool failed = true;
            for (int nth = 1; failed && nth < 70; ++nth) {
                calls.fail(function, nth);
                run(path);
                failed = calls.drop_failures() == 0;
                expect_nothing_left(std::string(path.label) + ": " + function + " " + std::to_string(nth));
            }
            EXPECT_FALSE(failed) << path.label << ": " << function;
        }
    }
}

TEST_F(EveryFailure, OfTheStackLeavesNothingOpen) {
    for (const Path& path : kPaths) {
        for (const char* operation : kStack) {
            VlSim_Fail(operation, 0, 0);
            run(path);
            VlSim_ClearFaults();
            expect_nothing_left(std::string(path.label) + ": " + operation);
        }
    }
}

}  // namespace
