// Kinds of remote devices by their class.
//
// A row fits when all bits of its mask are set in the class's low 13 bits: a subset test, so that the order
// decides (a class with bit 0x100 set is of kind 1 whatever else it is). To add a row, mind the rows
// before it. Without a row the kind is 0.
#pragma once

#include <stdint.h>

#include <iterator>

namespace vl::localctl {

struct DeviceKind {
    uint32_t mask;
    uint32_t kind;
};

// clang-format off
inline constexpr DeviceKind kDeviceKinds[] = {
    {0x100, 1},
    {0x404, 3},  {0x408, 3},  {0x40C, 3},  {0x410, 3},  {0x418, 3},  {0x41C, 3},  {0x424, 3},
    {0x580, 4},
    {0x540, 5},
    {0x414, 6},  {0x428, 6},
    {0x420, 7},
    {0x200, 17},
    {0x600, 18}, {0x610, 18}, {0x620, 18},
    {0x640, 19}, {0x680, 19}, {0x5C0, 19}, {0x504, 19}, {0x508, 19}, {0x50C, 19}, {0x510, 19}, {0x511, 19},
    {0x42C, 23}, {0x430, 23}, {0x434, 23}, {0x438, 23}, {0x43C, 23}, {0x440, 23}, {0x448, 23},
};
// clang-format on
static_assert(std::size(kDeviceKinds) == 32);

}  // namespace vl::localctl
