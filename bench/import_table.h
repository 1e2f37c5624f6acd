// The import tables of a loaded module, ordinary and delayed.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace bench {

struct ImportSlot {
    std::string dll;  // in lower case
    std::string function;
    void** address;  // of the entry through which the module calls
};

// Functions only: imported variables and imports by number are left out.
std::vector<ImportSlot> import_slots(HMODULE module);

// The modules of the ordinary import table, in lower case, sorted.
std::vector<std::string> imported_modules(HMODULE module);

void write_slot(void** slot, void* function);

}  // namespace bench
