#include "program.h"

namespace vl::process {
namespace {

Program start(const char* path, char* command_line, STARTUPINFOA startup) {
    PROCESS_INFORMATION created{};
    Program program;
    program.started = CreateProcessA(path, command_line, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                     &startup, &created) != FALSE;
    if (program.started) {
        program.process.reset(created.hProcess);
        program.thread.reset(created.hThread);
    }
    return program;
}

}  // namespace

Program start_file(const char* path) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    return start(path, nullptr, startup);
}

Program start_command_line(char* command_line) { return start(nullptr, command_line, STARTUPINFOA{}); }

}  // namespace vl::process
