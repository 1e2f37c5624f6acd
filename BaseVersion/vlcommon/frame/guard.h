// The structured-exception guard of the two entries that read callers' lists.
#pragma once

#include <stdint.h>

namespace vl {

using GuardedBody = uint32_t (*)(void* context);

// Reports a structured exception to the debugger output and answers 1: "run the handler".
int report_caught_exception(unsigned int code, const char* function);

// Runs body(context) and gives its result. When it raises a structured exception: reports it under
// the name `function`, writes `handler_line` to the debugger output and gives 0. The frames between
// are dropped without any clean-up.
uint32_t run_guarded(GuardedBody body, void* context, const char* function, const char* handler_line);

}  // namespace vl
