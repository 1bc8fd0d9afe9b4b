// 4:2:2 to 4:2:2: samples keep their places, and depth changes by two bits below.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/kernel_frame.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

/// `2vuy` and `v210` hold the samples of a row in the same order, as bytes and as three fields of a
/// word. So going from one to the other is what `RGB3` and a 10-bit word do, a word to three bytes.
template <class Source, class Destination, const RowUnit& kSource, const RowUnit& kDestination>
struct RegroupSamples : KernelShape<24, kSource, kDestination> {
  using Words = MoveFields<Source, Destination>;
  static_assert(RegroupSamples::kSourceBlock == Words::kSourceBlock);
  static_assert(RegroupSamples::kDestinationBlock == Words::kDestinationBlock);

  using Row = typename Words::Row;
};

using TwoVuyToV210 = RegroupSamples<layout::Rgb3, layout::V210Word, k2vuyRead, kV210Group>;
using V210ToTwoVuy = RegroupSamples<layout::V210Word, layout::Rgb3, kV210Group, k2vuyWritten>;

/// Every pixel of `2vuy` is two bytes, chroma and luma, and becomes a word of `ay10`; the alpha is
/// that of ten full bits, not of video range.
struct TwoVuyToAy10 : KernelShape<8, k2vuyRead, kAy10Block> {
  struct Row : SeparateBlocks {
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
  };
};

}  // namespace mixdecks
