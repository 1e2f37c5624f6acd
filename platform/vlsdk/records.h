// Filling the fixed text fields and counted lists of the interface.
#pragma once

#include "VlSDK.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace vlsim {

// Text in a field of fixed room: terminated, cut when too long, the rest of the field zero.
template <size_t room>
void set_text(char (&field)[room], const std::string& text) {
    const size_t length = std::min(text.size(), room - 1);
    std::memcpy(field, text.data(), length);
    std::memset(field + length, 0, room - length);
}

template <size_t room>
std::string get_text(const char (&field)[room]) {
    return {field, strnlen(field, room)};
}

// A counted list: without an array the number there is, with one the number written.
inline uint32_t give_list(const std::vector<BtHandle>& handles, BtHandle* out, uint32_t room) {
    const auto count = static_cast<uint32_t>(handles.size());
    if (!out) return count;
    const uint32_t given = std::min(count, room);
    std::copy_n(handles.begin(), given, out);
    return given;
}

}  // namespace vlsim
