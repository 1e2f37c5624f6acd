#include "support/suite_test.h"

#include <algorithm>

namespace support {
namespace {

std::string listed(const std::vector<std::string>& lines) {
    std::string text = lines.empty() ? "\n  (no lines)" : "";
    for (const std::string& line : lines) text += "\n  " + line;
    return text;
}

}  // namespace

SuiteTest::SuiteTest() {
    settings_.clear_all();
    checks_ = std::make_unique<SuiteChecks>(library_under_test());
}

SuiteTest::~SuiteTest() {
    for (const std::string& text : checks_->failures()) ADD_FAILURE() << text;
    checks_->clean_up();
}

void SuiteTest::allow_leak(const char* name, size_t times) {
    if (!checks_->allow(name, times)) ADD_FAILURE() << "allowed_leaks.h has no row \"" << name << "\"";
}

::testing::AssertionResult has_line(const std::vector<std::string>& lines, const std::string& line) {
    if (std::find(lines.begin(), lines.end(), line) != lines.end()) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "no line \"" << line << "\" in:" << listed(lines);
}

::testing::AssertionResult has_in_order(const std::vector<std::string>& lines,
                                        const std::vector<std::string>& expected) {
    auto from = lines.begin();
    for (const std::string& line : expected) {
        from = std::find(from, lines.end(), line);
        if (from == lines.end()) {
            return ::testing::AssertionFailure()
                   << "no line \"" << line << "\" in its place in:" << listed(lines);
        }
        ++from;
    }
    return ::testing::AssertionSuccess();
}

}  // namespace support
