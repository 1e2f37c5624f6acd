// Owner for security identifiers of AllocateAndInitializeSid.
#pragma once

#include "unique.h"

namespace vl {

struct SidTraits : NullIsNone<PSID> {
    static void close(PSID sid) { FreeSid(sid); }
};
using UniqueSid = Unique<SidTraits>;

}  // namespace vl
