// First-match look-up over the 16-bit keys of a constant table.
#pragma once

#include <emmintrin.h>
#include <stddef.h>
#include <stdint.h>

#include <iterator>

namespace vl::catalogue {

// The keys of a table side by side, in the order of its rows. They are compared eight at a time, so the
// column is filled up to a multiple of eight: with the first key, which is never found there.
template <size_t kRows>
class KeyColumn {
public:
    template <typename Rows>
    explicit consteval KeyColumn(const Rows& rows) {
        for (size_t i = 0; i < std::size(keys_); ++i) keys_[i] = rows[i < kRows ? i : 0].key();
    }

    // The number of the first row with `key`; kRows when there is none.
    [[nodiscard]] size_t find(uint32_t key) const {
        if (key > UINT16_MAX) return kRows;
        const __m128i wanted = _mm_set1_epi16(static_cast<short>(key));
        for (size_t i = 0; i < std::size(keys_); i += kStep) {
            const __m128i keys = _mm_load_si128(reinterpret_cast<const __m128i*>(keys_ + i));
            const int equal_bytes = _mm_movemask_epi8(_mm_cmpeq_epi16(keys, wanted));
            if (equal_bytes != 0) return i + first_row(static_cast<unsigned>(equal_bytes));
        }
        return kRows;
    }

private:
    static size_t first_row(unsigned equal_bytes) {
        return static_cast<size_t>(__builtin_ctz(equal_bytes)) / sizeof(uint16_t);
    }

    static constexpr size_t kStep = sizeof(__m128i) / sizeof(uint16_t);
    alignas(__m128i) uint16_t keys_[(kRows + kStep - 1) / kStep * kStep] = {};
};

}  // namespace vl::catalogue
