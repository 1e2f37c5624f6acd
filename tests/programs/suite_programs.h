// The fixture of the tests that run the suite's programs: real processes, followed through their logs.
#pragma once

#include "support/child_process.h"
#include "support/suite_test.h"

#include "VlSDK.h"
#include "protocol.h"

#include <string>
#include <vector>

namespace suite {

// Every wait of these tests ends here at the latest.
inline constexpr DWORD kDeadline_ms = 20000;

class SuitePrograms : public support::SuiteTest {
public:
    ~SuitePrograms() override;

protected:
    SuitePrograms();

    // A device of the test's own neighbourhood.
    static constexpr char kPhoneName[] = "Test Phone";
    [[nodiscard]] BtHandle phone() const { return phone_; }
    [[nodiscard]] std::wstring inbox() const;

    // A file in a folder of this test; the folder is removed at the end.
    std::wstring make_file(const std::wstring& name, const std::string& content) const;
    [[nodiscard]] static std::wstring work_folder();

private:
    BtHandle phone_ = 0;
};

// The tray agent, up and with its window.
class AgentProcess : public support::ChildProcess {
public:
    AgentProcess();
};

// Closes all programs of the suite that have a window and waits for their end.
void close_programs();
// The process of the window with this title; 0: there is none.
[[nodiscard]] DWORD process_of_window(const char* title);

// The lines of a program's log without time and process, oldest first.
[[nodiscard]] std::vector<std::string> log_lines(const std::wstring& program);
[[nodiscard]] size_t count_lines(const std::wstring& program, const std::string& line);
// Waits until the log holds the line `times` times.
[[nodiscard]] ::testing::AssertionResult logs(const std::wstring& program, const std::string& line,
                                              size_t times = 1);

[[nodiscard]] std::string content_of(const std::wstring& path);
// The names in a folder, sorted.
[[nodiscard]] std::vector<std::wstring> names_in(const std::wstring& folder);

}  // namespace suite
