// What the user does in the main window: connecting and sending files.
#include "veltrin_window.h"

#include "support/test_window.h"

#include "VlSim.h"
#include "protocol.h"
#include "text.h"

#include <commctrl.h>

using namespace programs;
using namespace suite;

namespace {

constexpr char kConnectRequest[] = "relayed 0x49080203 parameter ";

class VeltrinConnects : public VeltrinWindow {
protected:
    // The device's automatic default connection; the section is the address, byte 0 first.
    void set_default_connection(const char* shortcut) {
        settings().set(support::SettingsFile::kRemoteDevices, "55:44:33:22:11:00", "AutoConnectShc",
                       shortcut);
    }
};

class VeltrinSends : public VeltrinWindow {
protected:
    // The dialog that asks for files; null: it did not come.
    [[nodiscard]] HWND dialog() {
        HWND found = nullptr;
        for (DWORD tries = 0; !found && tries < kDeadline_ms / kPause_ms; ++tries) {
            if (WaitForSingleObject(program().handle(), kPause_ms) == WAIT_OBJECT_0) break;
            found = FindWindowW(L"#32770", nullptr);
            if (found && (GetWindow(found, GW_OWNER) != window() || !IsWindowVisible(found))) found = nullptr;
        }
        return found;
    }
    static void type(HWND asked, const std::wstring& name) {
        constexpr int kFileName = 0x47C;
        SendDlgItemMessageW(asked, kFileName, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
    }
    static void go_to(HWND asked, const std::wstring& folder) {
        type(asked, folder);
        SendMessageW(asked, WM_COMMAND, IDOK, 0);
    }
    static void answer(HWND asked, const std::wstring& files) {
        type(asked, files);
        PostMessageW(asked, WM_COMMAND, IDOK, 0);
    }
    void choose_in_dialog(int command_id, const std::wstring& files) {
        command(command_id);
        const HWND asked = dialog();
        ASSERT_NE(asked, nullptr);
        answer(asked, files);
    }

private:
    static constexpr DWORD kPause_ms = 10;
};

}  // namespace

TEST_F(VeltrinConnects, TheDefaultConnectionByEnter) {
    set_default_connection("push");
    run_agent();
    open();
    press(IDW_DEVICES, VK_RETURN);
    EXPECT_TRUE(logs(L"VlTray", kConnectRequest + hex(kPushShortcut)));
    EXPECT_EQ(outcome("done: "), L"The tray agent was asked to connect Test Phone.");
    EXPECT_EQ(count_lines(L"VlTray", kConnectRequest + hex(kTransferShortcut)), 0u);
}

TEST_F(VeltrinConnects, TheDefaultShortcutWithoutADefaultConnection) {
    run_agent();
    open();
    command(IDC_CONNECT);
    EXPECT_TRUE(logs(L"VlTray", kConnectRequest + hex(kTransferShortcut)));
    EXPECT_EQ(outcome("done: "), L"The tray agent was asked to connect Test Phone.");
}

TEST_F(VeltrinConnects, TheChosenServiceWhileItsListHasTheKeyboard) {
    set_default_connection("push");
    run_agent();
    open();
    devices().choose(kPrinter);
    press(IDW_DEVICES, VK_TAB);
    press(IDW_SERVICES, VK_RETURN);
    EXPECT_TRUE(logs(L"VlTray", kConnectRequest + hex(kSerialShortcut)));
    EXPECT_EQ(outcome("done: "), L"The tray agent was asked to connect Serial Port (COM9).");
}

TEST_F(VeltrinConnects, AndStartsTheAgentForIt) {
    open();
    press(IDW_DEVICES, VK_RETURN);
    EXPECT_TRUE(logs(L"VlTray", kConnectRequest + hex(kTransferShortcut)));
    EXPECT_EQ(outcome("done: "), L"The tray agent was asked to connect Test Phone.");
    EXPECT_TRUE(logs(L"VlTray",
                     "registered window " + hex(reinterpret_cast<UINT_PTR>(window()), 1) + ", 1 registered"));
}

TEST_F(VeltrinConnects, NothingThatCannotBeConnected) {
    const struct {
        const char* label;
        const char* state;
        Place device;
        int list;
        const wchar_t* told;
    } rows[] = {
        {"no default connection", "{}", kPrinter, IDW_DEVICES, L"Büro プリンター has no default connection."},
        {"no shortcut", "{}", kHeadset, IDW_SERVICES, L"Headset has no connection shortcut."},
        {"no service", "{}", kNameless, IDW_SERVICES, L"Choose a service first."},
        {"no Bluetooth", R"({"ready": false})", kPhone, IDW_DEVICES, L"Bluetooth is not ready."},
    };
    run_agent();
    open();
    support::for_each_row(rows, [&](const auto& row) {
        ASSERT_EQ(VlSim_Patch(row.state), 0u);
        devices().choose(row.device);
        if (focused() != row.list) press(focused(), VK_TAB);
        command(IDC_CONNECT);
        EXPECT_TRUE(logged("failed: " + utf8(row.told)));
        EXPECT_EQ(told(), row.told);
    });
    for (const std::string& line : log_lines(L"VlTray"))
        EXPECT_NE(line.rfind(kConnectRequest, 0), 0u) << line;
}

TEST_F(VeltrinConnects, NothingWithoutAnAgentThatStarts) {
    settings().common("General", "InstallDir", "C:\\elsewhere");
    open();
    press(IDW_DEVICES, VK_RETURN);
    EXPECT_EQ(outcome("failed: "), L"The tray agent did not start: is it in the installation folder?");
}

TEST_F(VeltrinSends, WhatIsChosenInTheDialog) {
    run_agent();
    open();
    choose_in_dialog(IDC_SEND, make_file(L"Grüße 明日.txt", "hello"));
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x43020205 parameter " + hex(phone())));
    EXPECT_TRUE(arrived(phone(), {L"Grüße 明日.txt"}));
    EXPECT_EQ(outcome("done: "), L"The tray agent took Grüße 明日.txt for Test Phone.");
    EXPECT_EQ(content_of(inbox() + L"\\Grüße 明日.txt"), "hello");
}

TEST_F(VeltrinSends, SeveralFilesFromTheDialogOneByOne) {
    run_agent();
    open();
    make_file(L"a.txt", "a");
    make_file(L"b c.txt", "b");
    command(IDC_SEND);
    const HWND asked = dialog();
    ASSERT_NE(asked, nullptr);
    go_to(asked, work_folder());
    answer(asked, L"\"a.txt\" \"b c.txt\"");
    EXPECT_TRUE(arrived(phone(), {L"a.txt", L"b c.txt"}));
    EXPECT_EQ(outcome("done: "), L"The tray agent took 2 files for Test Phone.");
    EXPECT_EQ(count_lines(L"VlTray", "object push: took 1 record"), 2u);
}

TEST_F(VeltrinSends, ByTheWayOfTheCommand) {
    const struct {
        const char* label;
        int command;
        Place device;
        const char* relayed;
        size_t times;
        const wchar_t* name;
    } rows[] = {
        {"object push", IDC_SEND, kPhone, "relayed 0x43020205 parameter ", 1, L"1.txt"},
        {"file transfer", IDC_SEND_TRANSFER, kPhone, "relayed 0x43050205 parameter ", 1, L"2.txt"},
        {"printing", IDC_SEND_PRINT, kPrinter, "relayed 0x42070205 parameter ", 1, L"3.txt"},
        {"the printer's best way", IDC_SEND, kPrinter, "relayed 0x42070205 parameter ", 2, L"4.txt"},
    };
    run_agent();
    open();
    support::for_each_row(rows, [&](const auto& row) {
        devices().choose(row.device);
        choose_in_dialog(row.command, make_file(row.name, "x"));
        const BtHandle device = row.device == kPhone ? phone() : kPrinterHandle;
        EXPECT_TRUE(logs(L"VlTray", row.relayed + hex(device), row.times));
        const std::wstring name = devices().rows()[static_cast<size_t>(row.device)].front();
        EXPECT_TRUE(logged("done: The tray agent took " + utf8(row.name) + " for " + utf8(name) + "."));
    });
}

TEST_F(VeltrinSends, ByTheChosenServiceWhileItsListHasTheKeyboard) {
    run_agent();
    open();
    press(IDW_DEVICES, VK_TAB);
    press(IDW_SERVICES, VK_DOWN);
    choose_in_dialog(IDC_SEND, make_file(L"a.txt", "a"));
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x43050205 parameter " + hex(phone())));
}

TEST_F(VeltrinSends, NothingWhenTheDialogIsCancelled) {
    run_agent();
    open();
    command(IDC_SEND);
    const HWND asked = dialog();
    ASSERT_NE(asked, nullptr);
    EXPECT_EQ(text_of_window(asked), L"Send to Test Phone");
    PostMessageW(asked, WM_COMMAND, IDCANCEL, 0);
    drain();
    EXPECT_EQ(told(), L"Enter connects, Ctrl+O sends files; files may be dropped on a device, too.");
    EXPECT_TRUE(names_in(inbox()).empty());
}

TEST_F(VeltrinSends, ToTheDeviceForWhichTheDialogWasOpened) {
    run_agent();
    open();
    command(IDC_SEND);
    const HWND asked = dialog();
    ASSERT_NE(asked, nullptr);
    devices().choose(kPrinter);
    answer(asked, make_file(L"a.txt", "a"));
    EXPECT_TRUE(arrived(phone(), {L"a.txt"}));
}

TEST_F(VeltrinSends, WhatIsDroppedToTheChosenDevice) {
    run_agent();
    open();
    EXPECT_NE(GetWindowLongPtrW(window(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
    drop({make_file(L"a.txt", "a"), make_file(L"Grüße.txt", "b")});
    EXPECT_TRUE(arrived(phone(), {L"Grüße.txt", L"a.txt"}));
    EXPECT_EQ(outcome("done: "), L"The tray agent took 2 files for Test Phone.");
}

TEST_F(VeltrinSends, WhatIsDroppedOnADeviceToThatOne) {
    run_agent();
    open();
    drop({make_file(L"a.txt", "a")}, point_of(kPrinter));
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x42070205 parameter " + hex(kPrinterHandle)));
    EXPECT_TRUE(arrived(kPrinterHandle, {L"a.txt"}));
    EXPECT_EQ(devices().chosen(), kPhone);
}

TEST_F(VeltrinSends, NothingThatCannotBeSent) {
    const std::wstring file = make_file(L"a.txt", "a");
    const struct {
        const char* label;
        const char* state;
        Place device;
        std::vector<std::wstring> files;
        std::wstring told;
    } rows[] = {
        {"takes no files", "{}", kHeadset, {file}, L"Headset does not take files this way."},
        {"no such file",
         "{}",
         kPhone,
         {file, work_folder() + L"\\gone"},
         L"Not sent to Test Phone: no file \"" + work_folder() + L"\\gone\""},
        {"a folder",
         "{}",
         kPhone,
         {work_folder()},
         L"Not sent to Test Phone: no file \"" + work_folder() + L"\""},
        {"no Bluetooth",
         R"({"ready": false})",
         kPhone,
         {file},
         L"Not sent to Test Phone: Bluetooth is not ready"},
    };
    run_agent();
    open();
    support::for_each_row(rows, [&](const auto& row) {
        ASSERT_EQ(VlSim_Patch(row.state), 0u);
        drop(row.files, point_of(row.device));
        EXPECT_TRUE(logged("failed: " + utf8(row.told)));
        EXPECT_EQ(told(), row.told);
    });
    EXPECT_TRUE(names_in(inbox()).empty());
}

TEST_F(VeltrinSends, NothingToADeviceThatTakesNoFilesByTheCommandsWay) {
    open();
    devices().choose(kHeadset);
    for (const int id : {IDC_SEND, IDC_SEND_TRANSFER, IDC_SEND_PRINT}) {
        command(id);
        drain();
        EXPECT_EQ(told(), L"Headset does not take files this way.");
        EXPECT_TRUE(IsWindowEnabled(window()));  // no dialog
    }
}

TEST_F(VeltrinSends, NothingWithoutAnAgentThatStarts) {
    settings().common("General", "InstallDir", "C:\\elsewhere");
    open();
    drop({make_file(L"a.txt", "a")});
    EXPECT_EQ(outcome("failed: "),
              L"Not sent to Test Phone: the tray agent did not start: is it in the installation folder?");
}

// An agent that takes nothing keeps a sender waiting for two seconds.
TEST_F(VeltrinSends, OneThingAtATimeAndIsClosedMeanwhile) {
    const support::TestWindow agent({.title = kTrayTitle});
    open();
    drop({make_file(L"a.txt", "a")});
    EXPECT_EQ(told(), L"Sending to Test Phone…");
    command(IDC_CONNECT);
    drain();
    EXPECT_EQ(told(), L"The last request is still under way.");
    PostMessageW(window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(program().wait(), 0u);
    EXPECT_EQ(log_lines(L"Veltrin").back(), "ended");
}
