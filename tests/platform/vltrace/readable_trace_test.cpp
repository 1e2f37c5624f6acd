// The trace that a person reads, switched on by environment variables.
#include "fresh_facility.h"

#include "support/child_process.h"
#include "support/debug_output.h"
#include "support/role.h"
#include "support/settings_scope.h"

#include <gtest/gtest.h>

#include <vector>

using support::DebugOutput;
using vltrace_test::FreshFacility;
using vltrace_test::ScopeBytes;

namespace {

using Lines = std::vector<std::string>;

std::string trace_path() {
    char folder[MAX_PATH];
    GetTempPathA(MAX_PATH, folder);
    return std::string(folder) + "vltrace test.txt";
}

Lines split(const std::string& text) {
    Lines lines;
    for (size_t from = 0, end = 0; (end = text.find("\r\n", from)) != std::string::npos; from = end + 2) {
        lines.push_back(text.substr(from, end - from));
    }
    return lines;
}

constexpr size_t kProcessColumn = 13, kModuleColumn = 23, kTextColumn = 28;

// Module and text of each line; the time that a scope took becomes "N".
Lines what_was_traced(const Lines& lines) {
    Lines shown;
    for (std::string line : lines) {
        const size_t us = line.rfind(" us");
        if (us != std::string::npos) line.replace(line.rfind(' ', us - 1) + 1, std::string::npos, "N us");
        shown.push_back(line.substr(std::min(kModuleColumn, line.size())));
    }
    return shown;
}

class ReadableTrace : public ::testing::Test {
protected:
    ReadableTrace() { DeleteFileA(trace_path().c_str()); }
    ~ReadableTrace() override { DeleteFileA(trace_path().c_str()); }
    static Lines file_lines() { return split(support::read_file(trace_path()).value_or("no file")); }
    // Without the line that names the program.
    static Lines traced() {
        Lines lines = what_was_traced(file_lines());
        if (!lines.empty()) lines.erase(lines.begin());
        return lines;
    }
    std::string to_file_ = "file:" + trace_path();
    ScopeBytes outer_{}, inner_{};
};

}  // namespace

TEST_ROLE(traces) {
    char name[] = "Role";
    const CVlTraceFunc scope(512, name);
    return 0;
}

TEST_F(ReadableTrace, IndentsByTheOpenScopes) {
    FreshFacility facility(to_file_.c_str());
    facility.enter(outer_, 512, "Outer");
    facility.enter(inner_, 8, "Inner");
    facility.write(8, "value %d\r\n", 5);
    facility.leave(inner_);
    facility.write(512, "two\r\nlines\n");
    facility.leave(outer_);
    EXPECT_EQ(traced(), (Lines{" 512 > Outer", "   8   > Inner", "   8     = value 5", "   8   < Inner N us",
                               " 512   = two  lines", " 512 < Outer N us"}));
}

TEST_F(ReadableTrace, StampsTimeProcessAndThread) {
    FreshFacility facility(to_file_.c_str());
    SYSTEMTIME now;
    GetLocalTime(&now);
    facility.write(512, "line");
    const Lines lines = file_lines();
    ASSERT_EQ(lines.size(), 2u);
    const std::string& line = lines[1];
    unsigned hour = 99, minute = 99, second = 99, milliseconds = 9999, process = 0, thread = 0;
    EXPECT_EQ(sscanf(line.c_str(), "%2u:%2u:%2u.%3u %x:%x", &hour, &minute, &second, &milliseconds, &process,
                     &thread),
              6);
    const int stamped = static_cast<int>(hour * 60 + minute), taken = now.wHour * 60 + now.wMinute;
    EXPECT_LE((stamped - taken + 1440) % 1440, 1) << line;
    EXPECT_LT(second, 60u);
    EXPECT_LT(milliseconds, 1000u);
    EXPECT_EQ(process, GetCurrentProcessId());
    EXPECT_EQ(thread, GetCurrentThreadId());
}

