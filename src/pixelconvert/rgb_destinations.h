// RGB formats as destinations of 4:2:2: clamps, packs and stores the pixels of a block of four
// runs.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/four_runs.h"
#include "pixelconvert/layout_rgb3.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/pixel_word.h"
#include "pixelconvert/sample_range.h"
#include "pixelconvert/simd.h"
#include "pixelconvert/yuv_site.h"

namespace mixdecks {

/// Stores pixels of four bytes. `Layout::Pack` makes pixels of samples.
template <class Layout>
struct FourByteDestination {
  static constexpr RowUnit kRow = kFourBytePixel;

  template <std::size_t kSites>
  static void Write(std::uint8_t* dst, const RgbSite (&sites)[kSites]) {
#pragma GCC unroll 3
    for (std::size_t x = 0; x < kSites; ++x) {
      const PixelPair pixels = Layout::Pack(sites[x]);
      ScatterPixels(dst + x * 8, kSites * 8, pixels.even, pixels.odd);
    }
  }
};

/// Four channels in memory order, clamped to bytes by the saturating pack.
inline PixelPair PackBytes(simd::Vector first, simd::Vector second, simd::Vector third,
                           simd::Vector fourth) {
  const simd::Vector firstThird = _mm_packus_epi16(first, third);
  const simd::Vector secondFourth = _mm_packus_epi16(second, fourth);
  const simd::Vector low = _mm_unpacklo_epi8(firstThird, secondFourth);
  const simd::Vector high = _mm_unpackhi_epi8(firstThird, secondFourth);
  return {_mm_unpacklo_epi16(low, high), _mm_unpackhi_epi16(low, high)};
}

struct FullRange8 {
  static constexpr int kDepth = 8;
  static constexpr SampleRange kRange = SampleRange::kFull;

  static simd::Vector Opaque() { return simd::Words(0xFF); }
};

struct BgraDestination : FullRange8, FourByteDestination<BgraDestination> {
  static PixelPair Pack(const RgbSite& site) {
    return PackBytes(site.blue, site.green, site.red, Opaque());
  }
};

/// `BGRA` with the alpha of `ay10`.
struct BgraVideoAlphaDestination : FullRange8, FourByteDestination<BgraVideoAlphaDestination> {
  static PixelPair Pack(const RgbSite& site) {
    return PackBytes(site.blue, site.green, site.red, AlphaToFull8(site.alpha));
  }
};

struct ArgbDestination : FullRange8, FourByteDestination<ArgbDestination> {
  static PixelPair Pack(const RgbSite& site) {
    return PackBytes(Opaque(), site.red, site.green, site.blue);
  }
};

struct RgbaDestination : FullRange8, FourByteDestination<RgbaDestination> {
  static PixelPair Pack(const RgbSite& site) {
    return PackBytes(site.red, site.green, site.blue, Opaque());
  }
};

/// Three bytes a pixel.
struct Rgb3Destination : FullRange8 {
  static constexpr RowUnit kRow = kThreeBytePixel;

  template <std::size_t kSites>
  static void Write(std::uint8_t* dst, const RgbSite (&sites)[kSites]) {
    simd::Vector pairs[kRuns / 2][kSites];  // [run 2n | run 2n + 1]
#pragma GCC unroll 3
    for (std::size_t x = 0; x < kSites; ++x) {
      const RgbSite& site = sites[x];
      const PixelPair pixels = PackBytes(site.red, site.green, site.blue, _mm_setzero_si128());
      pairs[0][x] = CloseRgb3Gaps(_mm_unpacklo_epi32(pixels.even, pixels.odd));
      pairs[1][x] = CloseRgb3Gaps(_mm_unpackhi_epi32(pixels.even, pixels.odd));
    }
    Rgb3PairWriter writer(dst);
    WriteRuns(writer, pairs[0], false);
    WriteRuns(writer, pairs[1], true);
  }

 private:
  template <std::size_t kSites>
  static void WriteRuns(Rgb3PairWriter& writer, const simd::Vector (&pairs)[kSites], bool last) {
#pragma GCC unroll 3
    for (std::size_t x = 0; x < kSites; ++x)
      writer.WriteLow(pairs[x]);
#pragma GCC unroll 3
    for (std::size_t x = 0; x < kSites; ++x)
      writer.WriteHigh(pairs[x], last && x + 1 == kSites);
  }
};

/// A 10-bit format.
template <class Layout, SampleRange kSampleRange>
struct Rgb10Destination : FourByteDestination<Rgb10Destination<Layout, kSampleRange>> {
  static constexpr int kDepth = 10;
  static constexpr SampleRange kRange = kSampleRange;

  static PixelPair Pack(const RgbSite& site) {
    const simd::Vector blue = simd::ClampWords(site.blue, kLimit);
    const simd::Vector green = simd::ClampWords(site.green, kLimit);
    const simd::Vector red = simd::ClampWords(site.red, kLimit);
    if constexpr (kWord.order == ByteOrder::kBig) {
      return PackBig(blue, green, red);
    } else {
      return PackLittle(blue, green, red);
    }
  }

 private:
  static constexpr PixelWord kWord = Layout::kWord;
  static constexpr int kLimit = 1023;

  // Green lies across the two halves of the word.
  static PixelPair PackLittle(simd::Vector blue, simd::Vector green, simd::Vector red) {
    const simd::Vector low =
        _mm_or_si128(_mm_slli_epi16(green, kWord.green), _mm_slli_epi16(blue, kWord.blue));
    const simd::Vector high =
        _mm_or_si128(_mm_srli_epi16(green, 16 - kWord.green), _mm_slli_epi16(red, kWord.red - 16));
    return Interleave(SetOpaque(low), high);
  }

  // The halves as they stand in memory, the upper one first and each with its upper byte first.
  static PixelPair PackBig(simd::Vector blue, simd::Vector green, simd::Vector red) {
    const simd::Vector across = _mm_slli_epi16(green, kWord.green - 8);
    const simd::Vector first =
        _mm_or_si128(_mm_and_si128(across, simd::Words(0xFF00)), PutAcross<kWord.red - 16>(red));
    const simd::Vector second =
        _mm_or_si128(_mm_and_si128(across, simd::Words(0x00FF)), PutAcross<kWord.blue>(blue));
    return Interleave(first, SetOpaque(second));
  }

  // A channel that begins at a bit of a half whose upper byte comes first.
  template <int kBit>
  static simd::Vector PutAcross(simd::Vector channel) {
    return _mm_or_si128(_mm_srli_epi16(channel, 8 - kBit), _mm_slli_epi16(channel, 8 + kBit));
  }

  static simd::Vector SetOpaque(simd::Vector lowerHalf) {
    if constexpr (kWord.opaque == 0) return lowerHalf;
    constexpr int shift = kWord.order == ByteOrder::kBig ? 8 : 0;
    return _mm_or_si128(lowerHalf, simd::Words(kWord.opaque << shift));
  }

  static PixelPair Interleave(simd::Vector first, simd::Vector second) {
    return {_mm_unpacklo_epi16(first, second), _mm_unpackhi_epi16(first, second)};
  }
};

}  // namespace mixdecks
