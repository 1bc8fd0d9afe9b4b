// Blocks that cross between RGB and 4:2:2 are worked on as four runs side by side.
//
// A run is a stretch of neighbouring pixels: four where memory repeats every four, six for the
// six-pixel groups of `v210`. A block is four runs that follow one another, and every vector holds
// one pixel (or one chroma site) of each run. So the left neighbour of a pixel is simply the vector
// before, and all four lanes do the same thing.
//
// Pixels of four bytes are gathered as *quads*: of each of the four pixels, the first two bytes in
// the low half and the last two in the high half, [p q r s | p q r s] as words.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/simd.h"

namespace mixdecks {

inline constexpr int kRuns = 4;

struct QuadPair {
  simd::Vector even;
  simd::Vector odd;
};

/// Two neighbouring four-byte pixels of each run, given run by run in low halves.
inline QuadPair WeaveQuads(simd::Vector p, simd::Vector q, simd::Vector r, simd::Vector s) {
  const simd::Vector pr = _mm_unpacklo_epi16(p, r);
  const simd::Vector qs = _mm_unpacklo_epi16(q, s);
  return {_mm_unpacklo_epi16(pr, qs), _mm_unpackhi_epi16(pr, qs)};
}

/// Two neighbouring four-byte pixels of each run, from runs `runBytes` apart.
inline QuadPair GatherQuads(const std::uint8_t* src, std::size_t runBytes) {
  return WeaveQuads(simd::LoadHalf(src), simd::LoadHalf(src + runBytes),
                    simd::LoadHalf(src + 2 * runBytes), simd::LoadHalf(src + 3 * runBytes));
}

/// Two neighbouring pixels or words of each run, [p q r s] of 32 bits.
struct PixelPair {
  simd::Vector even;
  simd::Vector odd;
};

inline PixelPair GatherPixels(const std::uint8_t* src, std::size_t runBytes) {
  const simd::Vector p = simd::LoadHalf(src);
  const simd::Vector q = simd::LoadHalf(src + runBytes);
  const simd::Vector r = simd::LoadHalf(src + 2 * runBytes);
  const simd::Vector s = simd::LoadHalf(src + 3 * runBytes);
  const simd::Vector pr = _mm_unpacklo_epi32(p, r);
  const simd::Vector qs = _mm_unpacklo_epi32(q, s);
  return {_mm_unpacklo_epi32(pr, qs), _mm_unpackhi_epi32(pr, qs)};
}

/// One word of each run.
inline simd::Vector GatherPixel(const std::uint8_t* src, std::size_t runBytes) {
  const simd::Vector p = simd::LoadQuarter(src);
  const simd::Vector q = simd::LoadQuarter(src + runBytes);
  const simd::Vector r = simd::LoadQuarter(src + 2 * runBytes);
  const simd::Vector s = simd::LoadQuarter(src + 3 * runBytes);
  return simd::LowHalves(_mm_unpacklo_epi32(p, q), _mm_unpacklo_epi32(r, s));
}

/// Stores two neighbouring pixels or words of each run.
inline void ScatterPixels(std::uint8_t* dst, std::size_t runBytes, simd::Vector even,
                          simd::Vector odd) {
  const simd::Vector pq = _mm_unpacklo_epi32(even, odd);
  const simd::Vector rs = _mm_unpackhi_epi32(even, odd);
  simd::StoreLowHalf(dst, pq);
  simd::StoreHighHalf(dst + runBytes, pq);
  simd::StoreLowHalf(dst + 2 * runBytes, rs);
  simd::StoreHighHalf(dst + 3 * runBytes, rs);
}

/// Stores one word of each run.
inline void ScatterPixel(std::uint8_t* dst, std::size_t runBytes, simd::Vector pixel) {
#pragma GCC unroll 4
  for (std::size_t run = 0; run < kRuns; ++run) {
    simd::StoreQuarter(dst + run * runBytes, pixel);
    pixel = _mm_srli_si128(pixel, 4);
  }
}

/// The pixels left of the first quad of a block: its last quad, every run moved up by one, behind
/// the pixel that `carry` holds in the first lane of each half.
inline simd::Vector ShiftRunsUp(simd::Vector lastQuad, simd::Vector carry) {
  return _mm_or_si128(_mm_slli_epi64(lastQuad, 16), carry);
}

/// The carry of the next block: the fourth run's lane of a quad, in the first lane of each half.
inline simd::Vector LastRun(simd::Vector quad) {
  return _mm_srli_epi64(quad, 48);
}

/// The first run's lane of a quad, in the first lane of each half.
inline simd::Vector FirstRun(simd::Vector quad) {
  return _mm_srli_epi64(_mm_slli_epi64(quad, 48), 48);
}

}  // namespace mixdecks
