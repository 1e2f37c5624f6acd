// Sending files to a device, each by a hand-off of its own, and comparing what arrived.
#pragma once

#include "VlSDK.h"
#include "send_list.h"

#include <string>
#include <vector>

namespace programs {

struct SendOrder {
    BtHandle device = 0;
    const SendWay* way = nullptr;
    DWORD timeout_ms = 0;  // for one file to arrive
};

// Sends the files one after another and tells each step. A longer list would arrive shifted from its
// second record on. Returns how many did not arrive as they are.
[[nodiscard]] int send_files(const SendOrder& order, const std::vector<std::wstring>& files);

}  // namespace programs
