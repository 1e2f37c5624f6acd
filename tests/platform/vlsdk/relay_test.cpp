// The relay reaches the tray agent's window, in this process or another.
#include "stack_test.h"
#include "support/child_process.h"
#include "support/role.h"

#include "TrayRelay.h"

namespace vlsim_test {
namespace {

using support::ChildProcess;
using support::NamedEvent;

// A window with the tray agent's title.
class AgentWindow {
public:
    AgentWindow()
        : window_(CreateWindowExA(0, "STATIC", VLSIM_TRAY_WINDOW_TITLE, 0, 0, 0, 0, 0, nullptr, nullptr,
                                  nullptr, nullptr)) {}
    ~AgentWindow() { DestroyWindow(window_); }
    AgentWindow(const AgentWindow&) = delete;
    AgentWindow& operator=(const AgentWindow&) = delete;

    // The next relayed message; waits for it.
    [[nodiscard]] bool next(MSG& message) const {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, ChildProcess::kDeadlineMs, QS_ALLINPUT);
        return PeekMessageA(&message, window_, VLSIM_RELAY_MESSAGE, VLSIM_RELAY_MESSAGE, PM_REMOVE);
    }

private:
    HWND window_;
};

// Stands in for the agent: gives its first message back as the exit code.
TEST_ROLE(vlsim_agent) {
    const AgentWindow agent;
    NamedEvent("vlsim-test-agent").set();
    MSG message;
    if (!agent.next(message)) return 1;
    return static_cast<int>(message.wParam + static_cast<WPARAM>(message.lParam));
}

class Relay : public StackTest {};

TEST_F(Relay, WithoutAnAgentFails) { EXPECT_NE(Btsdk_PostMessageToCtrlCenter(0x49080203, 5), 0u); }

TEST_F(Relay, PostsMessageAndParameterAsTheyAre) {
    const AgentWindow agent;
    ASSERT_EQ(Btsdk_PostMessageToCtrlCenter(0x89080203, 0xFEDCBA98), 0u);
    MSG message;
    ASSERT_TRUE(agent.next(message));
    EXPECT_EQ(message.wParam, 0x89080203u);
    EXPECT_EQ(message.lParam, 0xFEDCBA98);
}

TEST_F(Relay, ReachesTheAgentInAnotherProcess) {
    NamedEvent running("vlsim-test-agent");
    ChildProcess agent(support::own_path(), support::role_options("vlsim_agent"));
    ASSERT_TRUE(running.wait());
    ASSERT_EQ(Btsdk_PostMessageToCtrlCenter(40, 2), 0u);
    EXPECT_EQ(agent.wait(), 42u);
}

}  // namespace
}  // namespace vlsim_test
