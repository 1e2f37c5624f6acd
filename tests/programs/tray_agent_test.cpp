// VlTray.exe as a process: single instance, relayed messages, registered windows.
#include "suite_programs.h"

#include "support/test_window.h"

#include "TrayRelay.h"
#include "frame/unique.h"
#include "text.h"

using namespace programs;
using namespace suite;

namespace {

class TrayAgent : public SuitePrograms {};

const std::string kWindowLine = std::string("window \"") + kTrayTitle + "\"";

std::string handle_text(const support::TestWindow& window) {
    return hex(reinterpret_cast<UINT_PTR>(window.handle()), 1);
}

}  // namespace

TEST_F(TrayAgent, IsStartedByAMessageAndGetsIt) {
    ASSERT_EQ(process_of_window(kTrayTitle), 0u);
    VlCm_PostMsg2Vltray(0x0001, 0x0002, 0x123456789);
    EXPECT_NE(process_of_window(kTrayTitle), 0u);
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x00020001 parameter 0x23456789"));
    EXPECT_EQ(count_lines(L"VlTray", kWindowLine), 1u);
}

TEST_F(TrayAgent, ThatRunsIsNotStartedAgain) {
    AgentProcess agent;
    EXPECT_EQ(VlCm_SendMsg2Vltray(0x0203, 0x4908, 7), 0);
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x49080203 parameter 0x00000007"));
    EXPECT_EQ(count_lines(L"VlTray", kWindowLine), 1u);
    EXPECT_EQ(process_of_window(kTrayTitle), agent.id());
}

TEST_F(TrayAgent, StaysAloneWhenASecondCopyStarts) {
    const AgentProcess first;
    support::ChildProcess second("VlTray.exe");
    EXPECT_EQ(second.wait(), 0u);
    EXPECT_TRUE(first.running());
    EXPECT_EQ(process_of_window(kTrayTitle), first.id());
    EXPECT_EQ(count_lines(L"VlTray", "another copy is running"), 1u);
    EXPECT_EQ(count_lines(L"VlTray", kWindowLine), 1u);
}

TEST_F(TrayAgent, OwnsItsMutexAsLongAsItRuns) {
    const auto mutex_exists = [] {
        return static_cast<bool>(vl::UniqueHandle(OpenMutexA(MUTEX_ALL_ACCESS, TRUE, kTrayMutex)));
    };
    EXPECT_FALSE(mutex_exists());
    AgentProcess agent;
    EXPECT_TRUE(mutex_exists());
    close_programs();
    EXPECT_EQ(agent.wait(), 0u);
    EXPECT_FALSE(mutex_exists());
    EXPECT_EQ(log_lines(L"VlTray").back(), "ended");
}

TEST_F(TrayAgent, TellsRegisteredWindowsWhatIsRelayed) {
    AgentProcess agent;
    const support::TestWindow listener({.title = "listener"});
    VlCm_RegisterWindowToVltray(listener.handle());
    EXPECT_TRUE(logs(L"VlTray", "registered window " + handle_text(listener) + ", 1 registered"));
    VlCm_PostMsg2Vltray(0x0005, 0x0001, 9);
    ASSERT_TRUE(listener.wait_for(VLSIM_RELAY_MESSAGE));
    const support::WindowMessage message = listener.messages(VLSIM_RELAY_MESSAGE).front();
    EXPECT_EQ(message.wparam, 0x00010005u);
    EXPECT_EQ(message.lparam, 9);
}

TEST_F(TrayAgent, TellsAWindowNothingAfterItUnregistered) {
    AgentProcess agent;
    const support::TestWindow listener({.title = "listener"});
    const support::TestWindow other({.title = "other"});
    VlCm_RegisterWindowToVltray(listener.handle());
    VlCm_RegisterWindowToVltray(other.handle());
    VlCm_UnregisterWindowToVltray(listener.handle());
    EXPECT_TRUE(logs(L"VlTray", "unregistered window " + handle_text(listener) + ", 1 registered"));
    VlCm_PostMsg2Vltray(0x0005, 0x0001, 9);
    ASSERT_TRUE(other.wait_for(VLSIM_RELAY_MESSAGE));  // the later in the order of registration
    listener.drain();
    EXPECT_TRUE(listener.messages(VLSIM_RELAY_MESSAGE).empty());
}

TEST_F(TrayAgent, CountsAWindowOnceHoweverOftenItRegisters) {
    AgentProcess agent;
    const support::TestWindow listener({.title = "listener"});
    VlCm_RegisterWindowToVltray(listener.handle());
    VlCm_RegisterWindowToVltray(listener.handle());
    const std::string line = "registered window " + handle_text(listener) + ", 1 registered";
    EXPECT_TRUE(logs(L"VlTray", line, 2));
}
