// What must be as it was when a test ends. Each check answers a text, empty when all is well, so that
// tests of the kit itself can seed a leak and read what is said about it.
#pragma once

#include "support/block_ledger.h"
#include "support/handle_census.h"
#include "support/window_census.h"

#include <array>
#include <string>
#include <vector>

namespace support {

class SuiteChecks {
public:
    // Resets the simulated stack and the trace log and takes stock. module: null or the program itself
    // leaves memory, views and modules out (a test program takes blocks of its own).
    explicit SuiteChecks(HMODULE module);
    ~SuiteChecks();
    SuiteChecks(const SuiteChecks&) = delete;
    SuiteChecks& operator=(const SuiteChecks&) = delete;

    // Expects the leaks of the rows of this name, once or more often; they are no failure then, their
    // absence is. False: kAllowedLeaks has no such row.
    bool allow(const char* name, size_t times = 1);

    // Leaks of one kind against what is allowed.
    [[nodiscard]] std::string leaks(LeakKind kind) const;
    [[nodiscard]] std::string wrong_frees() const;
    [[nodiscard]] std::string unbalanced_scopes() const;
    [[nodiscard]] std::string sdk_misuse() const;
    // The texts of all checks that found something.
    [[nodiscard]] std::vector<std::string> failures() const;

    // Closes what was left, so that the next test starts clean.
    void clean_up();

    [[nodiscard]] BlockLedger& blocks() { return blocks_; }

private:
    [[nodiscard]] std::vector<std::string> found(LeakKind kind) const;

    std::array<size_t, static_cast<size_t>(LeakKind::kCount)> allowed_{};
    WindowCensus windows_;
    BlockLedger blocks_;
    HandleCensus handles_;  // last: what the others open belongs to the stock
};

}  // namespace support
