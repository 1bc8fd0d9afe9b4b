// The catalogue as the reference knows it, typed apart from the library's own: names, codes and
// the bytes of a row. The reference and the tests use nothing else to learn about a format.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "pixelconvert/pixel_format.h"

namespace mixdecks::reference {

enum class Kind { kRgb8, kRgb10, kRgb12, kYuv };

struct Format {
  PixelFormatCode code;
  std::string_view name;
  Kind kind;
  bool videoRange;
};

inline constexpr std::array<Format, 17> kFormats = {{
    {0x00000020, "32", Kind::kRgb8, false},
    {0x42475241, "BGRA", Kind::kRgb8, false},
    {0x42475258, "BGRX", Kind::kRgb8, false},
    {0x52474241, "RGBA", Kind::kRgb8, false},
    {0x52474233, "RGB3", Kind::kRgb8, false},
    {0x72323130, "r210", Kind::kRgb10, true},
    {0x52323130, "R210", Kind::kRgb10, false},
    {0x52313062, "R10b", Kind::kRgb10, true},
    {0x5231306C, "R10l", Kind::kRgb10, true},
    {0x52313042, "R10B", Kind::kRgb10, false},
    {0x5231304C, "R10L", Kind::kRgb10, false},
    {0x52313041, "R10A", Kind::kRgb10, false},
    {0x52313242, "R12B", Kind::kRgb12, false},
    {0x5231324C, "R12L", Kind::kRgb12, false},
    {0x32767579, "2vuy", Kind::kYuv, true},
    {0x76323130, "v210", Kind::kYuv, true},
    {0x61793130, "ay10", Kind::kYuv, true},
}};

/// The table's entry of a code or a name; throws std::out_of_range for one that it lacks.
const Format& FormatOf(PixelFormatCode code);
const Format& FormatNamed(std::string_view name);

/// Bits of a sample.
int DepthOf(const Format& format);

/// Bytes of a row that a converter may read.
std::size_t SourceRowBytes(PixelFormatCode code, std::size_t width);

/// Bytes of a row that a converter must write, no fewer and no more.
std::size_t DestinationRowBytes(PixelFormatCode code, std::size_t width);

}  // namespace mixdecks::reference
