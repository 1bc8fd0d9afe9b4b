// RGB to 4:2:2, for every integer source.
//
// Luma is made of every pixel, chroma of every even pixel after a 1-2-1 filter over B, G and R: two
// averages that round up. Each sample is two products shifted by themselves, blue with green and
// red alone, so that two floors are taken and not one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "pixelconvert/colour_matrix.h"
#include "pixelconvert/four_runs.h"
#include "pixelconvert/kernel_frame.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

/// A block's pixels, and its filtered even pixels.
template <class Source, int kRun>
struct FilteredBlock {
  typename Source::Quad pixel[kRun];
  typename Source::Quad site[kRun / 2];
};

/// What a row carries from block to block: the pixel left of the block.
template <class Source, int kRun>
class ChromaFilter {
 public:
  /// The row's first pixel stands in for its missing left neighbour.
  void Begin(const std::uint8_t* src) {
    left_ = Source::FirstRun(Source::Gather(src, kRunBytes).even);
  }

  FilteredBlock<Source, kRun> Read(const std::uint8_t* src) {
    FilteredBlock<Source, kRun> block;
#pragma GCC unroll 3
    for (std::size_t x = 0; x < kRun; x += 2) {
      const auto pair = Source::Gather(src + x * Source::kPixelBytes, kRunBytes);
      block.pixel[x] = pair.even;
      block.pixel[x + 1] = pair.odd;
    }
    auto left = Source::ShiftRunsUp(block.pixel[kRun - 1], left_);
    left_ = Source::LastRun(block.pixel[kRun - 1]);
#pragma GCC unroll 3
    for (std::size_t x = 0; x < kRun; x += 2) {
      const auto sides = Source::Average(left, block.pixel[x + 1]);
      block.site[x / 2] = Source::Average(sides, block.pixel[x]);
      left = block.pixel[x + 1];
    }
    return block;
  }

 private:
  static constexpr std::size_t kRunBytes = kRun * Source::kPixelBytes;

  typename Source::Quad left_;
};

/// Turns quads into samples of one depth.
template <class RgbSource, int kDepth, ColourSpaceIndex kSpace>
class ForwardTransform {
 public:
  using Source = RgbSource;
  static constexpr ForwardMatrix kMatrix = kForwardMatrix<Source::kRange, kSpace>;

  /// Whether a sample can leave the span of the destination. Then it has to be clamped.
  static constexpr bool kClamps =
      CanLeaveSpan(kMatrix, LumaOffset(Source::kRange, kDepth), Source::kDepth, kDepth);

  /// [row of a × 4 | row of b × 4], without offset and clamp.
  static simd::Vector Samples(typename Source::Quad a, ForwardRow rowA, typename Source::Quad b,
                              ForwardRow rowB) {
    const simd::Vector blueGreen =
        simd::WeighPairs<kShift>(Source::BlueGreen(a), Source::BlueGreenWeights(rowA),
                                 Source::BlueGreen(b), Source::BlueGreenWeights(rowB));
    return _mm_add_epi16(blueGreen, WeighRed(Source::Red(a, b), rowA, rowB));
  }

  static simd::Vector Samples(typename Source::Quad a, typename Source::Quad b, ForwardRow row) {
    return Samples(a, row, b, row);
  }

 private:
  static constexpr int kShift = kForwardFraction + Source::kDepth - kDepth;
  // A high multiply shifts by 16. What lacks goes to the weights while they have room, which costs
  // nothing, and the rest to the samples.
  static constexpr bool kDoubleWeights = [] {
    const auto fits = [](int weight) { return weight * 2 <= std::numeric_limits<short>::max(); };
    return kShift < 16 && fits(kMatrix.y.red) && fits(kMatrix.cr.red);
  }();
  static constexpr int kRedShift = 16 - kShift - (kDoubleWeights ? 1 : 0);

  static simd::Vector WeighRed(simd::Vector red, ForwardRow rowA, ForwardRow rowB) {
    const int scale = kDoubleWeights ? 2 : 1;
    const simd::Vector weights = simd::WordHalves(rowA.red * scale, rowB.red * scale);
    if constexpr (kRedShift < 0) {
      return _mm_srai_epi16(_mm_mulhi_epi16(red, weights), -kRedShift);
    } else {
      return _mm_mulhi_epi16(_mm_slli_epi16(red, kRedShift), weights);
    }
  }
};

/// A destination takes a block's pixels and filtered sites and makes of them the samples it stores:
/// `Destination::Write<Transform>(dst, block)`.
template <ColourSpaceIndex kSpace, class Source, class Destination>
struct RgbToYuv : KernelShape<kRuns * Destination::kRun, Source::kRow, Destination::kRow> {
  class Row : public SeparateBlocks {
   public:
    void Begin(const std::uint8_t* src) { filter_.Begin(src); }

    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      using Transform = ForwardTransform<Source, Destination::kDepth, kSpace>;
      Destination::template Write<Transform>(dst, filter_.Read(src));
    }

   private:
    ChromaFilter<Source, Destination::kRun> filter_;
  };
};

}  // namespace mixdecks
