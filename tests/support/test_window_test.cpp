#include "support/test_window.h"

#include <gtest/gtest.h>

using support::TestWindow;
using support::WindowMessage;

namespace {
constexpr UINT kMessage = WM_APP + 5;
}  // namespace

TEST(TestWindow, IsFoundByTitleAndCarriesItsMark) {
    const TestWindow window({.title = "{4D0A6C9B-SUPPORT}", .user_data = 0x1234});
    ASSERT_NE(window.handle(), nullptr);
    EXPECT_EQ(FindWindowA(nullptr, "{4D0A6C9B-SUPPORT}"), window.handle());
    EXPECT_EQ(GetWindowLongPtrA(window.handle(), GWLP_USERDATA), 0x1234);
}

TEST(TestWindow, KeepsMessagesInOrderWithTheirParameters) {
    TestWindow window({.title = "messages"});
    window.forget();
    PostMessageA(window.handle(), kMessage, 1, 2);
    PostMessageA(window.handle(), kMessage + 1, 3, 4);
    ASSERT_TRUE(window.wait_for(kMessage + 1));
    EXPECT_EQ(window.messages(), (std::vector<WindowMessage>{{window.handle(), kMessage, 1, 2},
                                                             {window.handle(), kMessage + 1, 3, 4}}));
    EXPECT_EQ(window.messages(kMessage).size(), 1u);
    window.forget();
    EXPECT_TRUE(window.messages().empty());
}

TEST(TestWindow, WaitsForACountWithADeadline) {
    TestWindow window({.title = "waiting"});
    PostMessageA(window.handle(), kMessage, 0, 0);
    EXPECT_FALSE(window.wait_for(kMessage, 2, 0));
    PostMessageA(window.handle(), kMessage, 0, 0);
    EXPECT_TRUE(window.wait_for(kMessage, 2));
}

TEST(TestWindow, HasHandledWhatWasPostedBeforeItIsDrained) {
    TestWindow window({.title = "drain"});
    for (int i = 0; i < 100; ++i) PostMessageA(window.handle(), kMessage, 0, 0);
    window.drain();
    EXPECT_EQ(window.messages(kMessage).size(), 100u);
}

TEST(TestWindow, AnswersSentMessages) {
    TestWindow window({.title = "answers", .answers = {{kMessage, 42}}});
    EXPECT_EQ(SendMessageA(window.handle(), kMessage, 0, 0), 42);
    EXPECT_EQ(SendMessageA(window.handle(), kMessage + 1, 0, 0), 0);
}

TEST(TestWindow, IsGoneWithTheObject) {
    HWND handle = nullptr;
    {
        const TestWindow window({.title = "gone"});
        handle = window.handle();
    }
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(FindWindowA(nullptr, "gone"), nullptr);
}
