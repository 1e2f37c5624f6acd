// The companion programs as processes: started, woken and closed through the library.
#include "suite_programs.h"

#include "VlSim.h"
#include "file_hash.h"
#include "text.h"

using namespace programs;
using namespace suite;

namespace {

class Dialer : public SuitePrograms {};
class MainWindow : public SuitePrograms {};
class Companion : public SuitePrograms {};
class ConnectionManager : public SuitePrograms {};
class MessageEditor : public SuitePrograms {};

constexpr char kMainTitle[] = "Suite Under Test";

// Lines that begin with "started".
size_t starts(const std::wstring& program) {
    size_t count = 0;
    for (const std::string& line : log_lines(program)) count += line.rfind("started ", 0) == 0 ? 1 : 0;
    return count;
}

VlSmsRecord text_message(BtHandle device) {
    VlSmsRecord record = {};
    record.device = device;
    for (size_t i = 0; i < sizeof record.rest; ++i) record.rest[i] = static_cast<uint8_t>(i * 5 + 1);
    return record;
}

std::string message_line(const VlSmsRecord& record) {
    return "message for device " + hex(record.device) + " sha256 " + sha256_of_bytes(&record, sizeof record);
}

}  // namespace

TEST_F(Dialer, IsStartedAndDialsWhenItsWindowIsThere) {
    VlCm_DialPhone("00:11:22:33:44:55", "+49 30 1234567");
    EXPECT_TRUE(logs(L"VlDialer", "message 0x0584 wParam 0x0 lParam 0x0"));
    EXPECT_TRUE(logs(L"VlDialer", "dial DeviceAddress=00:11:22:33:44:55 PhoneNum=+49 30 1234567"));
}

TEST_F(Dialer, ThatRunsGetsTheNextNumber) {
    VlCm_DialPhone("00:11:22:33:44:55", "110");
    EXPECT_TRUE(logs(L"VlDialer", "dial DeviceAddress=00:11:22:33:44:55 PhoneNum=110"));
    VlCm_DialPhone("66:77:88:99:AA:BB", "112");
    EXPECT_TRUE(logs(L"VlDialer", "dial DeviceAddress=66:77:88:99:AA:BB PhoneNum=112"));
    EXPECT_EQ(starts(L"VlDialer"), 1u);
}

TEST_F(MainWindow, IsStartedUnderTheTitleOfTheSettings) {
    settings().common("General", "VLUI_WINDOW_TEXT", kMainTitle);
    VlCm_OpenVluiExe();
    EXPECT_TRUE(logs(L"Veltrin", std::string("window \"") + kMainTitle + "\""));
    EXPECT_EQ(Vlcm_GetWindowLong(FindWindowA(nullptr, kMainTitle), GWLP_USERDATA), 0x396);
}

TEST_F(MainWindow, HasATitleWithoutASetting) {
    const support::ChildProcess program("Veltrin.exe");
    EXPECT_TRUE(logs(L"Veltrin", "window \"QVN Veltrin\""));
    EXPECT_EQ(process_of_window("QVN Veltrin"), program.id());
}

TEST_F(MainWindow, ThatRunsShowsItself) {
    const support::ChildProcess program("Veltrin.exe");
    EXPECT_TRUE(logs(L"Veltrin", "window \"QVN Veltrin\""));
    const HWND window = FindWindowA(nullptr, "QVN Veltrin");
    ShowWindow(window, SW_HIDE);
    ASSERT_FALSE(IsWindowVisible(window));
    VlCm_OpenVluiExe();
    EXPECT_TRUE(logs(L"Veltrin", "message 0x0586 wParam 0x0 lParam 0x0"));
    EXPECT_TRUE(logs(L"Veltrin", "shown"));
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(starts(L"Veltrin"), 1u);
}

TEST_F(Companion, StartsUpAndShutsDown) {
    const struct {
        const char* label;
        const char* key;
        void (*start_up)();
        void (*shut_down)();
        const wchar_t* program;
        const char* title;
    } rows[] = {
        {"voice", "SupportVOIP", [] { VlCm_StartUpNimbrel(); }, [] { VlCm_ShutDownNimbrel(); },
         L"veltrin voip", kVoiceTitle},
        {"send tool", "SupportQuill", [] { VlCm_StartUpQuill(); }, [] { VlCm_ShutDownQuill(); },
         L"Veltrin Quill", kQuillTitle},
    };
    support::for_each_row(rows, [&](const auto& row) {
        settings().personal("LocalBluetooth", row.key, "1");
        row.start_up();
        EXPECT_TRUE(logs(row.program, std::string("window \"") + row.title + "\""));
        row.shut_down();
        EXPECT_TRUE(logs(row.program, "message 0x0012 wParam 0x0 lParam 0x0"));
        EXPECT_TRUE(logs(row.program, "ended"));
        EXPECT_EQ(starts(row.program), 1u);
    });
}

TEST_F(ConnectionManager, GetsItsValueInEightDigits) {
    allow_leak("connection manager started");
    VlCm_OpenConnectMgrDlg(255);
    EXPECT_TRUE(logs(L"VlMgr", "open 0x000000ff"));
    const std::string command = log_lines(L"VlMgr").front();
    EXPECT_NE(command.find("VlMgr.exe 0x000000ff"), std::string::npos) << command;
    EXPECT_TRUE(logs(L"VlMgr", std::string("window \"") + kManagerTitle + "\""));
}

TEST_F(MessageEditor, TakesTheMessageThatWaitsForIt) {
    ASSERT_EQ(VlSim_Patch(R"({"mobileActive": 0})"), 0u);
    const VlSmsRecord record = text_message(0x1234);
    EXPECT_EQ(VlCm_SendSMS(&record), 0u);
    EXPECT_TRUE(logs(L"MAP_VlSMSEditor", message_line(record)));
}

TEST_F(MessageEditor, IsOpenedWhileMobilesAreActiveForAPhoneWithMessages) {
    ASSERT_EQ(VlSim_Patch(R"({"mobileActive": 1})"), 0u);
    const VlSmsRecord record = text_message(phone());
    EXPECT_EQ(VlCm_SendSMS(&record), 0u);
    EXPECT_TRUE(logs(L"MAP_VlSMSEditor", message_line(record)));
}

TEST_F(MessageEditor, StartsWithoutAMessageToo) {
    const support::ChildProcess editor("MAP_VlSMSEditor.exe");
    EXPECT_TRUE(logs(L"MAP_VlSMSEditor", "no message waiting"));
    EXPECT_TRUE(editor.running());
}
