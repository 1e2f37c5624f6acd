// The suite's program that does in a process of its own what must not be done in the caller's.
#pragma once

namespace vl::shell {

// Opens "VlExecuteModule.exe" in the installation folder with one word as its argument. Whether it
// starts is not looked at.
void start_execution_module(const char* word);

}  // namespace vl::shell
