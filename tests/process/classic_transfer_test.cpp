// The classic file-transfer window.
#include "process_test.h"

using namespace process_test;

namespace {

using ClassicTransfer = ProcessTest;

TEST_F(ClassicTransfer, IsNeverInUse) {
    EXPECT_EQ(VlCm_IsFtpClassicUIVer(), 0);
    EXPECT_EQ(trace(), Lines{});
}

TEST_F(ClassicTransfer, IsNotClosed) {
    const QueueWindow window("FTP UI", "FTP Parent Wnd");
    ASSERT_EQ(FindWindowA("FTP Parent Wnd", "FTP UI"), window.handle());
    VlCm_CloseFtpClassicUI();
    EXPECT_EQ(calls.take(), Lines{});
    EXPECT_FALSE(window.got(WM_CLOSE));
    EXPECT_EQ(trace(), Lines{});
}

}  // namespace
