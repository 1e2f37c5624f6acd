// The fixture of the tests of vlcm.exe, which runs as a process of its own, as a script runs it.
#pragma once

#include "suite_programs.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace suite {

using Json = nlohmann::json;

inline constexpr DWORD kYes = 0, kNo = 1, kUsage = 2;

struct Outcome {
    DWORD exit_code;
    std::string output;
};

class CommandLine : public SuitePrograms {
protected:
    [[nodiscard]] static Outcome run(const std::vector<std::string>& arguments) {
        support::ChildProcess program("vlcm.exe", {arguments});
        const DWORD code = program.wait();
        return {code, program.output()};
    }
    // What a query answers with --json; the exit code must be `expected`.
    [[nodiscard]] static Json ask(std::vector<std::string> arguments, DWORD expected = kYes) {
        arguments.emplace_back("--json");
        const Outcome answer = run(arguments);
        EXPECT_EQ(answer.exit_code, expected) << answer.output;
        Json facts = Json::parse(answer.output, nullptr, false);
        EXPECT_FALSE(facts.is_discarded()) << answer.output;
        return facts;
    }
};

}  // namespace suite
