// Pictures as PNG files.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace mixdecks::simulator {

/// Encodes rows of 8-bit R, G, B, A pixels, top row first and without gaps, of which `pixels` holds
/// at least `width` * `height`. Throws `std::bad_alloc`.
std::vector<std::uint8_t> EncodePng(std::span<const std::uint8_t> pixels, std::uint32_t width,
                                    std::uint32_t height);

}  // namespace mixdecks::simulator
