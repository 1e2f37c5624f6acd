// Yes/no answers come back in 8 bits: only the low byte of the result register counts. The stand-in
// fills the rest with rubbish, so that a caller who reads more is wrong every time.
#pragma once

#include "VlSDK.h"

#include <cstdint>

namespace vlsim {

[[nodiscard]] constexpr uint64_t wide_answer(uint8_t answer) { return 0xBAD0BAD1BAD2BA00 | answer; }

}  // namespace vlsim

// The .def file exports these under the names of the operations.
extern "C" uint64_t Btsdk_IsBluetoothReady_wide(void);
extern "C" uint64_t Btsdk_IsDeviceConnected_wide(BtHandle device);
