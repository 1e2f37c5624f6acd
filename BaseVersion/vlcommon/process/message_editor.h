// The program in which text messages are written.
#pragma once

#include "VlSDK.h"

namespace vl::process {

// Starts the message editor for a message to `phone`. While mobile support is active only phones that
// offer the message access service have one.
void start_message_editor(BtHandle phone);

}  // namespace vl::process
