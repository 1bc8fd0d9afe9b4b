// Rows of the RGB formats, read into colours and written from them bit by bit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tests/pixelconvert/reference/arithmetic.h"

namespace mixdecks::reference {

/// `count` pixels of a row. Bytes behind the span read as zero. The samples have the format's own
/// depth; alpha is 255 for formats that have none to read.
std::vector<Colour> ReadRgbRow(PixelFormatCode code, std::span<const std::uint8_t> row,
                               std::size_t count);

/// A row of exactly these pixels, 12-bit rows completed to whole groups with zero samples. The
/// samples have the format's own depth; formats without alpha drop it, `R10A` writes 3.
std::vector<std::uint8_t> WriteRgbRow(PixelFormatCode code, const std::vector<Colour>& pixels);

}  // namespace mixdecks::reference
