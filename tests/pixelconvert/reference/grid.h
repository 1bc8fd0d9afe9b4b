// The grid of supported pairs, typed apart from the library's own tables.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/pixelconvert/reference/formats.h"

namespace mixdecks::reference {

/// One pair of formats. `block` is the number of pixels of which the width must be a multiple for
/// the row to end without a partial block; 0 means that the pair is not supported.
struct Cell {
  std::uint32_t block = 0;
  bool usesColourSpace = false;
  bool hasNamedWidths = false;
};

/// Two codes of the catalogue; an unsupported pair gives a cell with a block of 0.
Cell CellOf(PixelFormatCode source, PixelFormatCode destination);

struct Pair {
  const Format* source;
  const Format* destination;
  Cell cell;
};

/// Every supported pair, row by row.
const std::vector<Pair>& SupportedPairs();

/// The narrowest row that the pair accepts; every wider one is legal too. 0 where a row of no
/// pixels is legal and does nothing.
std::uint32_t SmallestLegalWidth(PixelFormatCode source, PixelFormatCode destination);

}  // namespace mixdecks::reference
