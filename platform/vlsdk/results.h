// Result codes of the simulated stack. None equals a code that the suite's common library makes
// itself, so that a test sees whose answer it got.
#pragma once

#include <cstdint>

namespace vlsim {

inline constexpr uint32_t kDone = 0;
inline constexpr uint32_t kUnknownHandle = 0x0401;
inline constexpr uint32_t kNullPointer = 0x0402;
inline constexpr uint32_t kNotStored = 0x0403;
inline constexpr uint32_t kNotSupported = 0x0404;
inline constexpr uint32_t kNoListener = 0x0405;

}  // namespace vlsim
