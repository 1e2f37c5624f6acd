// The suite's folder in the Send-To menu.
#pragma once

#include "answer.h"

namespace programs {

struct SendToRequest {
    std::string device;  // address or name; empty: all
    bool remove = false;
};

// The links of the folder and their devices. kNo: there is no folder.
[[nodiscard]] Answer ask_send_to_links();
// Adds or removes a device's link or, without a device, compares all links with the devices that are known.
// Answers the links that are there then. kNo: it was not done.
[[nodiscard]] Answer sync_send_to_links(const SendToRequest& request);
void print_send_to_links(const Json& facts);

}  // namespace programs
