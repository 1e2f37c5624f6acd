#include "child_process.h"

#include "stopwatch.h"

#include <stdexcept>
#include <string>

namespace bench {
namespace {

constexpr double kUnitNs = 100;  // of the exit code; 0 is a failure

std::string own_path() {
    char path[MAX_PATH];
    return {path, GetModuleFileNameA(nullptr, path, sizeof path)};
}

DWORD exit_code_of(std::string command) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process;
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process)) {
        throw std::runtime_error("cannot start " + command);
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

}  // namespace

double first_load_in_child(const char* file) {
    const DWORD units = exit_code_of('"' + own_path() + "\" --first-load " + file);
    if (units == 0) throw std::runtime_error(std::string("a new process could not load ") + file);
    return units * kUnitNs;
}

int load_and_tell_time(const char* file) {
    const Stopwatch watch;
    if (LoadLibraryA(file) == nullptr) return 0;
    return static_cast<int>(watch.nanoseconds() / kUnitNs);
}

}  // namespace bench
