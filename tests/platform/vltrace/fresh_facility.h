// The trace facility as a process finds it that starts with given environment variables: a copy of
// VlTrace.dll, loaded while they are set, and called by its exported names.
#pragma once

#include "VlTrace.h"

#include <windows.h>

#include <string>

namespace vltrace_test {

constexpr char kConstructor[] = "??0CVlTraceFunc@@QEAA@KPEAD@Z";
constexpr char kDestructor[] = "??1CVlTraceFunc@@QEAA@XZ";

// What a caller reserves for a scope.
struct alignas(16) ScopeBytes {
    unsigned char bytes[sizeof(CVlTraceFunc)];
};

class FreshFacility {
public:
    // target, modules: VLTRACE and VLTRACE_MODULES; null: not set.
    explicit FreshFacility(const char* target, const char* modules = nullptr);
    ~FreshFacility() { unload(); }
    FreshFacility(const FreshFacility&) = delete;
    FreshFacility& operator=(const FreshFacility&) = delete;

    ScopeBytes* enter(ScopeBytes& scope, unsigned long module, const char* name) const {
        return construct_(&scope, module, const_cast<char*>(name));
    }
    void leave(ScopeBytes& scope) const { destroy_(&scope); }
    template <typename... Values>
    void write(unsigned long module, const char* format, Values... values) const {
        write_(module, format, values...);
    }
    // As at the process's end.
    void unload();

    template <typename F>
    [[nodiscard]] F* function(const char* name) const {
        return reinterpret_cast<F*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

private:
    std::string path_;
    HMODULE module_ = nullptr;
    ScopeBytes* (*construct_)(ScopeBytes*, unsigned long, char*) = nullptr;
    void (*destroy_)(ScopeBytes*) = nullptr;
    void (*write_)(unsigned long, const char*, ...) = nullptr;
};

}  // namespace vltrace_test
