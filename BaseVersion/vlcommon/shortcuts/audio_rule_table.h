// Service classes of audio, and the links that forbid an A2DP connection.
//
// A link forbids while it is up when its class and its role bits stand in a row; any other combination does
// not count.
#pragma once

#include <stdint.h>

namespace vl::shortcuts {

inline constexpr uint16_t kHeadset = 0x1108;
inline constexpr uint16_t kA2dpSource = 0x110A;
inline constexpr uint16_t kA2dpSink = 0x110B;
inline constexpr uint16_t kHeadsetGateway = 0x1112;
inline constexpr uint16_t kHandsFree = 0x111E;
inline constexpr uint16_t kHandsFreeGateway = 0x111F;

struct ForbiddingLink {
    uint16_t service_class;
    uint32_t role;
};

inline constexpr ForbiddingLink kForbiddingLinks[] = {
    {kA2dpSource, 2},        //
    {kA2dpSink, 1},          //
    {kHandsFree, 1},         //
    {kHandsFreeGateway, 2},  //
    {kHeadset, 1},           //
    {kHeadsetGateway, 2},
};

constexpr bool is_forbidding(uint16_t service_class, uint32_t role) {
    for (const ForbiddingLink& row : kForbiddingLinks) {
        if (row.service_class == service_class && row.role == role) return true;
    }
    return false;
}

}  // namespace vl::shortcuts
