// 4:2:2 to 4:2:2: samples keep their places, and depth changes by two bits below.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/pixel_format.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

/// `2vuy` and `v210` hold the samples of a row in the same order, as bytes and as three fields of a
/// word. So going from one to the other is what `RGB3` and a 10-bit word do, a word to three bytes.
template <class Source, class Destination, const RowUnit& kSource, const RowUnit& kDestination>
struct RegroupSamples {
  using Words = MoveFields<Source, Destination>;

  static constexpr std::uint32_t kBlockPixels = 24;
  static constexpr RowUnit kSourceRow = kSource;
  static constexpr RowUnit kDestinationRow = kDestination;
  static constexpr std::size_t kSourceBlock = Words::kSourceBlock;
  static constexpr std::size_t kDestinationBlock = Words::kDestinationBlock;
  static constexpr std::uint32_t kLookAhead = 0;
  static_assert(kSourceBlock == kSource.RowBytes(kBlockPixels));
  static_assert(kDestinationBlock == kDestination.RowBytes(kBlockPixels));

  using Row = typename Words::Row;
};

using TwoVuyToV210 = RegroupSamples<layout::Rgb3, layout::V210Word, k2vuyRead, kV210Group>;
using V210ToTwoVuy = RegroupSamples<layout::V210Word, layout::Rgb3, kV210Group, k2vuyWritten>;

/// Every pixel of `2vuy` is two bytes, chroma and luma, and becomes a word of `ay10`; the alpha is
/// that of ten full bits, not of video range.
struct TwoVuyToAy10 {
  static constexpr std::uint32_t kBlockPixels = 8;
  static constexpr RowUnit kSourceRow = k2vuyRead;
  static constexpr RowUnit kDestinationRow = kAy10Block;
  static constexpr std::size_t kSourceBlock = kSourceRow.RowBytes(kBlockPixels);
  static constexpr std::size_t kDestinationBlock = kDestinationRow.RowBytes(kBlockPixels);
  static constexpr std::uint32_t kLookAhead = 0;

  struct Row {
    void Begin(const std::uint8_t*) {}

    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      constexpr int opaque = 1023 << 4;
      const simd::Vector pixels = simd::Load(src);
      const simd::Vector luma = _mm_and_si128(_mm_srli_epi16(pixels, 6), simd::Words(0x03FC));
      const simd::Vector chromaTop = _mm_and_si128(_mm_srli_epi16(pixels, 4), simd::Words(0x000F));
      const simd::Vector high = simd::SwapWordBytes(_mm_or_si128(chromaTop, simd::Words(opaque)));
      const simd::Vector low = simd::SwapWordBytes(_mm_or_si128(_mm_slli_epi16(pixels, 12), luma));
      simd::Store(dst, _mm_unpacklo_epi16(high, low));
      simd::Store(dst + 16, _mm_unpackhi_epi16(high, low));
    }

    void Finish(std::uint8_t*, std::uint32_t, std::uint32_t) {}
  };
};

}  // namespace mixdecks
