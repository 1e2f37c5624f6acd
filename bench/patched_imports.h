// Imports of a measured module that lead elsewhere while this lives.
#pragma once

#include "import_table.h"

#include <vector>

namespace bench {

class PatchedImports {
public:
    explicit PatchedImports(HMODULE module) : module_(module) {}
    ~PatchedImports() {
        for (const Replaced& slot : slots_) write_slot(slot.address, slot.original);
    }
    PatchedImports(const PatchedImports&) = delete;
    PatchedImports& operator=(const PatchedImports&) = delete;

    template <typename Function>
    void replace(const char* function, Function* replacement) {
        for (const ImportSlot& slot : import_slots(module_)) {
            if (slot.function != function) continue;
            slots_.push_back({slot.address, *slot.address});
            write_slot(slot.address, reinterpret_cast<void*>(replacement));
        }
    }

private:
    struct Replaced {
        void** address;
        void* original;
    };

    HMODULE module_;
    std::vector<Replaced> slots_;
};

}  // namespace bench
