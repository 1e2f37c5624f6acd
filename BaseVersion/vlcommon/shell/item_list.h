// Item identifier lists of the shell: their owner, and joining them.
#pragma once

#include "frame/unique.h"
#include "vlcm/companions.h"

#include <shtypes.h>

namespace vl::shell {

struct ItemListTraits : NullIsNone<LPITEMIDLIST> {
    static void close(LPITEMIDLIST list) { Vlcm_SHFree(list); }
};
using UniqueItemList = Unique<ItemListTraits>;

// `parent` followed by `child`; null when either is null (the shell would copy the other one) or there
// is no memory.
UniqueItemList combine(LPCITEMIDLIST parent, const UniqueItemList& child);

}  // namespace vl::shell
