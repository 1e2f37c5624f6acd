// Lists of the stack that are fetched by a counting call and a reading call.
#pragma once

#include "VlSDK.h"

#include <memory>
#include <new>

namespace vl {

struct HandleList {
    std::unique_ptr<BtHandle[]> handles;
    uint32_t count = 0;          // handles read: never more than were counted
    bool out_of_memory = false;  // there were handles but no room for them

    [[nodiscard]] const BtHandle* begin() const { return handles.get(); }
    [[nodiscard]] const BtHandle* end() const { return handles.get() + count; }
};

// query(BtHandle* out, uint32_t length) is one list operation of the stack. The list may shrink or
// grow between both calls; what is read never exceeds what was counted.
template <typename Query>
HandleList read_handles(Query query) {
    HandleList list;
    const uint32_t counted = query(nullptr, 0U);
    if (counted == 0) return list;
    list.handles.reset(new (std::nothrow) BtHandle[counted]());
    if (!list.handles) {
        list.out_of_memory = true;
        return list;
    }
    const uint32_t read = query(list.handles.get(), counted);
    list.count = read < counted ? read : counted;
    return list;
}

}  // namespace vl
