// Counts what a module calls outside itself.
#pragma once

#include "import_table.h"

#include <stdint.h>

#include <string>
#include <vector>

namespace bench {

struct Counts {
    uint64_t platform_calls = 0;  // of Windows and of the suite's modules, without the C runtime
    uint64_t stack_calls = 0;     // of these, operations of the stack
    uint64_t allocations = 0;     // heap blocks, from whichever allocator
    uint64_t bytes_copied = 0;    // by memcpy and memmove
    uint64_t modules = 0;         // mapped by loading a module
    std::string calls;            // by function, for reading: "malloc 1, MultiByteToWideChar 2"
};

// Every function in the import tables of a module goes through a counter while the census lives. One
// thread at a time. A delayed import must have been called before: its first call would put the real
// function over the counter.
class CallCensus {
public:
    explicit CallCensus(HMODULE module);
    ~CallCensus();
    CallCensus(const CallCensus&) = delete;
    CallCensus& operator=(const CallCensus&) = delete;

    [[nodiscard]] Counts counts() const;

private:
    struct Counter;

    std::vector<ImportSlot> slots_;
    Counter* counters_;  // one per slot
};

}  // namespace bench
