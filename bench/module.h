// Modules under measurement. They are loaded at run time, so that the loading itself can be measured
// in this program too, and so that floor and library are called alike.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace bench {

class Module {
public:
    explicit Module(const std::string& file) : file_(file), handle_(LoadLibraryA(file.c_str())) {
        if (handle_ == nullptr) throw std::runtime_error("cannot load " + file);
    }
    ~Module() { FreeLibrary(handle_); }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    [[nodiscard]] HMODULE handle() const { return handle_; }

    template <typename F>
    [[nodiscard]] F function(const char* name) const {
        const FARPROC found = GetProcAddress(handle_, name);
        if (found == nullptr) throw std::runtime_error(file_ + " does not export " + name);
        return reinterpret_cast<F>(reinterpret_cast<void*>(found));
    }

private:
    std::string file_;
    HMODULE handle_;
};

// A function of a module under its declared type.
#define BENCH_FUNCTION(module, name) (module).function<decltype(&(name))>(#name)

struct Suite {
    Module floor{"bench_floor.dll"};
    Module library{"VlCommon.dll"};
    Module sdk{"VlSDK.dll"};
};

}  // namespace bench
