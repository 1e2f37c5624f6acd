// Text messages for a phone.
#pragma once

#include "answer.h"

namespace programs {

struct MessageRequest {
    std::string device;  // address or name
    std::string number;
    std::string text;
};

// Hands a message to the message editor. kNo: it was not handed over, or no editor opens for the phone.
[[nodiscard]] Answer ask_sms(const MessageRequest& request);
void print_sms(const Json& facts);

}  // namespace programs
