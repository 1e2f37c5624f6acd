// Ways in which the stack's answers and the library's memory go wrong, one at a time.
#pragma once

#include "support/block_ledger.h"
#include "support/sdk_log.h"

#include "VlSim.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace shortcuts_test {

using Lines = std::vector<std::string>;

inline constexpr uint32_t kFailed = 0x0777;  // no code that the library or the simulated stack makes

// Answers an operation by a function of the same prototype until the end.
template <typename R, typename... A>
class Hook {
public:
    Hook(const char* operation, R (*answer)(A...)) : operation_(operation) {
        VlSim_Hook(operation_, reinterpret_cast<void*>(answer));
    }
    ~Hook() { VlSim_Hook(operation_, nullptr); }
    Hook(const Hook&) = delete;
    Hook& operator=(const Hook&) = delete;

private:
    const char* operation_;
};

// Runs `call` once for each allocation that it makes, which then fails; answers how many there are.
template <typename Call>
size_t fail_each_allocation(support::BlockLedger& blocks, Call call) {
    const size_t before = blocks.allocations();
    call();
    const size_t count = blocks.allocations() - before;
    for (size_t n = 1; n <= count; ++n) {
        const ::testing::ScopedTrace label(__FILE__, __LINE__, "allocation " + std::to_string(n));
        blocks.fail_nth(n);
        support::clear_sdk_log();
        call();
    }
    blocks.fail_nth(0);
    return count;
}

inline bool gives_back(const std::string& operation) {
    return operation.find("End") != std::string::npos || operation.find("Free") != std::string::npos ||
           operation.find("Close") != std::string::npos;
}

// Runs `call` once for each operation that it asks of the stack, which then fails with `code`, but for those
// that give something back; what stays open fails the test. Answers how many operations there are.
template <typename Call>
size_t fail_each_operation(uint32_t code, Call call) {
    support::clear_sdk_log();
    call();
    const Lines operations = support::sdk_operations();
    std::map<std::string, uint32_t> seen;
    for (const std::string& operation : operations) {
        if (gives_back(operation)) continue;
        const uint32_t nth = ++seen[operation];
        const ::testing::ScopedTrace label(__FILE__, __LINE__, operation + " " + std::to_string(nth));
        VlSim_Fail(operation.c_str(), nth, code);
        call();
        VlSim_ClearFaults();
        EXPECT_EQ(VlSim_LiveCount(VLSIM_ENUMERATIONS), 0u);
        EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 0u);
        EXPECT_EQ(VlSim_LiveCount(VLSIM_KEYS), 0u);
    }
    return operations.size();
}

}  // namespace shortcuts_test
