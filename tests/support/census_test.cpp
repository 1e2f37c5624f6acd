#include "support/handle_census.h"
#include "support/window_census.h"

#include "subject.h"

#include <gtest/gtest.h>

using support::HandleCensus;
using support::WindowCensus;

TEST(HandleCensus, SeesNothingInBalancedCallsOnceTheProcessIsWarm) {
    support::warm_up_process();
    const HandleCensus census;
    for (int i = 0; i < 10; ++i) subject_balanced_handles();
    EXPECT_EQ(census.describe(), std::vector<std::string>());
}

TEST(HandleCensus, NamesASeededLeak) {
    support::warm_up_process();
    const HandleCensus census;
    HANDLE leak = subject_leak_event();
    EXPECT_EQ(census.opened_since(), 1u);
    EXPECT_EQ(census.opened(), std::vector<HANDLE>{leak});
    const std::vector<std::string> lines = census.describe();
    ASSERT_EQ(lines.size(), 1u) << ::testing::PrintToString(lines);
    EXPECT_NE(lines[0].find("Event"), std::string::npos) << lines[0];
    EXPECT_NE(lines[0].find("SubjectEvent"), std::string::npos) << lines[0];
    CloseHandle(leak);
    EXPECT_EQ(census.opened_since(), 0u);
}

TEST(HandleCensus, SeesAHandleThatTookAClosedOnesNumber) {
    support::warm_up_process();
    HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    const HandleCensus census;
    CloseHandle(event);
    HANDLE other = CreateMutexA(nullptr, FALSE, nullptr);  // the lowest free number is given again
    ASSERT_EQ(other, event);
    EXPECT_EQ(census.opened_since(), 1u);
    CloseHandle(other);
}

TEST(WindowCensus, SeesAWindowThatIsLeftAndNamesIt) {
    support::warm_up_process();
    const WindowCensus census;
    subject_leak_window();
    EXPECT_EQ(census.describe(), std::vector<std::string>{"class \"Static\", title \"Left behind\""});
    subject_destroy_window();
    EXPECT_EQ(census.opened().size(), 0u);
}

TEST(WindowCensus, SeesAMessageOnlyWindow) {
    support::warm_up_process();
    const WindowCensus census;
    HWND window =
        CreateWindowExA(0, "STATIC", "hidden", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    EXPECT_EQ(census.opened(), std::vector<HWND>{window});
    DestroyWindow(window);
}