TEST_F(ReadableTrace, BeginsWithTheProgram) {
    const FreshFacility facility(to_file_.c_str());
    EXPECT_EQ(what_was_traced(file_lines()), Lines{"   0 # " + support::own_path()});
}

TEST_F(ReadableTrace, ShowsTheChosenModulesOnly) {
    FreshFacility facility(to_file_.c_str(), "0x400, 8");
    facility.enter(outer_, 512, "Outer");
    facility.enter(inner_, 1024, "Inner");
    facility.write(512, "not this");
    facility.write(8, "but this");
    facility.leave(inner_);
    facility.leave(outer_);
    EXPECT_EQ(traced(), (Lines{"1024 > Inner", "   8   = but this", "1024 < Inner N us"}));
}

TEST_F(ReadableTrace, ReportsUnbalancedScopesUnderEveryFilter) {
    FreshFacility facility(to_file_.c_str(), "8");
    facility.enter(outer_, 512, "Outer");
    facility.enter(inner_, 512, "Inner");
    facility.leave(outer_);
    EXPECT_EQ(traced(), Lines{"   0 ! 512 Outer was left before 512 Inner, entered later"});
}

TEST_F(ReadableTrace, ReportsScopesThatAreOpenAtTheEnd) {
    FreshFacility facility(to_file_.c_str());
    facility.enter(outer_, 512, "Outer");
    facility.unload();
    const std::string thread = std::to_string(GetCurrentThreadId());
    EXPECT_EQ(traced(), (Lines{" 512 > Outer", "   0 ! 512 Outer in thread " + thread + " was never left"}));
}

TEST_F(ReadableTrace, AppendsAndSharesItsFile) {
    const FreshFacility first(to_file_.c_str()), second(to_file_.c_str());
    first.write(512, "first");
    second.write(512, "second");
    first.write(512, "third");
    EXPECT_EQ(what_was_traced(file_lines()),
              (Lines{"   0 # " + support::own_path(), "   0 # " + support::own_path(), " 512 = first",
                     " 512 = second", " 512 = third"}));
}

TEST_F(ReadableTrace, IsWrittenByEachProcessThatLoadsTheFacility) {
    const FreshFacility facility(to_file_.c_str());
    EXPECT_EQ(support::run_role("traces", {}, {{"VLTRACE", to_file_}}).exit_code, 0u);
    EXPECT_EQ(traced(), (Lines{"   0 # " + support::own_path(), " 512 > Role", " 512 < Role N us"}));
    const Lines lines = file_lines();
    EXPECT_NE(lines[0].substr(kProcessColumn, 4), lines[1].substr(kProcessColumn, 4));
}

TEST_F(ReadableTrace, GoesToTheDebuggerOneStringPerLine) {
    const DebugOutput output;
    FreshFacility facility("debugger");
    facility.write(512, "line\r\n");
    facility.unload();
    const Lines strings = output.lines();
    ASSERT_EQ(strings.size(), 2u);
    EXPECT_EQ(strings[1].substr(kTextColumn), "= line\r\n");
    EXPECT_EQ(what_was_traced(split(strings[0])), Lines{"   0 # " + support::own_path()});
}

TEST_F(ReadableTrace, TellsTheDebuggerWhenItCannotBeSwitchedOn) {
    const struct {
        const char* label;
        const char* target;
        const char* complaint;
    } rows[] = {
        {"unknown word", "printer", "VlTrace: VLTRACE is neither file:PATH nor debugger: printer\r\n"},
        {"no such folder", "file:C:\\no such folder\\x.txt",
         "VlTrace: cannot open the trace file C:\\no such folder\\x.txt\r\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        const DebugOutput output;
        FreshFacility facility(row.target);
        facility.write(512, "line");
        facility.unload();
        EXPECT_EQ(output.text(), row.complaint);
    }
}
