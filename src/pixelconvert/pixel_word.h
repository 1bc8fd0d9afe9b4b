// RGB pixels as words with three fields: where each channel lies, and which bits are always set.
//
// Layouts are shared by formats that differ in range alone, and so are the kernels that only move
// bits: they are keyed by layout, not by format.
#pragma once

#include <cstdint>

#include "pixelconvert/pixel_format.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

enum class ByteOrder : std::uint8_t { kLittle, kBig };

struct PixelWord {
  ByteOrder order;
  int bits;              ///< of a channel
  int red, green, blue;  ///< lowest bit of each channel
  std::uint32_t opaque;  ///< bits that every written pixel has set
};

/// Every byte of a four-byte pixel is a channel, so the words of 8-bit formats are little-endian.
/// `RGB3` is `RGBA` without its fourth byte.
namespace layout {
// clang-format off
struct Argb      { static constexpr PixelWord kWord{ByteOrder::kLittle,  8,  8, 16, 24, 0x000000FF}; };
struct Bgra      { static constexpr PixelWord kWord{ByteOrder::kLittle,  8, 16,  8,  0, 0xFF000000}; };
struct Rgba      { static constexpr PixelWord kWord{ByteOrder::kLittle,  8,  0,  8, 16, 0xFF000000}; };
struct Rgb3      { static constexpr PixelWord kWord{ByteOrder::kLittle,  8,  0,  8, 16, 0}; };
struct R210      { static constexpr PixelWord kWord{ByteOrder::kBig,    10, 20, 10,  0, 0}; };
struct R10Big    { static constexpr PixelWord kWord{ByteOrder::kBig,    10, 22, 12,  2, 0}; };
struct R10Little { static constexpr PixelWord kWord{ByteOrder::kLittle, 10, 22, 12,  2, 0}; };
struct R10Alpha  { static constexpr PixelWord kWord{ByteOrder::kBig,    10, 22, 12,  2, 0x00000003}; };
// A word of `v210` holds three samples of its row as `RGB3` holds three bytes of a row of `2vuy`.
struct V210Word  { static constexpr PixelWord kWord{ByteOrder::kLittle, 10,  0, 10, 20, 0}; };
// clang-format on
}  // namespace layout

/// Between memory and native words of four pixels; both ways alike.
template <ByteOrder kOrder>
simd::Vector NativeWords(simd::Vector pixels) {
  return kOrder == ByteOrder::kBig ? simd::ReverseBytes(pixels) : pixels;
}

}  // namespace mixdecks
