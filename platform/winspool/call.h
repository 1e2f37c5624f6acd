// The road that every function of the spooler takes: log and faults, then its rule.
#pragma once

#include "call_log.h"
#include "misuse.h"
#include "operation.h"

#include <windows.h>

#include <exception>

namespace vlspool {

// Levels, and a printer's rights, in hexadecimal: `access 0xf000c`.
[[nodiscard]] std::string access_text(const void* defaults);

// Runs one call. `arguments` are what the log shows; `rule` takes none. A fault gives FALSE (null).
template <vlsim::OperationName name, typename Rule>
auto call(const std::string& arguments, Rule rule) -> decltype(rule()) {
    using Result = decltype(rule());
    vlsim::Operation& called = vlsim::operation<name>;
    Result result{};
    if (const auto fault = vlsim::striking_fault(called)) {
        SetLastError(*fault);
    } else {
        try {
            result = rule();
        } catch (const std::exception& error) {
            vlsim::report_misuse(called.name, error.what());
            SetLastError(ERROR_INTERNAL_ERROR);
        }
    }
    const DWORD last_error = result ? DWORD{ERROR_SUCCESS} : GetLastError();
    if (vlsim::logging()) {
        vlsim::log_call(called, called.name + ("(" + arguments + (result ? ") = 1" : ") = 0")));
    }
    SetLastError(last_error);
    return result;
}

}  // namespace vlspool
