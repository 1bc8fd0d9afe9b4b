// Makes an image half as wide and half as high, in place.
#pragma once

#include <cstdint>

namespace mixdecks {

/// Averages blocks of two by two pixels of a packed image of four bytes a pixel, each byte by
/// itself and rounded; the result is packed too and begins where the image began. A last row or
/// column without a partner counts twice. Both sides are above 0 before and after.
void HalveImage(std::uint8_t* pixels, std::int32_t& width, std::int32_t& height) noexcept;

}  // namespace mixdecks
