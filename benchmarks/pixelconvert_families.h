// What a pair of formats is expected to cost at most, as a multiple of memcpy of the same bytes.
#pragma once

#include "pixelconvert/pixel_format.h"

namespace mixdecks {

constexpr bool IsTwelveBit(const PixelFormat& format) {
  return format.depth == 12;
}

constexpr bool IsYuv(const PixelFormat& format) {
  return format.model == ColourModel::kYuv;
}

/// The goal at 2160p of the family that a pair belongs to.
constexpr double GoalOf(const PixelFormat& from, const PixelFormat& to) {
  const bool rgb3 = from.code == kRgb3 || to.code == kRgb3;
  if (IsTwelveBit(from) || IsTwelveBit(to)) return IsYuv(to) ? 6.0 : 4.0;
  if (IsYuv(from) && IsYuv(to)) return 1.3;
  if (IsYuv(from)) return 2.6;
  if (to.code == kAy10) return 2.2;
  if (IsYuv(to)) return from.depth == 10 || rgb3 ? 2.5 : 2.0;
  if (rgb3 || from.depth != to.depth) return 1.6;
  return from.depth == 8 || from.range == to.range ? 1.3 : 1.6;
}

}  // namespace mixdecks
