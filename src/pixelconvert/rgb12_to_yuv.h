// 12-bit RGB to 4:2:2, in single precision.
//
// Unlike the integer families this one multiplies first and filters the chroma behind the matrix.
// Every step is rounded to single precision by itself and in the order given here, four runs at a
// time; nothing may be fused.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/colour_matrix.h"
#include "pixelconvert/four_runs.h"
#include "pixelconvert/layout_rgb12.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/simd.h"
#include "pixelconvert/twelve_bit.h"

namespace mixdecks {

using Floats = __m128;

/// One pixel of each run, nominally 0 to 1.
struct YuvPixel {
  Floats y;
  Floats cb;
  Floats cr;
};

inline Floats Times(Floats a, float b) {
  return _mm_mul_ps(a, _mm_set1_ps(b));
}

inline Floats Plus(Floats a, float b) {
  return _mm_add_ps(a, _mm_set1_ps(b));
}

/// Reads runs of pixels through the matrix.
template <ColourSpaceIndex kSpace, ByteOrder kOrder, std::size_t kRun>
class DecimalTransform {
 public:
  static constexpr std::size_t kRunBytes = kTwelveBitGroup.RowBytes(kRun);

  static void Read(const std::uint8_t* src, YuvPixel (&pixels)[kRun]) {
    for (std::size_t x = 0; x < kRun; x += kGroupPixels) {
      const auto groups = TwelveBitGroups<kOrder>::Gather(src, kRunBytes);
#pragma GCC unroll 8
      for (std::size_t i = 0; i < kGroupPixels; ++i)
        pixels[x + i] = Pixel(groups, i);
      src += kTwelveBitGroup.bytes;
    }
  }

  /// The first pixel of the runs alone.
  static YuvPixel ReadFirst(const std::uint8_t* src) {
    return Pixel(TwelveBitGroups<kOrder>::Gather(src, kRunBytes), 0);
  }

 private:
  static constexpr DecimalMatrix kM = kDecimalMatrices[kSpace];

  static YuvPixel Pixel(const TwelveBitGroups<kOrder>& groups, std::size_t i) {
    const Floats red = Normalise(groups.Sample(i * 3));
    const Floats green = Normalise(groups.Sample(i * 3 + 1));
    const Floats blue = Normalise(groups.Sample(i * 3 + 2));
    const Floats redGreen = _mm_add_ps(Times(red, kM.yFromRed), Times(green, kM.yFromGreen));
    const Floats y = _mm_add_ps(redGreen, Times(blue, kM.yFromBlue));
    const Floats cbDown = _mm_add_ps(Times(red, kM.cbFromRed), Times(green, kM.cbFromGreen));
    const Floats cb = _mm_sub_ps(Times(blue, kM.cbFromBlue), cbDown);
    const Floats crHalf = _mm_sub_ps(Times(red, kM.crFromRed), Times(green, kM.crFromGreen));
    const Floats cr = _mm_sub_ps(crHalf, Times(blue, kM.crFromBlue));
    return {Plus(y, 0.0625f), Plus(cb, 0.5f), Plus(cr, 0.5f)};
  }

  static Floats Normalise(simd::Vector samples) {
    return Times(_mm_cvtepi32_ps(samples), kPerSample12);
  }
};

/// What a row carries from block to block: the pixel left of the block, in the first lane.
class LeftPixel {
 public:
  void Begin(const YuvPixel& first) { left_ = first; }

  /// The pixels left of the runs, from their last ones; luma is of no use.
  YuvPixel ShiftUp(const YuvPixel& last) {
    const YuvPixel shifted{last.y, ShiftUp(last.cb, left_.cb), ShiftUp(last.cr, left_.cr)};
    left_ = {last.y, LastLane(last.cb), LastLane(last.cr)};
    return shifted;
  }

