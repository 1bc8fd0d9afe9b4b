// The rules that change a sample's range without a colour matrix.
//
// Samples stand in words, ten bits each, at a scale: at scale n a sample is n bits up in its word.
// A high multiply keeps the scale and leaves a fraction below the sample, for the caller to cut
// off.
#pragma once

#include "pixelconvert/simd.h"

namespace mixdecks {

// 219/255 and 255/438 with 16 fraction bits: from full range down to video range, and back up from
// twice the distance to black.
inline constexpr int kFullToVideo = 56284;
inline constexpr int kVideoToFull = 38155;

inline constexpr int kVideoBlack10 = 64;

/// Full range to video range, black still to be added.
inline simd::Vector FullToVideo(simd::Vector samples) {
  return _mm_mulhi_epu16(samples, simd::Words(kFullToVideo));
}

/// The first video-range sample to reach the top of full range.
constexpr int VideoTop(int fullBits) {
  return fullBits == 8 ? 940 : 943;
}

static_assert([] {
  const auto full = [](int sample, int bits) {
    return ((sample - kVideoBlack10) * 2 * kVideoToFull >> 16) >> (10 - bits);
  };
  return full(VideoTop(8) - 1, 8) == 254 && full(VideoTop(8), 8) == 255 &&
         full(VideoTop(10) - 1, 10) == 1022 && full(VideoTop(10), 10) == 1023;
}());

/// The place, in its word, of a full-range sample that was made of a video-range one at a scale.
constexpr int FullPlace(int fullBits, int scale) {
  return scale - 1 + 10 - fullBits;
}

/// The scale for a video-range sample whose full-range sample shall stand at a place, or as near
/// to it as the neighbour does that has the highest place.
constexpr int VideoScale(int fullBits, int place, int highestPlace) {
  constexpr int highestScale = 6;
  if (fullBits == 8) return highestScale;
  const int room = FullPlace(fullBits, highestScale);
  return place + 1 - (highestPlace > room ? highestPlace - room : 0);
}

/// Video range to full range, even words at one scale and odd words at another. What lies below
/// black becomes black. What lies above white is kept as long as there is room.
template <int kFullBits, int kEvenScale, int kOddScale>
simd::Vector VideoToFull(simd::Vector samples) {
  constexpr auto room = [](int scale) { return 0xFFFF - (VideoTop(kFullBits) << scale); };
  constexpr auto black = [](int scale) { return kVideoBlack10 << scale; };
  const simd::Vector raised =
      _mm_adds_epu16(samples, simd::WordPairs(room(kEvenScale), room(kOddScale)));
  const simd::Vector aboveBlack = _mm_subs_epu16(
      raised,
      simd::WordPairs(room(kEvenScale) + black(kEvenScale), room(kOddScale) + black(kOddScale)));
  return _mm_mulhi_epu16(aboveBlack, simd::Words(kVideoToFull));
}

/// 10-bit video-range alpha, times 64, to eight bits.
inline simd::Vector AlphaToFull8(simd::Vector alphaTimes64) {
  return _mm_srli_epi16(VideoToFull<8, 6, 6>(alphaTimes64), FullPlace(8, 6));
}

/// 8-bit alpha, given times 256, to (10-bit video-range alpha - 64) × 16: the place it has in the
/// upper half of an `ay10` word. The quarter of the factor leaves the product four bits more.
inline simd::Vector AlphaToVideoTimes16(simd::Vector alphaTimes256) {
  const simd::Vector product = _mm_mulhi_epu16(alphaTimes256, simd::Words(kFullToVideo / 4));
  return _mm_and_si128(product, simd::Words(0xFFF0));
}

}  // namespace mixdecks
