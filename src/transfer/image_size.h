// How many pixels and bytes an image has, without overflow.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mixdecks {

static_assert(sizeof(std::size_t) >= 8, "products of two 32-bit sizes must fit");

inline constexpr std::size_t kImageBytesPerPixel = 4;

/// Pixels of a packed image; 0 when a side is not above 0.
constexpr std::size_t PixelCount(std::int32_t width, std::int32_t height) noexcept {
  if (width < 1 || height < 1) return 0;
  return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

/// Bytes of a packed image of four bytes a pixel; 0 when a side is not above 0.
constexpr std::size_t ImageBytes(std::int32_t width, std::int32_t height) noexcept {
  return PixelCount(width, height) * kImageBytesPerPixel;
}

}  // namespace mixdecks
