#include "process_test.h"

namespace process_test {

Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Lines repeated(int times, const Lines& lines) {
    Lines all;
    for (int i = 0; i < times; ++i) all.insert(all.end(), lines.begin(), lines.end());
    return all;
}

std::string look_for(const std::string& title) { return "FindWindowA(null, \"" + title + "\")"; }

std::string sleep_of(DWORD milliseconds) { return "Sleep(" + std::to_string(milliseconds) + ")"; }

std::string start_of_file(const std::string& path) {
    return "CreateProcessA(\"" + path + "\", null, null, null, 0, 0, null, null, own size, zeroed)";
}

std::string start_of_command_line(const std::string& command) {
    return "CreateProcessA(null, \"" + command + "\", null, null, 0, 0, null, null, size 0, zeroed)";
}

const Lines& close_program() {
    static const Lines kLines = {"CloseHandle(thread)", "CloseHandle(process)"};
    return kLines;
}

Lines scope_of(const std::string& name) { return nested(name, {}); }

Lines nested(const std::string& name, const Lines& inside) {
    return Lines{">512 " + name} + inside + Lines{"<512 " + name};
}

std::string lower_case(std::string text) {
    CharLowerBuffA(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

ProcessTest::~ProcessTest() {
    MSG left;  // WM_QUIT is the thread's, not its window's
    while (PeekMessageA(&left, nullptr, 0, 0, PM_REMOVE)) continue;
}

Lines ProcessTest::trace() {
    Lines entries = support::trace_log();
    support::clear_trace_log();
    return entries;
}

QueueWindow::QueueWindow(const char* title, const char* window_class) {
    WNDCLASSA own{};
    own.lpfnWndProc = DefWindowProcA;
    own.lpszClassName = window_class;
    RegisterClassA(&own);  // fails for a class that is there
    handle_ =
        CreateWindowExA(0, window_class, title, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    EXPECT_NE(handle_, nullptr);
}

bool QueueWindow::got(UINT message) const {
    MSG taken;
    // WM_QUIT comes whatever is asked for.
    return PeekMessageA(&taken, handle_, message, message, PM_REMOVE) && taken.message == message;
}

RelayRecorder::RelayRecorder(PlatformCalls& calls) : calls_(calls) {
    current_ = this;
    VlSim_Hook("Btsdk_PostMessageToCtrlCenter", reinterpret_cast<void*>(relay));
}

RelayRecorder::~RelayRecorder() { VlSim_Hook("Btsdk_PostMessageToCtrlCenter", nullptr); }

uint32_t RelayRecorder::relay(uint32_t message, uint32_t parameter) {
    char text[32];
    snprintf(text, sizeof text, "0x%x, 0x%x", message, parameter);
    current_->calls_.record("relay", {text});
    return current_->answer;
}

}  // namespace process_test
