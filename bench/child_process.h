// The first load of a module in a process, in a fresh process of this program.
#pragma once

namespace bench {

// Starts a process that loads `file`, and gives the nanoseconds that the loading took there.
double first_load_in_child(const char* file);

// In that process: loads and gives the time as an exit code.
int load_and_tell_time(const char* file);

}  // namespace bench
