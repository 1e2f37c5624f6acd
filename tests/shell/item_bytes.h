// Item lists as bytes, put together field by field: what the library makes is compared with them.
#pragma once

#include "VlCommon.h"

#include <string.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace shell_test {

using Bytes = std::vector<uint8_t>;

struct Item {
    uint32_t type = 0;
    uint32_t device_class = 0;
    uint32_t service_class = 0;
    Bytes address = Bytes(6, 0);
    std::string name = {};
};

inline void put_word(Bytes& bytes, size_t offset, uint32_t word) {
    for (size_t i = 0; i < 4; ++i) bytes[offset + i] = static_cast<uint8_t>(word >> (8 * i));
}

// 114 bytes, without a terminator.
inline Bytes bytes_of(const Item& item) {
    Bytes bytes(114, 0);
    bytes[0] = 114;
    put_word(bytes, 2, 112);
    put_word(bytes, 6, 0xAA444666);
    put_word(bytes, 10, item.type);
    put_word(bytes, 14, item.device_class);
    put_word(bytes, 18, item.service_class);
    memcpy(&bytes[22], item.address.data(), 6);
    memcpy(&bytes[28], item.name.data(), item.name.size());
    return bytes;
}

inline Bytes list_of(std::initializer_list<Bytes> items) {
    Bytes list;
    for (const Bytes& item : items) list.insert(list.end(), item.begin(), item.end());
    list.insert(list.end(), 2, 0);
    return list;
}

inline LPCITEMIDLIST as_list(const Bytes& bytes) { return reinterpret_cast<LPCITEMIDLIST>(bytes.data()); }

// A copy, terminator included; empty for null.
inline Bytes copy_of(LPCITEMIDLIST list) {
    const auto* const first = reinterpret_cast<const uint8_t*>(list);
    if (first == nullptr) return {};
    const uint8_t* end = first;
    while (end[0] != 0 || end[1] != 0) end += end[0] + 256U * end[1];
    return {first, end + 2};
}

// A copy; the list is freed as its owner has to do.
inline Bytes taken(LPITEMIDLIST list) {
    Bytes bytes = copy_of(list);
    Vlcm_SHFree(list);
    return bytes;
}

// The item of a list by its place, without a terminator; empty when there is none.
inline Bytes item_at(const Bytes& list, size_t place) {
    size_t at = 0;
    for (;; --place) {
        const size_t size = list.size() < at + 2 ? 0 : list[at] + 256U * list[at + 1];
        if (size == 0) return {};
        if (place == 0)
            return {list.begin() + static_cast<ptrdiff_t>(at),
                    list.begin() + static_cast<ptrdiff_t>(at + size)};
        at += size;
    }
}

}  // namespace shell_test
