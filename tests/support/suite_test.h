// The fixture of the library's tests. It starts from a clean simulated stack, clean settings files and
// an empty trace log; after the test's own members are gone it checks that nothing is left: no handle,
// window, memory, view, enumeration or trace scope, and no misuse of the stack.
#pragma once

#include "support/suite_checks.h"

#include "support/settings_scope.h"

#include <gtest/gtest.h>

#include <memory>

namespace support {

class SuiteTest : public ::testing::Test {
public:
    ~SuiteTest() override;
    SuiteTest(const SuiteTest&) = delete;
    SuiteTest& operator=(const SuiteTest&) = delete;

protected:
    SuiteTest();

    // Expects leaks of the rows of this name in allowed_leaks.h: they must be there.
    void allow_leak(const char* name, size_t times = 1);

    // Settings of this test; they are put back at its end.
    SettingsScope& settings() { return settings_; }
    // The library's memory: makes allocations fail and counts them.
    BlockLedger& blocks() { return checks_->blocks(); }
    SuiteChecks& checks() { return *checks_; }

private:
    SettingsScope settings_;
    std::unique_ptr<SuiteChecks> checks_;
};

// Runs `body` for each row, with the row's label on every failure; stops after a fatal one.
template <typename Rows, typename Body>
void for_each_row(const Rows& rows, Body body) {
    for (const auto& row : rows) {
        const ::testing::ScopedTrace label(__FILE__, __LINE__, row.label);
        body(row);
        if (::testing::Test::HasFatalFailure()) return;
    }
}

// Tells whether a list of lines holds a line, or all of some lines in this order, and shows it if not.
::testing::AssertionResult has_line(const std::vector<std::string>& lines, const std::string& line);
::testing::AssertionResult has_in_order(const std::vector<std::string>& lines,
                                        const std::vector<std::string>& expected);

}  // namespace support
