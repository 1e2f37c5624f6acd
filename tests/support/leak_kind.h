// What a test can leave behind.
#pragma once

#include <stddef.h>

namespace support {

enum class LeakKind {
    kHeapBlock,       // malloc, new, HeapAlloc
    kTaskBlock,       // CoTaskMemAlloc
    kLocalBlock,      // LocalAlloc
    kGlobalBlock,     // GlobalAlloc
    kSystemString,    // SysAllocString
    kView,            // MapViewOfFile
    kModule,          // LoadLibrary, but for the system's own DLLs, which stay once they are bound
    kHandle,          // kernel handles of every type
    kWindow,          // windows of this process
    kTraceScope,      // scopes of the trace facility
    kSdkEnumeration,  // the four kinds that the simulated stack counts
    kSdkBlock,
    kSdkKey,
    kSdkFile,
    kCount
};

constexpr const char* leak_kind_name(LeakKind kind) {
    constexpr const char* kNames[] = {
        "heap block",
        "task memory block",
        "local memory block",
        "global memory block",
        "system string",
        "mapped view",
        "loaded module",
        "kernel handle",
        "window",
        "open trace scope",
        "stack enumeration",
        "stack memory block",
        "registry key of the stack",
        "file of the stack",
    };
    static_assert(sizeof kNames / sizeof *kNames == static_cast<size_t>(LeakKind::kCount));
    return kNames[static_cast<size_t>(kind)];
}

}  // namespace support
