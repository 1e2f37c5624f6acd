// The readable trace: one line per entry, to a file or to the debugger output.
#pragma once

#include <windows.h>

#include <stdint.h>

#include <string>
#include <vector>

namespace vltrace {

class TraceWriter {
public:
    // Reads VLTRACE and VLTRACE_MODULES; what cannot be understood is told to the debugger.
    void open();
    void close();

    [[nodiscard]] bool active() const { return target_ != Target::kNone; }
    // False for a module that VLTRACE_MODULES leaves out.
    [[nodiscard]] bool shows(uint32_t module) const;
    // Writes one line. kind: one character, see docs/tracing.md. depth: open scopes around it.
    void line(uint32_t module, size_t depth, char kind, const std::string& text);

private:
    enum class Target { kNone, kFile, kDebugger };

    void open_file(const std::string& path);
    void put(const std::string& text);

    Target target_ = Target::kNone;
    HANDLE file_ = INVALID_HANDLE_VALUE;
    std::vector<uint32_t> modules_;  // empty: all
};

}  // namespace vltrace
