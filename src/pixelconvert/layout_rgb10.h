// 10-bit RGB as a source of 4:2:2: how its words become words of B, G and R.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/colour_matrix.h"
#include "pixelconvert/four_runs.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/pixel_word.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

/// A 10-bit format as a source of 4:2:2.
template <class Layout, SampleRange kSampleRange>
struct Rgb10Source {
  static constexpr int kDepth = 10;
  static constexpr SampleRange kRange = kSampleRange;
  static constexpr RowUnit kRow = kFourBytePixel;
  static constexpr std::size_t kPixelBytes = 4;

  /// Four pixels, one of each run.
  struct Quad {
    simd::Vector blueGreen;  ///< [blue green] × 4
    simd::Vector red;        ///< [red × 4 | of no use]
  };

  struct Pair {
    Quad even;
    Quad odd;
  };

  static Pair Gather(const std::uint8_t* src, std::size_t runBytes) {
    const QuadPair words = GatherQuads(src, runBytes);
    const simd::Vector first = simd::LowHalves(words.even, words.odd);
    const simd::Vector second = simd::HighHalves(words.even, words.odd);
    if constexpr (Layout::kWord.order == ByteOrder::kBig) {
      return Unpack(simd::SwapWordBytes(first), simd::SwapWordBytes(second));
    } else {
      return Unpack(second, first);
    }
  }

  static Quad Average(const Quad& a, const Quad& b) {
    return {_mm_avg_epu16(a.blueGreen, b.blueGreen), _mm_avg_epu16(a.red, b.red)};
  }

  static Quad ShiftRunsUp(const Quad& last, const Quad& carry) {
    return {_mm_or_si128(_mm_slli_si128(last.blueGreen, 4), carry.blueGreen),
            mixdecks::ShiftRunsUp(last.red, carry.red)};
  }

  static Quad FirstRun(const Quad& quad) {
    return {_mm_srli_si128(_mm_slli_si128(quad.blueGreen, 12), 12), mixdecks::FirstRun(quad.red)};
  }

  static Quad LastRun(const Quad& quad) {
    return {_mm_srli_si128(quad.blueGreen, 12), mixdecks::LastRun(quad.red)};
  }

  static simd::Vector BlueGreen(const Quad& quad) { return quad.blueGreen; }

  static simd::Vector BlueGreenWeights(ForwardRow row) {
    return simd::WordPairs(row.blue, row.green);
  }

  static simd::Vector Red(const Quad& a, const Quad& b) { return simd::LowHalves(a.red, b.red); }

 private:
  // From the upper and lower halves of the words, [even × 4 | odd × 4] each.
  static Pair Unpack(simd::Vector high, simd::Vector low) {
    constexpr PixelWord word = Layout::kWord;
    const simd::Vector red = _mm_srli_epi16(_mm_slli_epi16(high, 22 - word.red), 6);
    // Green lies across the two halves of the word.
    const simd::Vector greenTop = _mm_srli_epi16(_mm_slli_epi16(high, 22 - word.green), 6);
    const simd::Vector green = _mm_or_si128(greenTop, _mm_srli_epi16(low, word.green));
    const simd::Vector blue = _mm_and_si128(_mm_srli_epi16(low, word.blue), simd::Words(0x03FF));
    return {{_mm_unpacklo_epi16(blue, green), red},
            {_mm_unpackhi_epi16(blue, green), simd::HighHalves(red, red)}};
  }
};

}  // namespace mixdecks
