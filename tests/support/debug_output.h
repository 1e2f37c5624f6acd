// Collects what OutputDebugStringA/W is given in this process while it lives, without a debugger: both
// raise an exception that a vectored handler may swallow. One at a time.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace support {

class DebugOutput {
public:
    DebugOutput();
    ~DebugOutput();
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;

    // All of it, one string after the other; wide text in the ANSI code page.
    [[nodiscard]] std::string text() const;
    // One string per call.
    [[nodiscard]] std::vector<std::string> lines() const;

private:
    void* handler_;
};

}  // namespace support
