// Which service class serves an OBEX connection, by the Target header of its Connect request.
//
// Rows are frozen as they stand, names and repeated classes included. To add one, append it: the first
// row that fits holds, so that a Target of length 0 always means object push. An unknown Target has
// no row.
#pragma once

#include <stdint.h>

#include <array>
#include <string_view>

namespace vl::shortcuts {

struct ObexTarget {
    std::string_view name;
    uint8_t length;  // bytes of the Target
    std::array<uint8_t, 16> bytes;
    uint16_t service_class;
};

// Reads a row's bytes as they are printed, two hexadecimal digits each.
consteval ObexTarget obex_target(std::string_view name, std::string_view hex, uint16_t service_class) {
    ObexTarget row{name, static_cast<uint8_t>(hex.size() / 2), {}, service_class};
    for (size_t i = 0; i < hex.size(); ++i) {
        const char c = hex[i];
        const int digit = c >= 'a' ? c - 'a' + 10 : c - '0';
        row.bytes[i / 2] = static_cast<uint8_t>(row.bytes[i / 2] * 16 + digit);
    }
    return row;
}

// clang-format off
inline constexpr ObexTarget kObexTargets[] = {
    obex_target("OPP",                  "",                                 0x1105),
    obex_target("Sync",                 "49524d432d53594e43",               0x1104),
    obex_target("FTP",                  "f9ec7bc4953c11d2984e525400dc9e09", 0x1106),
    obex_target("IMG-Push",             "e33d954583744ad79ec5c16be31ede8e", 0x111b),
    obex_target("IMG-Pull",             "8ee9b3d0460811d5841a0002a5325b4e", 0x111b),
    obex_target("IMG-Print",            "92353350460811d5841a0002a5325b4e", 0x111b),
    obex_target("IMG-AutoArchive",      "940126c0460811d5841a0002a5325b4e", 0x111c),
    obex_target("IMG-Camera",           "947e7420460811d5841a0002a5325b4e", 0x111b),
    obex_target("IMG-Display",          "94c7cd20460811d5841a0002a5325b4e", 0x111b),
    obex_target("IMG-ReferencedObject", "8e61f95d1a7911d48ea400805f9b9834", 0x111d),
    obex_target("IMG-ArchivedObject",   "8e61f95e1a7911d48ea400805f9b9834", 0x111c),
    obex_target("BPP-DirectPrint",      "0000111800001000800000805f9b34fb", 0x1122),
    obex_target("BPP-ReferencePrint",   "0000111900001000800000805f9b34fb", 0x1122),
    obex_target("BPP-RefelectedUI",     "0000112100001000800000805f9b34fb", 0x1122),
    obex_target("BPP-Status",           "0000112300001000800000805f9b34fb", 0x1122),
    obex_target("BPP-ReferencedObject", "0000112000001000800000805f9b34fb", 0x1122),
    obex_target("PBAP",                 "796135f0f0c511d809660800200c9a66", 0x1130),
    obex_target("MAP",                  "bb582b40420c11dbb0de0800200c9a66", 0x1132),
};
// clang-format on
static_assert(std::size(kObexTargets) == 18);

}  // namespace vl::shortcuts
