// Rows of the YUV formats, read into pairs of pixels and written from them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tests/pixelconvert/reference/arithmetic.h"

namespace mixdecks::reference {

/// Two pixels that share their chroma. The samples have the format's own depth; alpha belongs to
/// `ay10` alone.
struct PixelPair {
  Chroma chroma;
  std::array<int, 2> y = {};
  std::array<int, 2> a = {};
};

/// Pairs of pixels in a row as it is written: the row's last group may hold more than the width.
std::size_t PairsOfRow(PixelFormatCode code, std::size_t width);

/// `pairs` pairs of a row. Bytes behind the span read as zero.
std::vector<PixelPair> ReadYuvRow(PixelFormatCode code, std::span<const std::uint8_t> row,
                                  std::size_t pairs);

std::vector<std::uint8_t> WriteYuvRow(PixelFormatCode code, const std::vector<PixelPair>& pairs);

}  // namespace mixdecks::reference
