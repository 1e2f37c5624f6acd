// The leaks that the library's contract asks for: the only ones that a test may leave behind, and which
// it then must leave. A test names the row: allow_leak("guarded send after a fault").
#pragma once

#include "support/leak_kind.h"

namespace support {

struct AllowedLeak {
    const char* name;  // several rows of one name belong together
    LeakKind kind;
    size_t count;  // each time
    const char* reason;
};

// clang-format off
inline constexpr AllowedLeak kAllowedLeaks[] = {
    // The fault handler of the two guarded entries leaves out the guarded body's clean-up.
    {"guarded send after a fault", LeakKind::kHandle, 1, "the section stays open"},
    {"guarded send after a fault", LeakKind::kView,   1, "and mapped"},
    {"scope of the faulting wake-up", LeakKind::kTraceScope, 1, "and so does a scope inside the body"},
    // The connection manager's two handles belong to the caller's process for its life.
    {"connection manager started", LeakKind::kHandle, 2, "its process and its thread stay open"},
    // The size of a remote file: the language library that it loads is never freed.
    {"size text", LeakKind::kModule, 1, "each call keeps one reference"},
};
// clang-format on

}  // namespace support
