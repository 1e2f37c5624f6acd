/**
 * @file
 * The trace facility of the suite. Its class is exported under the platform compiler's decorated
 * names; imports/VlTrace.def maps our compilers' names to them.
 */
#pragma once

#include <sal.h>

#ifndef VLTRACE_API
#define VLTRACE_API __declspec(dllimport)
#endif

#ifdef __cplusplus
/** Marks the time that a function runs: made at its entry, destroyed on each way out. */
class VLTRACE_API CVlTraceFunc {
public:
    /** Opens a scope. @param module trace module number @param function name; stays the caller's */
    CVlTraceFunc(unsigned long module, _In_ char* function);
    ~CVlTraceFunc();
    CVlTraceFunc(const CVlTraceFunc&) = delete;
    CVlTraceFunc& operator=(const CVlTraceFunc&) = delete;

private:
    alignas(16) unsigned char storage_[64];  // belongs to VlTrace.dll
};
static_assert(sizeof(CVlTraceFunc) == 64 && alignof(CVlTraceFunc) == 16);

extern "C" {
#endif

/** Writes one trace line. @param module trace module number @param format printf-style text */
VLTRACE_API void VlTrace_UserDef(unsigned long module, _In_ _Printf_format_string_ const char* format, ...);

#ifdef __cplusplus
}
#endif
