// What the tray agent carries out on request.
#pragma once

#include "vlcm/companions.h"

#include <stdint.h>

namespace vl::localctl {

inline constexpr uint16_t kRequest = 515;
inline constexpr uint16_t kDeleteDevice = 18692;  // value: device handle
inline constexpr uint16_t kStopServer = 18701;    // value: server handle

inline void request_from_tray(uint16_t code, uint32_t value) {
    VlCm_PostMsg2Vltray(kRequest, code, static_cast<LPARAM>(value));
}

}  // namespace vl::localctl
