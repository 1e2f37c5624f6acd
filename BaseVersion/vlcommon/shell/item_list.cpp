#include "item_list.h"

#include <shlobj.h>

namespace vl::shell {

UniqueItemList combine(LPCITEMIDLIST parent, const UniqueItemList& child) {
    if (parent == nullptr || !child) return {};
    return UniqueItemList(ILCombine(parent, child.get()));
}

}  // namespace vl::shell
