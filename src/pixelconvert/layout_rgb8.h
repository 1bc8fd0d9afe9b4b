// Layouts of 8-bit RGB as a source of 4:2:2: where a quad holds its channels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/colour_matrix.h"
#include "pixelconvert/four_runs.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

/// What sources of four bytes a pixel, one a channel, have in common.
struct ByteQuads {
  static constexpr int kDepth = 8;
  static constexpr SampleRange kRange = SampleRange::kFull;
  static constexpr RowUnit kRow = kFourBytePixel;
  static constexpr std::size_t kPixelBytes = 4;

  using Quad = simd::Vector;

  static QuadPair Gather(const std::uint8_t* src, std::size_t runBytes) {
    return GatherQuads(src, runBytes);
  }

  static Quad Average(Quad a, Quad b) { return _mm_avg_epu8(a, b); }
  static Quad ShiftRunsUp(Quad last, Quad carry) { return mixdecks::ShiftRunsUp(last, carry); }
  static Quad FirstRun(Quad quad) { return mixdecks::FirstRun(quad); }
  static Quad LastRun(Quad quad) { return mixdecks::LastRun(quad); }
};

/// Bytes B G R A: a quad is [blue green | red alpha], the first of each two in the low byte.
struct BgraSource : ByteQuads {
  /// [blue green] × 4
  static simd::Vector BlueGreen(Quad quad) { return _mm_unpacklo_epi8(quad, _mm_setzero_si128()); }

  static simd::Vector BlueGreenWeights(ForwardRow row) {
    return simd::WordPairs(row.blue, row.green);
  }

  /// [red of a × 4 | red of b × 4]
  static simd::Vector Red(Quad a, Quad b) {
    return _mm_and_si128(simd::HighHalves(a, b), simd::Words(0x00FF));
  }

  /// Like Red, each alpha times 256.
  static simd::Vector AlphaTimes256(Quad a, Quad b) {
    return _mm_and_si128(simd::HighHalves(a, b), simd::Words(0xFF00));
  }
};

/// `BGRA` whose fourth byte is a filler: opaque whatever it holds.
struct BgrxSource : BgraSource {
  static simd::Vector AlphaTimes256(Quad, Quad) { return simd::Words(0xFF00); }
};

/// Bytes A R G B: a quad is [alpha red | green blue].
struct ArgbSource : ByteQuads {
  /// [green blue] × 4
  static simd::Vector BlueGreen(Quad quad) { return _mm_unpackhi_epi8(quad, _mm_setzero_si128()); }

  static simd::Vector BlueGreenWeights(ForwardRow row) {
    return simd::WordPairs(row.green, row.blue);
  }

  static simd::Vector Red(Quad a, Quad b) { return _mm_srli_epi16(simd::LowHalves(a, b), 8); }
};

/// Bytes R G B A, read one byte early: then they stand as A R G B, with the alpha of the pixel
/// before. Nothing stands before the first pixel, so the first run is read in place and shifted.
struct RgbaSource : ArgbSource {
  static QuadPair Gather(const std::uint8_t* src, std::size_t runBytes) {
    return WeaveQuads(_mm_slli_epi64(simd::LoadHalf(src), 8), simd::LoadHalf(src + runBytes - 1),
                      simd::LoadHalf(src + 2 * runBytes - 1),
                      simd::LoadHalf(src + 3 * runBytes - 1));
  }
};

/// Bytes R G B without a fourth, read one byte early like `RGBA`.
struct Rgb3Source : ArgbSource {
  static constexpr RowUnit kRow = kThreeBytePixel;
  static constexpr std::size_t kPixelBytes = 3;

  static QuadPair Gather(const std::uint8_t* src, std::size_t runBytes) {
    const simd::Vector first = _mm_slli_epi32(simd::LoadQuarter(src), 8);
    return {Weave(first, src + runBytes - 1, runBytes),
            Weave(simd::LoadQuarter(src + 2), src + runBytes + 2, runBytes)};
  }

 private:
  static Quad Weave(simd::Vector p, const std::uint8_t* q, std::size_t runBytes) {
    const simd::Vector r = simd::LoadQuarter(q + runBytes);
    const simd::Vector s = simd::LoadQuarter(q + 2 * runBytes);
    return _mm_unpacklo_epi16(_mm_unpacklo_epi16(p, r),
                              _mm_unpacklo_epi16(simd::LoadQuarter(q), s));
  }
};

}  // namespace mixdecks
