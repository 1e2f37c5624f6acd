// Other processes of a test: a program of the suite, a copy of the test program under another name, or
// a role of the test program (role.h). They run in the folder of the built modules unless told
// otherwise, and are ended when the object goes.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace support {

// Where the built programs and modules are: "...\bin\".
std::string bin_folder();
// This test program's path.
std::string own_path();

struct ChildOptions {
    std::vector<std::string> arguments{};
    // Added to this process's environment; "" takes a variable away. Wine's own variables and LC_ALL
    // have no effect here: it takes them from the process that started it, for all its children.
    std::map<std::string, std::string> environment{};
    // Where it runs; "" is bin_folder().
    std::string folder{};
};

class ChildProcess {
public:
    static constexpr DWORD kDeadlineMs = 30000, kStillRunning = STILL_ACTIVE;

    // program: a path, or the name of a program in bin_folder().
    explicit ChildProcess(const std::string& program, const ChildOptions& options = {});
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] bool started() const { return process_ != nullptr; }
    [[nodiscard]] DWORD id() const { return id_; }
    [[nodiscard]] HANDLE handle() const { return process_; }
    [[nodiscard]] bool running() const;
    // Waits for its end: the exit code, or kStillRunning when the deadline has passed.
    [[nodiscard]] DWORD wait(DWORD deadline_ms = kDeadlineMs);
    // Ends it now, without asking.
    void kill();
    // What it wrote to its standard output and error so far.
    [[nodiscard]] std::string output() const;

private:
    HANDLE process_ = nullptr;
    DWORD id_ = 0;
    HANDLE output_ = INVALID_HANDLE_VALUE;
};

// The running program's file under another name, in a folder of its own, for as long as it lives.
class ProgramCopy {
public:
    explicit ProgramCopy(const std::string& name);
    ~ProgramCopy();
    ProgramCopy(const ProgramCopy&) = delete;
    ProgramCopy& operator=(const ProgramCopy&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string folder() const { return path_.substr(0, path_.rfind('\\') + 1); }

private:
    std::string path_;
};

struct RoleResult {
    DWORD exit_code;  // ChildProcess::kStillRunning: it was killed at the deadline
    std::string output;
};

// The command line of a role, for a ChildProcess that runs on while the test goes on.
ChildOptions role_options(const std::string& role, const std::vector<std::string>& arguments = {});

// Runs a role of this program to its end: as it is, under another file name, or as if on another
// version of Windows ("winxp64", "win2003", "vista", "win7", "win10").
RoleResult run_role(const std::string& role, const std::vector<std::string>& arguments = {},
                    const std::map<std::string, std::string>& environment = {});
RoleResult run_role_as(const std::string& program_name, const std::string& role,
                       const std::vector<std::string>& arguments = {});
RoleResult run_role_under_version(const std::string& role, const std::string& version,
                                  const std::vector<std::string>& arguments = {});

// A named event that two processes meet at.
class NamedEvent {
public:
    explicit NamedEvent(const std::string& name) : event_(CreateEventA(nullptr, TRUE, FALSE, name.c_str())) {}
    ~NamedEvent() { CloseHandle(event_); }
    NamedEvent(const NamedEvent&) = delete;
    NamedEvent& operator=(const NamedEvent&) = delete;

    void set() { SetEvent(event_); }
    void reset() { ResetEvent(event_); }
    [[nodiscard]] bool wait(DWORD deadline_ms = ChildProcess::kDeadlineMs) {
        return WaitForSingleObject(event_, deadline_ms) == WAIT_OBJECT_0;
    }

private:
    HANDLE event_;
};

}  // namespace support
