// The open handles of this process. GetProcessHandleCount and GetGuiResources always answer 0 under
// Wine; the system's handle list does not.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace support {

class HandleCensus {
public:
    HandleCensus() : handles_(take()) {}

    // Opened since this census was taken and still open.
    [[nodiscard]] std::vector<HANDLE> opened() const;
    [[nodiscard]] size_t opened_since() const { return opened().size(); }
    // One line for each: number, type and name.
    [[nodiscard]] std::vector<std::string> describe() const;

private:
    using Handles = std::map<ULONG_PTR, USHORT>;  // number -> type
    static Handles take();
    Handles handles_;
};

// Makes the system open now what it opens once in a process (registry roots, the desktop, the shell's
// and COM's own objects), so that a census taken later shows only what the code under test opens.
void warm_up_process();

}  // namespace support
