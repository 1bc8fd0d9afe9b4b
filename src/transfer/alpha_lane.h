// The fourth byte of 8-bit BGRA pixels, on its own. Images are packed; any thread may call.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mixdecks {

/// Makes every pixel opaque: byte 3 becomes 255.
void SetAlphaOpaque(std::uint8_t* pixels, std::size_t count) noexcept;

/// Moves every pixel's alpha to the blue lane and clears its other lanes.
void KeepAlphaAsBlue(std::uint8_t* pixels, std::size_t count) noexcept;

/// Makes the blue lane of `lane` the alpha of `pixels`, pixel by pixel.
void SetAlphaFromBlue(std::uint8_t* pixels, const std::uint8_t* lane, std::size_t count) noexcept;

}  // namespace mixdecks
