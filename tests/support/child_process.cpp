#include "support/child_process.h"

#include "support/settings_scope.h"

#include <stdlib.h>
#include <string.h>

namespace support {
namespace {

// One argument as the C runtime's start-up reads it back.
std::string quoted(const std::string& argument) {
    std::string text = "\"";
    size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '"') text.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, '\\') + "\"";
}

struct IgnoringCase {
    bool operator()(const std::string& a, const std::string& b) const {
        return _stricmp(a.c_str(), b.c_str()) < 0;
    }
};

std::string environment_block(const std::map<std::string, std::string>& changes) {
    std::map<std::string, std::string, IgnoringCase> all;
    char* own = GetEnvironmentStringsA();
    for (const char* entry = own; *entry != '\0'; entry += strlen(entry) + 1) {
        const std::string line = entry;
        const size_t equals = line.find('=', 1);  // "=C:=C:\" names a drive's folder
        if (equals != std::string::npos) all[line.substr(0, equals)] = line.substr(equals + 1);
    }
    FreeEnvironmentStringsA(own);
    for (const auto& [name, value] : changes) all[name] = value;
    std::string block;
    for (const auto& [name, value] : all) {
        if (!value.empty()) block.append(name).append("=").append(value).push_back('\0');
    }
    return block + '\0';
}

// A file that its last user deletes; the child inherits it.
HANDLE output_file() {
    char folder[MAX_PATH], path[MAX_PATH];
    GetTempPathA(MAX_PATH, folder);
    GetTempFileNameA(folder, "out", 0, path);
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileA(path, GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited, CREATE_ALWAYS,
                       FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

std::string command_line(const std::string& path, const ChildOptions& options) {
    std::string line = quoted(path);
    for (const std::string& argument : options.arguments) line += " " + quoted(argument);
    return line;
}

RoleResult run_to_end(const std::string& program, const ChildOptions& options) {
    ChildProcess child(program, options);
    const DWORD code = child.wait();
    child.kill();
    return {code, child.output()};
}

}  // namespace

std::string own_path() {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

// A copy of a test program stands elsewhere; its working folder is the modules' one.
std::string bin_folder() {
    const std::string path = own_path();
    const size_t copies = path.find("\\copies\\");
    return path.substr(0, (copies == std::string::npos ? path.rfind('\\') : copies) + 1);
}

ChildProcess::ChildProcess(const std::string& program, const ChildOptions& options) : output_(output_file()) {
    const std::string path = program.find('\\') == std::string::npos ? bin_folder() + program : program;
    std::string line = command_line(path, options);
    std::string environment = environment_block(options.environment);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = output_;
    PROCESS_INFORMATION made{};
    const std::string folder = options.folder.empty() ? bin_folder() : options.folder;
    if (!CreateProcessA(path.c_str(), line.data(), nullptr, nullptr, TRUE, 0, environment.data(),
                        folder.c_str(), &start, &made)) {
        return;
    }
    CloseHandle(made.hThread);
    process_ = made.hProcess;
    id_ = made.dwProcessId;
}

ChildProcess::~ChildProcess() {
    kill();
    if (process_) CloseHandle(process_);
    CloseHandle(output_);
}

bool ChildProcess::running() const { return process_ && WaitForSingleObject(process_, 0) == WAIT_TIMEOUT; }

DWORD ChildProcess::wait(DWORD deadline_ms) {
    DWORD code = kStillRunning;
    if (!process_) return code;
    if (WaitForSingleObject(process_, deadline_ms) == WAIT_OBJECT_0) GetExitCodeProcess(process_, &code);
    return code;
}

void ChildProcess::kill() {
    if (!running()) return;
    TerminateProcess(process_, 1);
    WaitForSingleObject(process_, kDeadlineMs);
}

std::string ChildProcess::output() const {
    std::string text;
    char part[4096];
    OVERLAPPED from{};  // reads at a place of its own: the child writes at the shared one
    DWORD got = 0;
    while (ReadFile(output_, part, sizeof part, &got, &from) && got != 0) {
        text.append(part, got);
        from.Offset += got;
    }
    return text;
}

ProgramCopy::ProgramCopy(const std::string& name) {
    static int number = 0;
    const std::string folders = bin_folder() + "copies";
    const std::string folder =
        folders + "\\" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number);
    CreateDirectoryA(folders.c_str(), nullptr);
    CreateDirectoryA(folder.c_str(), nullptr);
    path_ = folder + "\\" + name;
    // No hard link: under Wine it could not be deleted while this program runs.
    CopyFileA(own_path().c_str(), path_.c_str(), FALSE);
}

ProgramCopy::~ProgramCopy() {
    DeleteFileA(path_.c_str());
    RemoveDirectoryA(folder().c_str());
    RemoveDirectoryA((bin_folder() + "copies").c_str());
}

ChildOptions role_options(const std::string& role, const std::vector<std::string>& arguments) {
    ChildOptions options;
    options.arguments = arguments;
    options.arguments.insert(options.arguments.begin(), "--role=" + role);
    return options;
}

RoleResult run_role(const std::string& role, const std::vector<std::string>& arguments,
                    const std::map<std::string, std::string>& environment) {
    ChildOptions options = role_options(role, arguments);
    options.environment = environment;
    return run_to_end(own_path(), options);
}

RoleResult run_role_as(const std::string& program_name, const std::string& role,
                       const std::vector<std::string>& arguments) {
    const ProgramCopy copy(program_name);
    return run_to_end(copy.path(), role_options(role, arguments));
}

// Wine reads the version to report from a key named after the program's file.
RoleResult run_role_under_version(const std::string& role, const std::string& version,
                                  const std::vector<std::string>& arguments) {
    const std::string name = "role-" + std::to_string(GetCurrentProcessId()) + "-" + version + ".exe";
    RegistryScope registry;
    registry.set(HKEY_CURRENT_USER, ("Software\\Wine\\AppDefaults\\" + name).c_str(), "Version", version);
    return run_role_as(name, role, arguments);
}

}  // namespace support
