// Owner for the runtime's file streams.
#pragma once

#include "unique.h"

#include <stdio.h>

namespace vl {

struct StreamTraits : NullIsNone<FILE*> {
    static void close(FILE* stream) { fclose(stream); }
};
using UniqueStream = Unique<StreamTraits>;

}  // namespace vl
