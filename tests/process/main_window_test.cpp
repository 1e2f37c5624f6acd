// Bringing the main window forward, or starting its program.
#include "process_test.h"

using namespace process_test;

namespace {

constexpr char kDefaultTitle[] = "QVN Veltrin";
constexpr LONG_PTR kMark = 0x396;
const std::string kLook = look_for(kDefaultTitle);
const std::string kReadMark = "GetWindowLongPtrA(main, -21)";
const std::string kStart = R"(ShellExecuteA(null, "open", "Veltrin.exe", null, "C:\Suite", 5))";
const Lines kShow = {"PostMessageA(main, 0x586, 0, 0)", "SetWindowPos(main, topmost, 0, 0, 0, 0, 0x3)",
                     "SetWindowPos(main, not topmost, 0, 0, 0, 0, 0x3)"};

class OpenVluiExe : public ProcessTest {
protected:
    void mark_main_window(const QueueWindow& window, LONG_PTR mark = kMark) {
        SetWindowLongPtrA(window.handle(), GWLP_USERDATA, mark);
        calls.name(window.handle(), "main");
    }
};

TEST_F(OpenVluiExe, LiftsTheWindowWithTheMark) {
    const QueueWindow window(kDefaultTitle);
    mark_main_window(window);
    VlCm_OpenVluiExe();
    EXPECT_EQ(calls.take(), (Lines{kLook, kReadMark} + kShow));
    EXPECT_EQ(trace(), scope_of("Vlcm_OpenVluiExe"));
}

TEST_F(OpenVluiExe, ComparesTheMarksLow32BitsOnly) {
    const QueueWindow window(kDefaultTitle);
    mark_main_window(window, 0x100000396);
    VlCm_OpenVluiExe();
    EXPECT_EQ(calls.take(), (Lines{kLook, kReadMark} + kShow));
}

TEST_F(OpenVluiExe, StartsTheProgramWhenTheMarkDiffers) {
    for (const LONG_PTR mark : {LONG_PTR{0}, kMark - 1, kMark + 1, LONG_PTR{0x10396}}) {
        const QueueWindow window(kDefaultTitle);
        mark_main_window(window, mark);
        VlCm_OpenVluiExe();
        EXPECT_EQ(calls.take(), (Lines{kLook, kReadMark, kStart})) << mark;
        EXPECT_EQ(trace(), nested("Vlcm_OpenVluiExe", scope_of("VlCm_GetInstallDir")));
    }
}

TEST_F(OpenVluiExe, StartsTheProgramWhenThereIsNoWindow) {
    VlCm_OpenVluiExe();
    EXPECT_EQ(calls.take(), (Lines{kLook, kStart}));
    EXPECT_EQ(trace(), nested("Vlcm_OpenVluiExe", scope_of("VlCm_GetInstallDir")));
}

TEST_F(OpenVluiExe, TakesTheTitleFromTheCommonSettings) {
    common_setting("General", "VLUI_WINDOW_TEXT", "Our own title");
    const QueueWindow window("Our own title");
    mark_main_window(window);
    VlCm_OpenVluiExe();
    EXPECT_EQ(calls.take(), (Lines{look_for("Our own title"), kReadMark} + kShow));
}

TEST_F(OpenVluiExe, ReadsTheTitleAnewEachTime) {
    VlCm_OpenVluiExe();
    common_setting("General", "VLUI_WINDOW_TEXT", "Another title");
    calls.take();
    VlCm_OpenVluiExe();
    EXPECT_EQ(calls.take().front(), look_for("Another title"));
}

TEST_F(OpenVluiExe, CountsATitleThatCannotBeReadAsEmpty) {
    VlSim_Fail("Btsdk_GetPrivateProfileString", 1, 0);
    calls.fail("FindWindowA");
    VlCm_OpenVluiExe();
    EXPECT_EQ(calls.take(), (Lines{look_for(""), kStart}));
}

TEST_F(OpenVluiExe, CutsALongTitleAt259Bytes) {
    common_setting("General", "VLUI_WINDOW_TEXT", std::string(400, 't'));
    VlCm_OpenVluiExe();
    EXPECT_EQ(calls.take().front(), look_for(std::string(259, 't')));
}

TEST_F(OpenVluiExe, GoesOnWhenTheWindowTakesNothing) {
    const QueueWindow window(kDefaultTitle);
    mark_main_window(window);
    calls.fail("PostMessageA");
    calls.fail("SetWindowPos");
    VlCm_OpenVluiExe();
    EXPECT_EQ(calls.take(), (Lines{kLook, kReadMark} + kShow));
}

}  // namespace
