// Where a picture lies in memory: its stride, and how it meets the guard pages.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mixdecks::proof {

enum class Stride { kTight, kOdd, kLarge, kNegative, kNegativeOdd, kZero };

enum class Place {
  kAtEnd,      ///< the last byte is the last before the upper guard
  kAtBegin,    ///< the first byte is the first behind the lower guard
  kUnaligned,  ///< free of both, at an address that is no multiple of 16
};

struct Layout {
  std::string_view name;
  Stride sourceStride;
  Place sourcePlace;
  Stride destinationStride;
  Place destinationPlace;
};

inline constexpr std::array<Layout, 9> kLayouts = {{
    {"tight rows at the upper guard", Stride::kTight, Place::kAtEnd, Stride::kTight, Place::kAtEnd},
    {"tight rows at the lower guard", Stride::kTight, Place::kAtBegin, Stride::kTight,
     Place::kAtBegin},
    {"tight rows at unaligned addresses", Stride::kTight, Place::kUnaligned, Stride::kTight,
     Place::kUnaligned},
    {"odd strides at the upper guard", Stride::kOdd, Place::kAtEnd, Stride::kOdd, Place::kAtEnd},
    {"large strides", Stride::kLarge, Place::kAtBegin, Stride::kLarge, Place::kAtEnd},
    {"negative strides", Stride::kNegative, Place::kAtEnd, Stride::kNegative, Place::kAtBegin},
    {"a negative source, an odd destination stride", Stride::kNegativeOdd, Place::kAtBegin,
     Stride::kOdd, Place::kUnaligned},
    {"every row from one source row", Stride::kZero, Place::kAtEnd, Stride::kNegativeOdd,
     Place::kAtEnd},
    {"every row to one destination row", Stride::kLarge, Place::kUnaligned, Stride::kZero,
     Place::kAtEnd},
}};

/// The stride in bytes for rows of `rowBytes`.
std::int32_t StrideBytes(Stride stride, std::size_t rowBytes);

/// The bytes that a picture's rows span, relative to the first byte of its first row.
struct Extent {
  std::ptrdiff_t first;
  std::ptrdiff_t behindLast;
};
Extent ExtentOf(std::int32_t stride, std::size_t rowBytes, std::int32_t height);

}  // namespace mixdecks::proof
