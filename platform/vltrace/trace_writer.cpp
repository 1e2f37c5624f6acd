#include "trace_writer.h"

#include <stdio.h>
#include <stdlib.h>

#include <algorithm>

namespace vltrace {
namespace {

std::string variable(const char* name) {
    std::string value(GetEnvironmentVariableA(name, nullptr, 0), '\0');
    if (!value.empty())
        value.resize(GetEnvironmentVariableA(name, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

void complain(const std::string& text) { OutputDebugStringA(("VlTrace: " + text + "\r\n").c_str()); }

// "512,8" or "0x200 8": numbers of either base, any other character between them.
std::vector<uint32_t> module_numbers(const std::string& list) {
    std::vector<uint32_t> numbers;
    const char* rest = list.c_str();
    while (*rest != '\0') {
        char* end = nullptr;
        const unsigned long number = strtoul(rest, &end, 0);
        if (end == rest) {
            ++rest;
        } else {
            numbers.push_back(static_cast<uint32_t>(number));
            rest = end;
        }
    }
    return numbers;
}

std::string program_path() {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

// "14:03:22.123 0024:002c  512 ": local time, process and thread in hexadecimal, module.
std::string prefix(uint32_t module) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char text[64];
    snprintf(text, sizeof text, "%02u:%02u:%02u.%03u %04lx:%04lx %4lu ", unsigned{now.wHour},
             unsigned{now.wMinute}, unsigned{now.wSecond}, unsigned{now.wMilliseconds}, GetCurrentProcessId(),
             GetCurrentThreadId(), static_cast<unsigned long>(module));
    return text;
}

// One entry is one line whatever its text holds.
std::string on_one_line(std::string text) {
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n')) text.pop_back();
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return text;
}

}  // namespace

void TraceWriter::open() {
    const std::string target = variable("VLTRACE");
    modules_ = module_numbers(variable("VLTRACE_MODULES"));
    if (target.rfind("file:", 0) == 0) {
        open_file(target.substr(5));
    } else if (target == "debugger") {
        target_ = Target::kDebugger;
    } else if (!target.empty()) {
        complain("VLTRACE is neither file:PATH nor debugger: " + target);
    }
    if (active()) line(0, 0, '#', program_path());
}

// Appended, and shared: each line is one write, so several processes may trace into one file.
void TraceWriter::open_file(const std::string& path) {
    file_ = CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file_ == INVALID_HANDLE_VALUE) {
        complain("cannot open the trace file " + path);
    } else {
        target_ = Target::kFile;
    }
}

void TraceWriter::close() {
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
    target_ = Target::kNone;
}

bool TraceWriter::shows(uint32_t module) const {
    return modules_.empty() || std::find(modules_.begin(), modules_.end(), module) != modules_.end();
}

void TraceWriter::line(uint32_t module, size_t depth, char kind, const std::string& text) {
    if (!active()) return;
    put(prefix(module) + std::string(2 * depth, ' ') + kind + ' ' + on_one_line(text) + "\r\n");
}

void TraceWriter::put(const std::string& text) {
    if (target_ == Target::kDebugger) {
        OutputDebugStringA(text.c_str());
    } else {
        DWORD written = 0;
        WriteFile(file_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    }
}

}  // namespace vltrace
