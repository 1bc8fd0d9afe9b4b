// Which pairs of formats convert, and what a pair asks of its caller.
//
// The grid is data, known at compile time, so that a caller can refuse a bad request with a clear
// message before it calls. Everything here may be used from any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "pixelconvert/pixel_format.h"

namespace mixdecks {

/// A row of the grid: the width block of each destination, in the order of the catalogue without
/// `BGRX`, which nothing writes. 0 is a pair that does not exist.
struct ConversionGridRow {
  PixelFormatCode source;
  std::array<std::uint8_t, 16> blocks;
};

inline constexpr std::array<PixelFormatCode, 16> kGridDestinations = {
    kArgb32,      kBgra,           kRgba,       kRgb3,          kR210Video, kR210Full,
    kR10BigVideo, kR10LittleVideo, kR10BigFull, kR10LittleFull, kR10Alpha,  kR12Big,
    kR12Little,   k2vuy,           kV210,       kAy10};

// The block decides how a row ends where a 4:2:2 source becomes RGB, in what the last odd pixel
// takes for the chroma on its right. In a row of whole blocks that is its own pair's once more, and
// so it is from `v210`, but to `RGB3`, in rows of 1280, 2048 and 4096 pixels. In any other row it
// is what follows in the source row's last unit, or zero where the unit ends.
inline constexpr std::array<ConversionGridRow, 17> kConversionGrid = {{
    // clang-format off
    //                32 BGRA RGBA RGB3 r210 R210 R10b R10l R10B R10L R10A R12B R12L 2vuy v210 ay10
    {kArgb32,        { 0,   4,   4,   0,   4,   4,   4,   4,   4,   4,   4,   0,   0,   8,  12,   0}},
    {kBgra,          { 4,   0,   4,   0,   8,   8,   4,   4,   4,   4,   4,   8,   8,   8,  12,   4}},
    {kRgba,          { 4,   4,   0,  16,   4,   4,   4,   4,   4,   4,   4,   0,   0,   8,  12,   0}},
    {kBgrx,          { 0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   4}},
    {kRgb3,          {16,  16,  16,   0,  16,  16,  16,  16,  16,  16,  16,   0,   0,  16,  48,   0}},
    {kR210Video,     { 4,   8,   4,  16,   0,   8,   4,   4,   4,   4,   4,   0,   0,   8,  12,   0}},
    {kR210Full,      { 4,   8,   4,  16,   8,   0,   4,   4,   4,   4,   4,   0,   0,   8,  12,   0}},
    {kR10BigVideo,   { 4,   4,   4,  16,   4,   4,   0,   4,   4,   4,   4,   0,   0,   8,  12,   0}},
    {kR10LittleVideo,{ 4,   4,   4,  16,   4,   4,   4,   0,   4,   4,   4,   0,   0,   8,  12,   0}},
    {kR10BigFull,    { 4,   4,   4,  16,   4,   4,   4,   4,   0,   4,   4,   0,   0,   8,  12,   0}},
    {kR10LittleFull, { 4,   4,   4,  16,   4,   4,   4,   4,   4,   0,   4,   0,   0,   8,  12,   0}},
    {kR10Alpha,      { 4,   4,   4,  16,   4,   4,   4,   4,   0,   4,   4,   0,   0,   8,  12,   0}},
    {kR12Big,        { 8,   8,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   8,  24,   0}},
    {kR12Little,     { 8,   8,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   8,  24,   0}},
    {k2vuy,          { 8,   8,   8,  16,   8,   8,   8,   8,   8,   8,   8,   0,   0,   0,  24,   8}},
    {kV210,          {12,  12,  12,  48,  12,  12,  12,  12,  12,  12,  12,   0,   0,  24,   0,   0}},
    {kAy10,          { 0,   4,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0}},
    // clang-format on
}};

/// The width block of a pair, 0 when the pair does not exist.
constexpr std::uint32_t WidthBlock(PixelFormatCode source, PixelFormatCode destination) {
  for (const ConversionGridRow& row : kConversionGrid) {
    if (row.source != source) continue;
    for (std::size_t column = 0; column < row.blocks.size(); ++column) {
      if (kGridDestinations[column] == destination) return row.blocks[column];
    }
  }
  return 0;
}

constexpr bool IsSupportedPair(PixelFormatCode source, PixelFormatCode destination) {
  return WidthBlock(source, destination) != 0;
}

/// True for a pair that crosses between RGB and YUV: the matrix, and so the converter, depends on
/// the colour space. False for every other pair and for pairs that do not exist.
constexpr bool DependsOnColourSpace(PixelFormatCode source, PixelFormatCode destination) {
  return IsSupportedPair(source, destination) &&
         FindPixelFormat(source)->model != FindPixelFormat(destination)->model;
}

/// The smallest width in pixels that a pair's converter may be called with, 0 when the pair does
/// not exist. RGB becomes 4:2:2 from one block on; `v210` and `ay10` become RGB from one pixel more
/// than a block, as they look ahead; every other pair takes any width.
constexpr std::uint32_t SmallestWidth(PixelFormatCode source, PixelFormatCode destination) {
  const std::uint32_t block = WidthBlock(source, destination);
  if (!DependsOnColourSpace(source, destination)) return block == 0 ? 0 : 1;
  if (FindPixelFormat(destination)->model == ColourModel::kYuv) return block;
  return source == k2vuy ? 1 : block + 1;
}

/// The number of pairs that exist.
constexpr int CountSupportedPairs() {
  int count = 0;
  for (const ConversionGridRow& row : kConversionGrid) {
    for (const std::uint8_t block : row.blocks)
      count += block != 0;
  }
  return count;
}
static_assert(CountSupportedPairs() == 168);

}  // namespace mixdecks
