// Starting programs and owning what that opens.
#pragma once

#include "frame/unique.h"

namespace vl::process {

struct Program {
    bool started = false;
    UniqueHandle process;
    UniqueHandle thread;
};

// Starts the program file `path` without arguments.
Program start_file(const char* path);

// Runs a command line, which the system may write to. The programs that are started so are used to a
// start-up record that is all zeros, its size field included.
Program start_command_line(char* command_line);

}  // namespace vl::process
