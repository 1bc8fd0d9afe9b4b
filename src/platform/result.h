// Results of service calls and of the steps that pass them on: 32-bit, negative for failure.
#pragma once

#include <cstdint>

namespace mixdecks {

using HResult = std::int32_t;

inline constexpr HResult kResultOk = 0;
/// The one failure that the system makes itself (0x80004005).
inline constexpr HResult kResultFail = static_cast<HResult>(0x80004005);

constexpr bool Succeeded(HResult result) noexcept {
  return result >= 0;
}
constexpr bool Failed(HResult result) noexcept {
  return result < 0;
}

}  // namespace mixdecks
