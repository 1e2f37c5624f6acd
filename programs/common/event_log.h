// What a program of the suite saw and did, one line each, so that people and tests can follow it.
#pragma once

#include <string>

namespace programs {

// Appends to "<program>.log" in the log folder: UTC time, process, text. Several processes may write to
// one file: a line is one write at the end of the file.
class EventLog {
public:
    // Writes the first line: "started" and the command line.
    EventLog();
    ~EventLog();
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    // A line of UTF-8 text; line ends inside it become spaces.
    void line(const std::string& text) const;

private:
    std::wstring path_;
};

// The folder of all logs: "log" in the simulated stack's home (environment variable VLSIM_HOME, else
// "vlsim" in the user's local application data). No closing backslash; made when missing.
[[nodiscard]] std::wstring log_folder();
// The path of a program's log. `program` is its file name without ".exe".
[[nodiscard]] std::wstring log_path(const std::wstring& program);
// The folder of the running program, without a closing backslash.
[[nodiscard]] std::wstring program_folder();

}  // namespace programs
