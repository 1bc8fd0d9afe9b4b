// The rules that change a sample's range without a colour matrix.
//
// Samples are words at the scale of 64 to the 10-bit unit, ten bits from the top or a byte in the
// upper half: so one rule serves both depths.
#pragma once

#include "pixelconvert/simd.h"

namespace mixdecks {

// 219/255 and 255/438 with 16 fraction bits: from full range down to video range, and back up from
// twice the distance to black.
inline constexpr int kFullToVideo = 56284;
inline constexpr int kVideoToFull = 38155;

inline constexpr int kVideoBlack10 = 64;

/// Full range to ten bits of video range, black still to be added.
inline simd::Vector FullToVideo(simd::Vector times64) {
  return _mm_srli_epi16(_mm_mulhi_epu16(times64, simd::Words(kFullToVideo)), 6);
}

/// Video range to full range of eight or ten bits. What lies above white is kept as long as there
/// is room.
template <int kBits>
simd::Vector VideoToFull(simd::Vector times64) {
  const simd::Vector aboveBlack = _mm_subs_epu16(times64, simd::Words(kVideoBlack10 * 64));
  const simd::Vector times32 = _mm_mulhi_epu16(aboveBlack, simd::Words(kVideoToFull));
  return _mm_min_epi16(_mm_srli_epi16(times32, 15 - kBits), simd::Words((1 << kBits) - 1));
}

/// 8-bit alpha, given times 256, to (10-bit video-range alpha - 64) × 16: the place it has in the
/// upper half of an `ay10` word. The quarter of the factor leaves the product four bits more.
inline simd::Vector AlphaToVideoTimes16(simd::Vector alphaTimes256) {
  const simd::Vector product = _mm_mulhi_epu16(alphaTimes256, simd::Words(kFullToVideo / 4));
  return _mm_and_si128(product, simd::Words(0xFFF0));
}

}  // namespace mixdecks
