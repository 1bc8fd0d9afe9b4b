// 4:2:2 to RGB, for every source and destination.
//
// Even pixels take their pair's chroma as it stands, odd pixels the average with the next pair,
// rounded up. The products of a channel are summed in different groups at even and odd pixels, each
// group shifted by itself; that difference is part of the result.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/colour_matrix.h"
#include "pixelconvert/conversion_grid.h"
#include "pixelconvert/four_runs.h"
#include "pixelconvert/kernel_frame.h"
#include "pixelconvert/simd.h"
#include "pixelconvert/yuv_site.h"

namespace mixdecks {

/// Turns samples of one depth into RGB of another.
template <int kFrom, int kTo, SampleRange kRange, ColourSpaceIndex kSpace>
class InverseTransform {
 public:
  /// `interpolated` is the chroma of the odd pixels, laid out as the site's own.
  static RgbSite Convert(const YuvSite& site, simd::Vector interpolated) {
    const simd::Vector luma = Centre(site.luma, LumaOffset(kRange, kFrom));
    const simd::Vector chroma = Centre(site.chroma, ChromaOffset(kFrom));
    const simd::Vector between = Centre(interpolated, ChromaOffset(kFrom));

    const simd::Vector even = _mm_unpacklo_epi16(chroma, luma);     // [Cb Y] × 4
    const simd::Vector odd = _mm_unpackhi_epi16(between, luma);     // [Cr Y] × 4
    const simd::Vector alone = simd::InnerHalves(chroma, between);  // [even Cr × 4 | odd Cb × 4]

    // A group of two products in one channel, single products in the other two.
    const simd::Vector green = _mm_add_epi16(
        simd::WeighPairs<kShift>(even, simd::WordPairs(kM.greenFromCb, kM.luma),  //
                                 odd, simd::WordPairs(kM.greenFromCr, kM.luma)),
        _mm_mulhi_epi16(Scale(alone), simd::WordHalves(kM.greenFromCr, kM.greenFromCb)));
    const simd::Vector evenBlue =
        _mm_madd_epi16(even, simd::WordPairs(kM.blueFromCb, kM.BlueFromLuma()));
    const simd::Vector oddRed = _mm_madd_epi16(odd, simd::WordPairs(kM.redFromCr, kM.luma));
    const simd::Vector grouped = _mm_packs_epi32(_mm_srai_epi32(evenBlue, kShift - 1),  //
                                                 _mm_srai_epi32(oddRed, kShift));
    const simd::Vector single = _mm_add_epi16(  // [even red × 4 | odd blue × 4]
        WeighLuma(luma), _mm_mulhi_epi16(simd::ShiftHalves<kScale, kScale + 1>(alone),
                                         simd::WordHalves(kM.redFromCr, kM.blueFromCb)));
    return {.blue = simd::OuterHalves(grouped, single),
            .green = green,
            .red = simd::OuterHalves(single, grouped),
            .alpha = site.alpha};
  }

 private:
  static constexpr InverseMatrix kM = kInverseMatrix<kRange, kSpace>;
  // Behind the products of green and red; blue's weights have one bit less.
  static constexpr int kShift = kInverseFraction + kFrom - kTo;
  static_assert(kInverseBlueFraction == kInverseFraction - 1);
  // What a high multiply, which shifts by 16, shifts too much.
  static constexpr int kScale = 16 - kShift;

  static simd::Vector Centre(simd::Vector samples, int offset) {
    return _mm_sub_epi16(samples, simd::Words(offset));
  }

  static simd::Vector Scale(simd::Vector samples) {
    return kScale == 0 ? samples : _mm_slli_epi16(samples, kScale);
  }

  static simd::Vector WeighLuma(simd::Vector luma) {
    if constexpr (kM.luma == 1 << kInverseFraction) return _mm_slli_epi16(luma, kTo - kFrom);
    return _mm_mulhi_epi16(Scale(luma), simd::Words(kM.luma));
  }
};

/// `RowEnd::RepeatsLastPair(width)` tells whether the chroma of the row's last odd pixel is its
/// pair's own; if not, it is averaged with what follows the pair in the source row, or with zero
/// where the row is over.
template <ColourSpaceIndex kSpace, class Source, class Destination, class RowEnd>
struct YuvToRgb
    : KernelShape<kRuns * Source::kRun, Source::kRow, Destination::kRow, Source::kLookAhead> {
  struct Row : SeparateBlocks {
    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      const auto sites = Source::Read(src);
      const simd::Vector afterLast =
          ShiftRunsDown(sites[0].chroma, Source::NextChroma(src + YuvToRgb::kSourceBlock));
      RgbSite rgb[kSites];
#pragma GCC unroll 3
      for (std::size_t x = 0; x < kSites; ++x) {
        const simd::Vector next = x + 1 < kSites ? sites[x + 1].chroma : afterLast;
        rgb[x] = Transform::Convert(sites[x], _mm_avg_epu16(sites[x].chroma, next));
      }
      Destination::Write(dst, rgb);
    }

    void Finish(std::uint8_t* scratch, std::uint32_t pixels, std::uint32_t width) {
      if (RowEnd::RepeatsLastPair(width)) Source::RepeatLastPair(scratch, pixels);
    }
  };

 private:
  static constexpr std::size_t kSites = Source::kRun / 2;

  using Transform =
      InverseTransform<Source::kDepth, Destination::kDepth, Destination::kRange, kSpace>;

  // Every run's first chroma moved to the run before; the fourth gets the next block's.
  static simd::Vector ShiftRunsDown(simd::Vector firstChroma, ChromaPair next) {
    simd::Vector shifted = _mm_srli_epi64(firstChroma, 16);
    shifted = _mm_insert_epi16(shifted, next.cb, 3);
    return _mm_insert_epi16(shifted, next.cr, 7);
  }
};

/// The usual end: a row of whole blocks, as the grid has them, repeats its last pair.
template <PixelFormatCode kSource, PixelFormatCode kDestination>
struct WholeBlocksRepeat {
  static constexpr bool RepeatsLastPair(std::uint32_t width) {
    return width % WidthBlock(kSource, kDestination) == 0;
  }
};

/// Three common row widths that are no whole blocks end as if they were.
template <PixelFormatCode kSource, PixelFormatCode kDestination>
struct CommonRowsRepeatToo {
  static constexpr bool RepeatsLastPair(std::uint32_t width) {
    return width == 1280 || width == 2048 || width == 4096 ||
           WholeBlocksRepeat<kSource, kDestination>::RepeatsLastPair(width);
  }
};

}  // namespace mixdecks
