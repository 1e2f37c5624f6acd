// When the language library was loaded and freed.
#pragma once

#include "support/call_patch.h"

#include "VlSim.h"

#include <string>

class LanguageLibraryUse {
public:
    LanguageLibraryUse() {
        load_.answer([this](LPCSTR name) {
            if (std::string(name) != "Vl2Res.dll") return load_.real(name);
            ++loads_;
            asked_at_load_ = VlSim_CallCount(nullptr);
            return library_ = load_.real(name);
        });
        free_.answer([this](HMODULE module) {
            if (module == library_) ++frees_;
            if (module == library_) asked_at_free_ = VlSim_CallCount(nullptr);
            return free_.real(module);
        });
    }
    void fail() { load_.fail_from(1, nullptr, ERROR_MOD_NOT_FOUND); }

    [[nodiscard]] size_t tries() const { return load_.count(); }
    [[nodiscard]] size_t loads() const { return loads_; }
    [[nodiscard]] size_t frees() const { return frees_; }
    // Calls of the stack that came before.
    [[nodiscard]] size_t asked_at_load() const { return asked_at_load_; }
    [[nodiscard]] size_t asked_at_free() const { return asked_at_free_; }

private:
    HMODULE library_ = nullptr;
    size_t loads_ = 0, frees_ = 0, asked_at_load_ = 0, asked_at_free_ = 0;
    support::CallPatch<HMODULE(LPCSTR)> load_{"LoadLibraryA", LoadLibraryA};
    support::CallPatch<BOOL(HMODULE)> free_{"FreeLibrary", FreeLibrary};
};
