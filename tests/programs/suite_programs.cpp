#include "suite_programs.h"

#include "VlSim.h"
#include "event_log.h"
#include "file_watch.h"
#include "frame/unique.h"
#include "hidden_window.h"
#include "inbox.h"
#include "text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace programs;

namespace suite {
namespace {

std::wstring temp_folder(const wchar_t* name) {
    return (std::filesystem::temp_directory_path() / name).wstring();
}

// The simulated stack looks for its home at its first call, in this process and in those it starts.
struct OwnHome {
    OwnHome() { SetEnvironmentVariableW(L"VLSIM_HOME", temp_folder(L"programs_test_home").c_str()); }
};
const OwnHome own_home;

void remove_folder(const std::wstring& folder) {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void remove_logs() {
    for (const std::wstring& name : names_in(log_folder())) {
        DeleteFileW((log_folder() + L"\\" + name).c_str());
    }
}

// "2026-01-31T12:00:00.000Z 1234 text" -> "text"
std::string without_stamp(const std::string& line) {
    const size_t process = line.find(' ');
    const size_t text = line.find(' ', process + 1);
    return process == std::string::npos || text == std::string::npos ? line : line.substr(text + 1);
}

// The hidden windows of the suite's programs, and its main window.
BOOL CALLBACK add_program(HWND window, LPARAM list) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    const bool hidden = name == wide(kWindowClass);
    if (hidden || wcscmp(name, kMainWindowClass) == 0)
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::vector<HWND> program_windows() {
    std::vector<HWND> windows;
    EnumWindows(add_program, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

DWORD process_of(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

void close_program(HWND window) {
    const vl::UniqueHandle process(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, process_of(window)));
    PostMessageA(window, WM_CLOSE, 0, 0);
    if (!process || WaitForSingleObject(process.get(), kDeadline_ms) == WAIT_OBJECT_0) return;
    TerminateProcess(process.get(), 1);
    ADD_FAILURE() << "a program does not end when its window is closed";
}

constexpr char kNeighbourhood[] = R"({"ready": true, "devices": [
    {"name": "Test Phone", "address": "00:11:22:33:44:55", "class": "0x5A020C", "paired": true,
     "services": [{"class": "0x1105", "name": "Push"}, {"class": "0x1106", "name": "Files"},
                  {"class": "0x1132", "name": "Messages"}]}]})";

BtHandle phone_handle() {
    const uint8_t address[6] = {0x55, 0x44, 0x33, 0x22, 0x11, 0x00};
    return Btsdk_GetRemoteDeviceHandle(address);
}

}  // namespace

SuitePrograms::SuitePrograms() {
    close_programs();  // of a run that was broken off
    remove_logs();
    remove_folder(work_folder());
    std::filesystem::create_directories(work_folder());
    EXPECT_EQ(VlSim_LoadScenario(kNeighbourhood), 0u);
    phone_ = phone_handle();
    EXPECT_NE(phone_, 0u);
    for (const std::wstring& name : names_in(inbox())) DeleteFileW((inbox() + L"\\" + name).c_str());
    settings().common("General", "InstallDir", ansi(program_folder()));
}

SuitePrograms::~SuitePrograms() {
    close_programs();
    remove_folder(work_folder());
}

std::wstring SuitePrograms::inbox() const { return inbox_folder(phone_); }

std::wstring SuitePrograms::work_folder() { return temp_folder(L"programs_test_work"); }

std::wstring SuitePrograms::make_file(const std::wstring& name, const std::string& content) const {
    std::wstring path = work_folder() + L"\\" + name;
    std::ofstream(std::filesystem::path(path), std::ios::binary) << content;
    return path;
}

AgentProcess::AgentProcess() : ChildProcess("VlTray.exe") {
    EXPECT_TRUE(logs(L"VlTray", std::string("window \"") + kTrayTitle + "\""));
}

void close_programs() {
    for (HWND window : program_windows()) close_program(window);
}

DWORD process_of_window(const char* title) {
    HWND window = FindWindowA(nullptr, title);
    return window ? process_of(window) : 0;
}

std::vector<std::string> log_lines(const std::wstring& program) {
    std::ifstream file(std::filesystem::path(log_path(program)), std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(without_stamp(line));
    }
    return lines;
}

size_t count_lines(const std::wstring& program, const std::string& line) {
    const std::vector<std::string> lines = log_lines(program);
    return static_cast<size_t>(std::count(lines.begin(), lines.end(), line));
}

::testing::AssertionResult logs(const std::wstring& program, const std::string& line, size_t times) {
    const bool came =
        wait_in_folder(log_folder(), kDeadline_ms, [&] { return count_lines(program, line) >= times; });
    if (came) return ::testing::AssertionSuccess();
    auto failure = ::testing::AssertionFailure() << "not " << times << " x \"" << line << "\" in:";
    for (const std::string& each : log_lines(program)) failure << "\n  " << each;
    return failure;
}

std::string content_of(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::wstring> names_in(const std::wstring& folder) {
    std::vector<std::wstring> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().wstring());
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace suite