 private:
  static Floats ShiftUp(Floats last, Floats carry) {
    return _mm_move_ss(_mm_shuffle_ps(last, last, 0b10'01'00'11), carry);
  }

  static Floats LastLane(Floats last) { return _mm_shuffle_ps(last, last, 0b11'11'11'11); }

  YuvPixel left_;
};

/// The frame's side of both destinations.
template <ColourSpaceIndex kSpace, ByteOrder kOrder, class Destination>
struct TwelveBitToYuv {
  static constexpr std::size_t kRun = Destination::kRun;
  static constexpr std::uint32_t kBlockPixels = kRuns * kRun;
  static constexpr RowUnit kSourceRow = kTwelveBitGroup;
  static constexpr RowUnit kDestinationRow = Destination::kRow;
  static constexpr std::size_t kSourceBlock = kSourceRow.RowBytes(kBlockPixels);
  static constexpr std::size_t kDestinationBlock = kDestinationRow.RowBytes(kBlockPixels);
  static constexpr std::uint32_t kLookAhead = 0;

  class Row {
   public:
    void Begin(const std::uint8_t* src) { left_.Begin(Transform::ReadFirst(src)); }

    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      YuvPixel pixels[kRun];
      Transform::Read(src, pixels);
      Destination::Write(dst, left_.ShiftUp(pixels[kRun - 1]), pixels);
    }

    void Finish(std::uint8_t*, std::uint32_t, std::uint32_t) {}

   private:
    using Transform = DecimalTransform<kSpace, kOrder, kRun>;

    LeftPixel left_;
  };
};

/// `2vuy`: the filter runs over scaled values, and the result is rounded.
struct TwoVuyFromFloats {
  static constexpr std::size_t kRun = kGroupPixels;
  static constexpr RowUnit kRow = k2vuyWritten;

  static void Write(std::uint8_t* dst, YuvPixel left, const YuvPixel (&pixels)[kRun]) {
#pragma GCC unroll 2
    for (std::size_t x = 0; x < kRun; x += 4) {
      const simd::Vector even = Pair(left, pixels[x], pixels[x + 1]);
      const simd::Vector odd = Pair(pixels[x + 1], pixels[x + 2], pixels[x + 3]);
      ScatterPixels(dst + x * 2, kRow.RowBytes(kRun), even, odd);
      left = pixels[x + 3];
    }
  }

 private:
  static simd::Vector Pair(const YuvPixel& left, const YuvPixel& a, const YuvPixel& b) {
    const simd::Vector chroma =
        _mm_or_si128(Filter(left.cb, a.cb, b.cb), _mm_slli_epi32(Filter(left.cr, a.cr, b.cr), 16));
    const simd::Vector luma =
        _mm_or_si128(_mm_slli_epi32(Round(Scale(a.y)), 8), _mm_slli_epi32(Round(Scale(b.y)), 24));
    return _mm_or_si128(chroma, luma);
  }

  static simd::Vector Filter(Floats left, Floats centre, Floats right) {
    const Floats sides = Times(_mm_add_ps(Scale(right), Scale(left)), 0.5f);
    return Round(Times(_mm_add_ps(sides, Scale(centre)), 0.5f));
  }

  // The product in double precision rounded once to single is the product in single precision.
  static Floats Scale(Floats x) {
    return Times(x, 255.0f);
  }

  static simd::Vector Round(Floats x) {
    const Floats clamped = _mm_min_ps(_mm_max_ps(x, _mm_setzero_ps()), _mm_set1_ps(255.0f));
    return _mm_cvttps_epi32(Plus(clamped, 0.5f));
  }
};

/// `v210`: samples are rounded first and filtered as integers. The left neighbour of a group is cut
/// instead of rounded, so flat colour may show one less at a group's first site.
struct V210FromFloats {
  static constexpr std::size_t kRun = 4 * kV210Group.pixels;
  static_assert(kRun % kGroupPixels == 0);
  static constexpr RowUnit kRow = kV210Group;

  static void Write(std::uint8_t* dst, YuvPixel left, const YuvPixel (&pixels)[kRun]) {
    for (std::size_t x = 0; x < kRun; x += kRow.pixels) {
      WriteGroup(dst, left, pixels + x);
      left = pixels[x + kRow.pixels - 1];
      dst += kRow.bytes;
    }
  }

 private:
  static void WriteGroup(std::uint8_t* dst, const YuvPixel& left, const YuvPixel* pixel) {
    simd::Vector chroma[kV210Group.pixels];  // [Cb × 4 | Cr × 4]
#pragma GCC unroll 6
    for (std::size_t i = 0; i < kV210Group.pixels; ++i) {
      chroma[i] = RoundBoth(pixel[i].cb, pixel[i].cr);
    }
    const simd::Vector cut = _mm_packs_epi32(_mm_cvttps_epi32(Times(left.cb, 1023.0f)),
                                             _mm_cvttps_epi32(Times(left.cr, 1023.0f)));
    const simd::Vector sites[] = {Filter(cut, chroma[0], chroma[1]),
                                  Filter(chroma[1], chroma[2], chroma[3]),
                                  Filter(chroma[3], chroma[4], chroma[5])};
    const simd::Vector luma[] = {RoundBoth(pixel[0].y, pixel[1].y),
                                 RoundBoth(pixel[2].y, pixel[3].y),
                                 RoundBoth(pixel[4].y, pixel[5].y)};
    V210Destination::StoreSites(dst, kRow.RowBytes(kRun), sites, luma);
  }

  static simd::Vector RoundBoth(Floats a, Floats b) {
    const simd::Vector words = _mm_packs_epi32(_mm_cvttps_epi32(Plus(Times(a, 1023.0f), 0.5f)),
                                               _mm_cvttps_epi32(Plus(Times(b, 1023.0f), 0.5f)));
    return simd::ClampWords(words, 1023);
  }

  static simd::Vector Filter(simd::Vector left, simd::Vector centre, simd::Vector right) {
    const simd::Vector sides = _mm_srai_epi16(_mm_add_epi16(right, left), 1);
    return _mm_srai_epi16(_mm_add_epi16(sides, centre), 1);
  }
};

}  // namespace mixdecks
