// The rules that change a sample's depth or range without a colour matrix.
#pragma once

#include "pixelconvert/simd.h"

namespace mixdecks {

// 219/255 and 255/438 with 16 fraction bits: from full range down to video range, and back up from
// twice the distance to black.
inline constexpr int kFullToVideo = 56284;
inline constexpr int kVideoToFull = 38155;

inline constexpr int kVideoBlack10 = 64;

/// 8-bit alpha, given times 256, to (10-bit video-range alpha - 64) × 16: the place it has in the
/// upper half of an `ay10` word. The quarter of the factor keeps the product's upper word exact.
inline simd::Vector AlphaToVideoTimes16(simd::Vector alphaTimes256) {
  const simd::Vector product = _mm_mulhi_epu16(alphaTimes256, simd::Words(kFullToVideo / 4));
  return _mm_and_si128(product, simd::Words(0xFFF0));
}

/// 10-bit video range to 8-bit full range; may exceed 255, which a saturating pack cuts.
inline simd::Vector VideoToFull8(simd::Vector v) {
  const simd::Vector aboveBlack = _mm_subs_epu16(v, simd::Words(kVideoBlack10));
  const simd::Vector full =
      _mm_mulhi_epu16(_mm_add_epi16(aboveBlack, aboveBlack), simd::Words(kVideoToFull));
  return _mm_srli_epi16(full, 2);
}

}  // namespace mixdecks
