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
#include "pixelconvert/kernel_frame.h"
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
  // So no sample has to be clamped behind it, whatever is rounded on the way.
  static_assert(StaysInside(kM, 0.01f));

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
    return {Plus(y, kDecimalBlack), Plus(cb, kDecimalGrey), Plus(cr, kDecimalGrey)};
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
struct TwelveBitToYuv : KernelShape<kRuns * Destination::kRun, kTwelveBitGroup, Destination::kRow> {
  class Row : public SeparateBlocks {
   public:
    void Begin(const std::uint8_t* src) { left_.Begin(Transform::ReadFirst(src)); }

    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      YuvPixel pixels[kRun];
      Transform::Read(src, pixels);
      Destination::Write(dst, left_.ShiftUp(pixels[kRun - 1]), pixels);
    }

   private:
    static constexpr std::size_t kRun = Destination::kRun;
    using Transform = DecimalTransform<kSpace, kOrder, kRun>;

    LeftPixel left_;
  };
};

/// `2vuy`: the filter runs over scaled values, and the result is rounded.
///
/// Scaling by 255 happens in double precision and is rounded to single once: the product in single
/// precision is the same. Halving is exact, so the halves of the filter are taken with the scale.
struct TwoVuyFromFloats {
  static constexpr std::size_t kRun = kGroupPixels;
  static constexpr RowUnit kRow = k2vuyWritten;

  static void Write(std::uint8_t* dst, const YuvPixel& left, const YuvPixel (&pixels)[kRun]) {
    Sides side = SidesOf(left);
#pragma GCC unroll 2
    for (std::size_t x = 0; x < kRun; x += 4) {
      const Sides middle = SidesOf(pixels[x + 1]);
      const Sides last = SidesOf(pixels[x + 3]);
      ScatterPixels(dst + x * 2, kRow.RowBytes(kRun),
                    Pair(side, pixels[x], middle, pixels[x + 1].y),
                    Pair(middle, pixels[x + 2], last, pixels[x + 3].y));
      side = last;
    }
  }

 private:
  // A quarter of an odd pixel's chroma.
  struct Sides {
    Floats cb;
    Floats cr;
  };

  static Sides SidesOf(const YuvPixel& pixel) {
    return {Times(pixel.cb, 255.0f / 4), Times(pixel.cr, 255.0f / 4)};
  }

  static simd::Vector Pair(const Sides& left, const YuvPixel& a, const Sides& right, Floats oddY) {
    const simd::Vector cb = Filter(left.cb, a.cb, right.cb);
    const simd::Vector cr = Filter(left.cr, a.cr, right.cr);
    const simd::Vector even = _mm_or_si128(cb, _mm_slli_epi32(Round(Times(a.y, 255.0f)), 8));
    const simd::Vector odd = _mm_or_si128(cr, _mm_slli_epi32(Round(Times(oddY, 255.0f)), 8));
    return _mm_or_si128(even, _mm_slli_epi32(odd, 16));
  }

  static simd::Vector Filter(Floats left, Floats centre, Floats right) {
    return Round(_mm_add_ps(_mm_add_ps(right, left), Times(centre, 255.0f / 2)));
  }

  static simd::Vector Round(Floats x) {
    return _mm_cvttps_epi32(Plus(x, 0.5f));
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
    return _mm_packs_epi32(_mm_cvttps_epi32(Plus(Times(a, 1023.0f), 0.5f)),
                           _mm_cvttps_epi32(Plus(Times(b, 1023.0f), 0.5f)));
  }

  static simd::Vector Filter(simd::Vector left, simd::Vector centre, simd::Vector right) {
    const simd::Vector sides = _mm_srai_epi16(_mm_add_epi16(right, left), 1);
    return _mm_srai_epi16(_mm_add_epi16(sides, centre), 1);
  }
};

}  // namespace mixdecks
