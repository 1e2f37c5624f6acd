#include "veltrin_window.h"

#include "VlSim.h"
#include "event_log.h"
#include "file_watch.h"
#include "inbox.h"
#include "text.h"

#include <shlobj.h>

using namespace programs;

namespace suite {
namespace {

constexpr wchar_t kTitle[] = L"QVN Veltrin";

std::string neighbourhood(BtHandle phone) {
    return R"({"devices": [
        {"handle": )" +
           std::to_string(phone) +
           R"(, "name": "Test Phone", "address": "00:11:22:33:44:55", "class": "0x5A020C", "paired": true,
         "services": [{"handle": 10, "class": "0x1105"}, {"handle": 11, "class": "0x1106"},
                      {"handle": 12, "class": "0x1132"}, {"handle": 13, "class": "0x110E"}]},
        {"handle": 1002, "name": "Büro プリンター", "address": "66:77:88:99:AA:BB", "class": "0x040680",
         "services": [{"handle": 20, "class": "0x1101"}, {"handle": 21, "class": "0x1118"}]},
        {"handle": 1003, "name": "Headset", "address": "0A:0B:0C:0D:0E:0F", "class": "0x240404",
         "services": [{"handle": 30, "class": "0x1108"}]},
        {"handle": 1004, "name": "", "address": "01:02:03:04:05:06", "class": "0x000704"}],
      "shortcuts": [
        {"handle": 100, "device": )" +
           std::to_string(phone) + R"(, "service": 10, "name": "push"},
        {"handle": 101, "device": )" +
           std::to_string(phone) + R"(, "service": 11, "name": "files", "default": true},
        {"handle": 102, "device": 1002, "service": 20, "name": "serial", "port": 9}],
      "connections": [{"handle": 400, "device": 1003, "service": 30, "class": "0x1108", "role": 1}],
      "mobileActive": 1})";
}

// DROPFILES and the paths behind it, as the shell makes them.
std::vector<char> drop_record(const std::vector<std::wstring>& files, POINT point) {
    std::wstring paths;
    for (const std::wstring& file : files) paths += file + L'\0';
    paths += L'\0';
    const DROPFILES head = {sizeof(DROPFILES), point, FALSE, TRUE};
    std::vector<char> record(sizeof head + paths.size() * sizeof(wchar_t));
    memcpy(record.data(), &head, sizeof head);
    memcpy(record.data() + sizeof head, paths.data(), paths.size() * sizeof(wchar_t));
    return record;
}

}  // namespace

VeltrinWindow::VeltrinWindow() {
    EXPECT_EQ(VlSim_Patch(neighbourhood(phone()).c_str()), 0u);
    const std::wstring folder = inbox_folder(kPrinterHandle) + L"\\";
    for (const std::wstring& name : names_in(inbox_folder(kPrinterHandle))) {
        DeleteFileW((folder + name).c_str());
    }
}

void VeltrinWindow::open(const std::string& program, const support::ChildOptions& options) {
    program_ = std::make_unique<support::ChildProcess>(program, options);
    ASSERT_TRUE(logged("window \"QVN Veltrin\"", ++starts_));
    window_ = FindWindowW(nullptr, kTitle);
    ASSERT_NE(window_, nullptr);
    drain();
}

void VeltrinWindow::drain() {
    constexpr UINT kMark = WM_USER + 0x100;
    PostMessageW(window_, kMark, ++marks_, 0);
    EXPECT_TRUE(logged("message 0x0500 wParam " + hex(marks_, 1) + " lParam 0x0"));
}

void VeltrinWindow::press(int child_id, WORD key) {
    PostMessageW(child(child_id), WM_KEYDOWN, key, 1);
    drain();
}

int VeltrinWindow::focused() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
    return GetDlgCtrlID(info.hwndFocus);
}

std::wstring VeltrinWindow::outcome(const std::string& beginning) {
    const auto has_outcome = [&beginning] {
        for (const std::string& line : log_lines(L"Veltrin")) {
            if (line.rfind(beginning, 0) == 0) return true;
        }
        return false;
    };
    EXPECT_TRUE(wait_in_folder(log_folder(), kDeadline_ms, has_outcome)) << beginning;
    return told();
}

// The record lies in the program's memory, as one that the shell has brought there does.
void VeltrinWindow::drop(const std::vector<std::wstring>& files, POINT point) {
    const std::vector<char> record = drop_record(files, point);
    RemoteMemory memory(window_, record.size());
    memory.write(record.data(), record.size());
    SendMessageW(window_, WM_DROPFILES, reinterpret_cast<WPARAM>(memory.address()), 0);
    memory.give_away();
}

POINT VeltrinWindow::point_of(Place device) const {
    const RECT area = devices().area(device);
    POINT point = {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    MapWindowPoints(devices().window(), window_, &point, 1);
    return point;
}

::testing::AssertionResult VeltrinWindow::arrived(BtHandle device, const std::vector<std::wstring>& names) {
    const std::wstring folder = inbox_folder(device);
    if (wait_in_folder(folder, kDeadline_ms, [&] { return names_in(folder) == names; })) {
        return ::testing::AssertionSuccess();
    }
    auto failure = ::testing::AssertionFailure() << "the inbox holds";
    for (const std::wstring& name : names_in(folder)) failure << " [" << utf8(name) << "]";
    return failure;
}

}  // namespace suite
