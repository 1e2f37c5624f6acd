// The voice companion and the send tool.
#include "process_test.h"

using namespace process_test;

namespace {

struct Companion {
    const char* start_name;
    void (*start_up)();
    const char* shut_down_name;
    void (*shut_down)();
    const char* key;
    const char* path;
    const char* title;
};
const Companion kCompanions[] = {
    {"VlCm_StartUpNimbrel", VlCm_StartUpNimbrel, "VlCm_ShutDownNimbrel", VlCm_ShutDownNimbrel, "SupportVOIP",
     R"(C:\Suite\veltrin voip.exe)", "{95DFDC9E-F427-4FBC-A090-E420DC98CDE4}"},
    {"VlCm_StartUpQuill", VlCm_StartUpQuill, "VlCm_ShutDownQuill", VlCm_ShutDownQuill, "SupportQuill",
     R"(C:\Suite\Veltrin Quill.exe)", "{3B1A61DA-6444-4c4a-B01F-2E2EEE6374C2}"},
};

uint32_t g_ready = 0;
extern "C" uint32_t answer_ready() { return g_ready; }

class StartUp : public ProcessTest {
protected:
    static std::string start_of(const Companion& row) {
        return "ShellExecuteA(null, null, \"" + std::string(row.path) + "\", null, null, 1)";
    }
    // The low byte of the register counts.
    static void ready(uint32_t answer) {
        g_ready = answer;
        VlSim_Hook("Btsdk_IsBluetoothReady", reinterpret_cast<void*>(answer_ready));
    }
};

TEST_F(StartUp, StartsTheProgramWhenItsSwitchIsOne) {
    for (const Companion& row : kCompanions) {
        personal_setting("LocalBluetooth", row.key, "1");
        row.start_up();
        EXPECT_EQ(calls.take(), Lines{start_of(row)}) << row.start_name;
        EXPECT_EQ(trace(), scope_of("VlCm_GetInstallDir"));
    }
}

TEST_F(StartUp, StartsNothingForAnyOtherSwitchValue) {
    for (const Companion& row : kCompanions) {
        for (const char* value : {"0", "2", "-1", "256", "4294967296", "on"}) {
            personal_setting("LocalBluetooth", row.key, value);
            row.start_up();
            EXPECT_EQ(calls.take(), Lines{}) << row.start_name << " " << value;
        }
    }
}

TEST_F(StartUp, TakesAMissingSwitchAsOff) {
    for (const Companion& row : kCompanions) {
        row.start_up();
        EXPECT_EQ(calls.take(), Lines{}) << row.start_name;
    }
}

TEST_F(StartUp, HeedsItsOwnSwitchOnly) {
    personal_setting("LocalBluetooth", "SupportVOIP", "1");
    VlCm_StartUpQuill();
    EXPECT_EQ(calls.take(), Lines{});
    common_setting("LocalBluetooth", "SupportQuill", "1");
    VlCm_StartUpQuill();
    EXPECT_EQ(calls.take(), Lines{}) << "the switch is a personal setting";
}

TEST_F(StartUp, AsksNothingElseWhileTheStackIsNotReady) {
    for (const Companion& row : kCompanions) {
        personal_setting("LocalBluetooth", row.key, "1");
        for (const uint32_t answer : {0U, 0xFFFFFF00U}) {
            ready(answer);
            row.start_up();
            EXPECT_EQ(calls.take(), Lines{}) << row.start_name << " " << answer;
            EXPECT_EQ(trace(), Lines{});
        }
    }
}

TEST_F(StartUp, TakesAnyOtherLowByteAsReady) {
    for (const Companion& row : kCompanions) {
        personal_setting("LocalBluetooth", row.key, "1");
        for (const uint32_t answer : {1U, 2U, 0xFFU, 0xFFFFFF01U}) {
            ready(answer);
            row.start_up();
            EXPECT_EQ(calls.take(), Lines{start_of(row)}) << row.start_name << " " << answer;
        }
    }
}

using ShutDown = ProcessTest;

TEST_F(ShutDown, PostsQuitToTheCompanionsWindow) {
    for (const Companion& row : kCompanions) {
        QueueWindow window(row.title);
        calls.name(window.handle(), "companion");
        row.shut_down();
        EXPECT_EQ(calls.take(), (Lines{look_for(row.title), "PostMessageA(companion, 0x12, 0, 0)"}));
        EXPECT_TRUE(window.got(WM_QUIT));
        EXPECT_EQ(trace(), Lines{}) << row.shut_down_name;
    }
}

TEST_F(ShutDown, DoesNothingWithoutACompanion) {
    for (const Companion& row : kCompanions) {
        row.shut_down();
        EXPECT_EQ(calls.take(), Lines{look_for(row.title)}) << row.shut_down_name;
    }
}

}  // namespace
