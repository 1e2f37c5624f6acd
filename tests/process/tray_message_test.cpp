// Messages to the tray agent: posted to its window, or handed to the stack's relay.
#include "process_test.h"

using namespace process_test;

namespace {

const std::string kLook = look_for(kTrayTitle);

struct Registration {
    const char* name;
    void (*function)(HWND);
    const char* message;
};
const Registration kRegistrations[] = {
    {"VlCm_RegisterWindowToVltray", VlCm_RegisterWindowToVltray, "0x4902"},
    {"VlCm_UnregisterWindowToVltray", VlCm_UnregisterWindowToVltray, "0x4903"},
};

using TrayRegistration = ProcessTest;

TEST_F(TrayRegistration, PostsTheWindowToTheAgent) {
    QueueWindow agent(kTrayTitle);
    QueueWindow own("own");
    calls.name(agent.handle(), "agent");
    calls.name(own.handle(), "own");
    for (const Registration& row : kRegistrations) {
        row.function(own.handle());
        const std::string post = std::string("PostMessageA(agent, ") + row.message + ", own, 0)";
        EXPECT_EQ(calls.take(), (Lines{"IsWindow(own)", kLook, post})) << row.name;
        EXPECT_EQ(trace(), scope_of(row.name));
    }
}

TEST_F(TrayRegistration, StartsNothingWithoutAnAgent) {
    QueueWindow own("own");
    calls.name(own.handle(), "own");
    for (const Registration& row : kRegistrations) {
        row.function(own.handle());
        EXPECT_EQ(calls.take(), (Lines{"IsWindow(own)", kLook})) << row.name;
        EXPECT_EQ(trace(), scope_of(row.name));
    }
}

TEST_F(TrayRegistration, PassesOverWhatIsNoWindow) {
    QueueWindow agent(kTrayTitle);
    HWND gone = QueueWindow("gone").handle();
    calls.name(gone, "gone");
    for (const Registration& row : kRegistrations) {
        row.function(gone);
        EXPECT_EQ(calls.take(), Lines{"IsWindow(gone)"}) << row.name;
        EXPECT_EQ(trace(), scope_of(row.name));
    }
}

TEST_F(TrayRegistration, PassesOverANullWindowWithoutAsking) {
    QueueWindow agent(kTrayTitle);
    for (const Registration& row : kRegistrations) {
        row.function(nullptr);
        EXPECT_EQ(calls.take(), Lines{}) << row.name;
        EXPECT_EQ(trace(), scope_of(row.name));
    }
}

class TrayRelay : public ProcessTest {
protected:
    TrayRelay() : relay_(calls) {}
    RelayRecorder relay_;
};

TEST_F(TrayRelay, BuildsTheMessageFromBothWords) {
    struct Row {
        uint16_t low;
        uint16_t high;
        const char* message;
    };
    constexpr Row kRows[] = {
        {0x0001, 0x0002, "0x20001"}, {0x0203, 0x4908, "0x49080203"}, {0xFFFF, 0x8000, "0x8000ffff"},
        {0x8000, 0x0000, "0x8000"},  {0xFFFF, 0xFFFF, "0xffffffff"}, {0, 0, "0x0"},
    };
    QueueWindow agent(kTrayTitle);
    for (const Row& row : kRows) {
        VlCm_PostMsg2Vltray(row.low, row.high, 5);
        EXPECT_EQ(calls.take(), (Lines{kLook, "relay(" + std::string(row.message) + ", 0x5)"}));
    }
}

TEST_F(TrayRelay, CutsTheParameterToItsLow32Bits) {
    struct Row {
        LPARAM parameter;
        const char* relayed;
    };
    constexpr Row kRows[] = {{0x1234567890ABCDEF, "0x90abcdef"}, {-1, "0xffffffff"}, {0, "0x0"}};
    QueueWindow agent(kTrayTitle);
    for (const Row& row : kRows) {
        VlCm_PostMsg2Vltray(1, 0, row.parameter);
        EXPECT_EQ(calls.take(), (Lines{kLook, "relay(0x1, " + std::string(row.relayed) + ")"}));
    }
}

TEST_F(TrayRelay, StartsTheAgentBeforeItRelays) {
    LateWindow agent(calls, kTrayTitle, 1);
    VlCm_PostMsg2Vltray(0x0001, 0x0002, 7);
    const Lines lines = calls.take();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(Lines(lines.end() - 3, lines.end()), (Lines{kLook, sleep_of(500), "relay(0x20001, 0x7)"}));
    EXPECT_EQ(trace(), nested("VlCm_PostMsg2Vltray", scope_of("VlCm_GetInstallDir")));
}

TEST_F(TrayRelay, RelaysAlsoWhenTheAgentDoesNotStart) {
    calls.fail("CreateProcessA");
    VlCm_PostMsg2Vltray(1, 0, 7);
    EXPECT_EQ(calls.take().back(), "relay(0x1, 0x7)");
}

TEST_F(TrayRelay, SendPostsAndAnswersZero) {
    QueueWindow agent(kTrayTitle);
    EXPECT_EQ(VlCm_SendMsg2Vltray(0x0203, 0x4908, 0x100000005), 0);
    EXPECT_EQ(calls.take(), (Lines{kLook, "relay(0x49080203, 0x5)"}));
    EXPECT_EQ(trace(), nested("VlCm_SendMsg2Vltray", scope_of("VlCm_PostMsg2Vltray")));
}

TEST_F(TrayRelay, SendAnswersZeroAlsoWhenTheRelayFails) {
    relay_.answer = 0x77;
    QueueWindow agent(kTrayTitle);
    EXPECT_EQ(VlCm_SendMsg2Vltray(1, 0, 1), 0);
    EXPECT_EQ(calls.count("relay(0x1, 0x1)"), 1U);
}

TEST_F(TrayRelay, SendAnswersZeroAlsoWithoutAnAgentWhichItStartsFirst) {
    EXPECT_EQ(VlCm_SendMsg2Vltray(1, 0, 1), 0);
    const Lines lines = calls.take();
    EXPECT_EQ(lines[2], start_of_file(R"(C:\Suite\VlTray.exe)"));
    EXPECT_EQ(lines.back(), "relay(0x1, 0x1)");
}

using SetTrayWindowToTop = ProcessTest;

TEST_F(SetTrayWindowToTop, BringsTheAgentsWindowToTheForeground) {
    QueueWindow agent(kTrayTitle);
    calls.name(agent.handle(), "agent");
    VlCm_SetTrayWindowToTop();
    EXPECT_EQ(calls.take(), (Lines{kLook, "SetForegroundWindow(agent)"}));
    EXPECT_EQ(trace(), scope_of("Vlcm_SetTrayWindowToTop"));
}

TEST_F(SetTrayWindowToTop, DoesNothingWithoutAnAgent) {
    VlCm_SetTrayWindowToTop();
    EXPECT_EQ(calls.take(), Lines{kLook});
    EXPECT_EQ(trace(), scope_of("Vlcm_SetTrayWindowToTop"));
}

}  // namespace
