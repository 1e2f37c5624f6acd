// Texts of the language resource library; loaded for one call and freed at its end.
#pragma once

#include "frame/unique.h"
#include "text/twin.h"
#include "vlcm/catalogue.h"

namespace vl {

class LanguageLibrary {
public:
    LanguageLibrary() : library_(VlCm_GetLangDepResLib(0)) {}

    explicit operator bool() const { return static_cast<bool>(library_); }

    // Loads a text cut to the buffer, terminator included. One that is missing leaves the zeroed buffer, and
    // so does a missing library: to Windows, no module is the running program.
    template <typename Char, size_t size>
    void load(uint32_t id, Char (&buffer)[size]) const {
        load(id, buffer, size);
    }
    template <typename Char>
    void load(uint32_t id, Char* buffer, size_t size) const {
        if (library_) text::load_string(library_.get(), id, buffer, size);
    }

private:
    UniqueModule library_;
};

}  // namespace vl
