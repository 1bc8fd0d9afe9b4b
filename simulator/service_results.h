// Results that the simulator's operations give, beside success and plain failure.
#pragma once

#include "platform/result.h"

namespace mixdecks::simulator {

inline constexpr HResult kNoMore = 1;  ///< an iterator's end, a success that delivers nothing
inline constexpr HResult kNotImplemented = static_cast<HResult>(0x80004001);
inline constexpr HResult kNoInterface = static_cast<HResult>(0x80004002);
inline constexpr HResult kNullPointer = static_cast<HResult>(0x80004003);
inline constexpr HResult kAccessDenied = static_cast<HResult>(0x80070005);
inline constexpr HResult kOutOfMemory = static_cast<HResult>(0x8007000E);
inline constexpr HResult kInvalidArgument = static_cast<HResult>(0x80070057);

}  // namespace mixdecks::simulator
