// Rows of known content and known result, given to the reference and to the library alike.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "tests/pixelconvert/reference/arithmetic.h"
#include "tests/pixelconvert/reference/formats.h"
#include "tests/pixelconvert/reference/yuv_rows.h"

namespace mixdecks::proof {

using Bytes = std::vector<std::uint8_t>;

/// What becomes of a source row. The result is the reference's; the library must give the same in
/// guarded memory, or the test fails here.
Bytes Convert(std::string_view source, std::string_view destination, ColourSpaceIndex colourSpace,
              std::size_t width, const Bytes& row);

/// The same for the pairs that ignore the colour space.
Bytes Convert(std::string_view source, std::string_view destination, std::size_t width,
              const Bytes& row);

/// `count` times the same bytes.
Bytes Repeated(const Bytes& unit, std::size_t count);

/// A row of these pixels or pairs, samples in the format's own depth.
Bytes RgbRow(std::string_view format, const std::vector<reference::Colour>& pixels);
Bytes YuvRow(std::string_view format, const std::vector<reference::PixelPair>& pairs);

/// The pixels or pairs of a row.
std::vector<reference::Colour> RgbOf(std::string_view format, const Bytes& row, std::size_t width);
std::vector<reference::PixelPair> YuvOf(std::string_view format, const Bytes& row);

/// The first `count` bytes.
Bytes Head(const Bytes& row, std::size_t count);

}  // namespace mixdecks::proof
