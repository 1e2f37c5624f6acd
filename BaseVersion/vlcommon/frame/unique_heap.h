// Owner for blocks of the process heap.
#pragma once

#include "unique.h"

namespace vl {

struct HeapBlockTraits : NullIsNone<void*> {
    static void close(void* block) { HeapFree(GetProcessHeap(), 0, block); }
};
using UniqueHeapBlock = Unique<HeapBlockTraits>;

}  // namespace vl
