// What a sub-command answers: facts, shown as text or as JSON, and an exit code.
#pragma once

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>

namespace programs {

using Json = nlohmann::ordered_json;

enum ExitCode : int {
    kYes = 0,
    kNo = 1,  // the answer is no, or something was not found
    kUsage = 2,
};

struct Answer {
    Json facts;
    ExitCode exit_code = kYes;
};

// Nothing can be answered: the text goes to the error output, the exit code is kNo.
class NotFound : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A member as text for people: a text as it is, null and what is missing as "-".
[[nodiscard]] inline std::string shown(const Json& facts, const char* member) {
    const auto found = facts.find(member);
    if (found == facts.end() || found->is_null()) return "-";
    return found->is_string() ? found->get<std::string>() : found->dump();
}

}  // namespace programs
