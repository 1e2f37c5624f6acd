// Start, next, end: walks over the handles that were there when the walk started.
#pragma once

#include "VlSDK.h"
#include "misuse.h"

#include <vector>

namespace vlsim {

enum class EnumerationKind { kRemoteDevices, kRemoteServices, kLocalServers, kConnections };

// 0 when there is nothing to walk.
[[nodiscard]] BtHandle start_enumeration(EnumerationKind kind, std::vector<BtHandle> handles);
// The next handle; 0 at the end, and with a report for a handle that is no live walk of this kind.
[[nodiscard]] BtHandle advance_enumeration(const char* operation, EnumerationKind kind, BtHandle enumeration);
uint32_t end_enumeration(const char* operation, EnumerationKind kind, BtHandle enumeration);

// Fills the record with the walk's next item that still exists. Walk: kind, name, Record, fill_item().
template <typename Walk>
BtHandle next_item(BtHandle enumeration, typename Walk::Record* record) {
    if (!present(Walk::name, "record", record)) return 0;
    expect_zeroed(Walk::name, record, sizeof *record);
    for (;;) {
        const BtHandle item = advance_enumeration(Walk::name, Walk::kind, enumeration);
        if (item == 0 || Walk::fill_item(item, *record)) return item;
    }
}

}  // namespace vlsim
