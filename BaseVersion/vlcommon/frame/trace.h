// Trace scopes and lines under the library's module numbers.
#pragma once

#include "VlTrace.h"

namespace vl {

enum class Module : unsigned long {
    kCommon = 512,  // VLTRACE_MODULE_BCOMMON
    kImage = 8,     // VLTRACE_MODULE_IMAGE
    kShell = 1024,  // VLTRACE_MODULE_SHELL
};

// Marks a function's run; the facility takes the name as char* but never writes to it.
class TraceScope {
public:
    explicit TraceScope(const char* function, Module module = Module::kCommon)
        : scope_(static_cast<unsigned long>(module), const_cast<char*>(function)) {}

private:
    CVlTraceFunc scope_;
};

template <typename... Values>
void trace_line(Module module, const char* format, Values... values) {
    VlTrace_UserDef(static_cast<unsigned long>(module), format, values...);
}

template <typename... Values>
void trace_line(const char* format, Values... values) {
    trace_line(Module::kCommon, format, values...);
}

}  // namespace vl
