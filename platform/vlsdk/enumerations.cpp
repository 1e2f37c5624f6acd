#include "enumerations.h"

#include "live.h"
#include "results.h"

#include <atomic>

namespace vlsim {
namespace {

// Far from every other handle, so that a mix-up is an unknown handle.
constexpr BtHandle kFirstEnumeration = 0x70000001;

struct Walk {
    EnumerationKind kind;
    std::vector<BtHandle> handles;
    size_t next;
};

Ledger<BtHandle, Walk> walks;
std::atomic<BtHandle> next_handle{kFirstEnumeration};

}  // namespace

BtHandle start_enumeration(EnumerationKind kind, std::vector<BtHandle> handles) {
    if (handles.empty()) return 0;
    const BtHandle handle = next_handle++;
    walks.add(handle, {kind, std::move(handles), 0});
    return handle;
}

BtHandle advance_enumeration(const char* operation, EnumerationKind kind, BtHandle enumeration) {
    BtHandle item = 0;
    bool right_kind = false;
    const bool known = walks.use(enumeration, [&](Walk& walk) {
        right_kind = walk.kind == kind;
        if (right_kind && walk.next < walk.handles.size()) item = walk.handles[walk.next++];
    });
    if (!known || !right_kind) report_misuse(operation, "unknown enumeration " + std::to_string(enumeration));
    return item;
}

uint32_t end_enumeration(const char* operation, EnumerationKind kind, BtHandle enumeration) {
    bool right_kind = false;
    const bool known = walks.use(enumeration, [&](const Walk& walk) { right_kind = walk.kind == kind; });
    if (known && right_kind && walks.remove(enumeration)) return kDone;
    report_misuse(operation, "enumeration " + std::to_string(enumeration) + " ended twice or never started");
    return kUnknownHandle;
}

uint32_t live_enumerations() { return walks.count(); }

}  // namespace vlsim
