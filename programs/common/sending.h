// Sending files that the user named: through the tray agent, one hand-off for each file.
#pragma once

#include "VlSDK.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace programs {

// Nothing is sent. The text tells people why, in UTF-8.
class CannotSend : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The paths for the records. Throws CannotSend for the first file that is none or has too long a path:
// nothing is sent when one is wrong.
[[nodiscard]] std::vector<std::string> sendable_paths(const std::vector<std::wstring>& files);

// One file's way to the tray agent.
struct HandOff {
    std::string path;
    uint32_t status;  // VLCM_OK: the agent has it
};

// Hands the paths over in their order. Throws CannotSend when the agent does not start.
[[nodiscard]] std::vector<HandOff> send_each(const std::vector<std::string>& paths, uint32_t service_class,
                                             BtHandle device);

// What a hand-off's status means, in words.
[[nodiscard]] const char* meaning_of(uint32_t status);

}  // namespace programs
