// The plain and the wide form of one operation, tested with the same cases.
#pragma once

#include "support/call_patch.h"
#include "support/guarded_buffer.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

template <typename Char>
inline constexpr bool kIsPlain = std::is_same_v<Char, char>;

using TwinForms = ::testing::Types<char, wchar_t>;
struct TwinFormName {
    template <typename Char>
    static std::string GetName(int /*index*/) {
        return kIsPlain<Char> ? "Plain" : "Wide";
    }
};

// The form of an operation for a character type.
template <typename Char, typename Plain, typename Wide>
auto form_of(Plain plain, Wide wide) {
    if constexpr (kIsPlain<Char>) {
        return plain;
    } else {
        return wide;
    }
}

template <typename Char>
std::basic_string<Char> ascii(const std::string& text) {
    return {text.begin(), text.end()};
}

// What Windows loads from the built language library.
template <typename Char>
std::basic_string<Char> resource_text(UINT id) {
    const HMODULE library = LoadLibraryA("Vl2Res.dll");
    Char text[512] = {};
    EXPECT_GT(form_of<Char>(LoadStringA, LoadStringW)(library, id, text, 512), 0) << id;
    FreeLibrary(library);
    return text;
}

// What a call left in a buffer that ends at a no-access page.
template <typename Char>
struct Outcome {
    uint32_t result;
    bool untouched;
    std::basic_string<Char> text;  // empty when untouched
    bool rest_untouched;           // behind the terminator
};

// call(buffer, size); room: of the buffer, in characters.
template <typename Char, typename Call>
Outcome<Char> outcome_of(Call call, uint32_t size, size_t room) {
    const support::GuardedBuffer buffer(room * sizeof(Char));
    const uint32_t result = call(buffer.as<Char>(), size);
    if (buffer.untouched_from(0)) return {result, true, {}, true};
    std::basic_string<Char> text(buffer.as<Char>(), room);
    text.resize(std::min(text.find(Char{}), room));
    const size_t used = std::min(text.size() + 1, room);
    return {result, false, text, buffer.untouched_from(used * sizeof(Char))};
}

// The loader of strings: what it is asked for, and texts that it gives instead.
template <typename Char>
class StringLoads {
public:
    StringLoads() {
        patch_.answer([this](HINSTANCE library, UINT id, Char* buffer, int size) {
            const auto found = texts_.find(id);
            return found == texts_.end() ? patch_.real(library, id, buffer, size)
                                         : give(found->second, buffer, size);
        });
    }
    void set(UINT id, const std::basic_string<Char>& text) { texts_[id] = text; }
    // Gives nothing and leaves the buffer.
    void remove(UINT id) { texts_[id].clear(); }
    // Identifier and room of each load, in order.
    [[nodiscard]] std::vector<std::pair<UINT, int>> loads() const {
        std::vector<std::pair<UINT, int>> all;
        for (const auto& [library, id, buffer, size] : patch_.calls()) all.emplace_back(id, size);
        return all;
    }

private:
    // As the real one: cut and terminated.
    static int give(const std::basic_string<Char>& text, Char* buffer, int size) {
        if (text.empty()) return 0;
        const std::basic_string<Char> cut = text.substr(0, static_cast<size_t>(size) - 1);
        std::copy_n(cut.c_str(), cut.size() + 1, buffer);
        return static_cast<int>(cut.size());
    }

    std::map<UINT, std::basic_string<Char>> texts_;
    support::CallPatch<int(HINSTANCE, UINT, Char*, int)> patch_{
        kIsPlain<Char> ? "LoadStringA" : "LoadStringW", form_of<Char>(LoadStringA, LoadStringW)};
};
