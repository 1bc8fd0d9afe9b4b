// What every converter must write, row by row and byte by byte, in plain scalar steps.
//
// Where a row does not end on a whole block, the pixels or samples behind the bytes that the width
// occupies count as zero; so every byte of a destination row has one right value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "pixelconvert/pixel_format.h"

namespace mixdecks::reference {

/// The destination row, as many bytes as its format occupies at `width`. `row` holds exactly the
/// source row's bytes. The pair must be supported and the width legal.
std::vector<std::uint8_t> ConvertRow(PixelFormatCode source, PixelFormatCode destination,
                                     ColourSpaceIndex colourSpace, std::size_t width,
                                     std::span<const std::uint8_t> row);

}  // namespace mixdecks::reference
