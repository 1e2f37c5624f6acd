// What the library asked of the simulated stack in this test.
#pragma once

#include <string>
#include <vector>

namespace support {

// All calls, in order: `Btsdk_GetDefaultShortCut(4352) = 3`.
std::vector<std::string> sdk_calls();
// The calls of one operation.
std::vector<std::string> sdk_calls(const char* operation);
// The names of the operations alone, in order.
std::vector<std::string> sdk_operations();
void clear_sdk_log();
// What was reported as misuse of the stack.
std::vector<std::string> sdk_misuse();

}  // namespace support
