// What the library told the trace facility in this test.
#pragma once

#include <string>
#include <vector>

namespace support {

// All entries, as VlTraceLog.h describes them: ">512 Name", "<512 Name", "=512 line".
std::vector<std::string> trace_log();
// The lines written, without mark and module, with their line ends: "error!!! ...\r\n".
std::vector<std::string> trace_lines();
// The formats of these lines, as they were passed.
std::vector<std::string> trace_formats();
// The scopes entered, in order: "512 Name".
std::vector<std::string> trace_scopes();
void clear_trace_log();

}  // namespace support
