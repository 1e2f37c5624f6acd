// What a text message's record carries behind the phone's handle, as the suite's programs agree on it:
// the number (64 bytes) and then the text, both UTF-8 and terminated.
#pragma once

#include "VlCommon.h"

#include <string>

namespace programs {

struct TextMessage {
    uint32_t device;
    std::string number;
    std::string text;
};

// Throws std::length_error when number or text does not fit.
[[nodiscard]] VlSmsRecord to_record(const TextMessage& message);
[[nodiscard]] TextMessage from_record(const VlSmsRecord& record);

}  // namespace programs
