// 12-bit RGB to and from 8-bit RGB.
//
// The rule is told in single precision, every step rounded by itself, and computed in integers;
// that both give the same for every sample is proved while this compiles.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/four_runs.h"
#include "pixelconvert/kernel_frame.h"
#include "pixelconvert/layout_rgb12.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

/// 1/4095 in single precision.
inline constexpr float kPerSample12 = 0.00024420026f;

constexpr int NarrowInFloats(int sample) {
  const float whole = static_cast<float>(sample) * kPerSample12 * 255.0f;
  const float clamped = whole < 0.0f ? 0.0f : whole > 255.0f ? 255.0f : whole;
  return static_cast<int>(clamped + 0.5f);
}

constexpr int WidenInFloats(int byte) {
  const float whole = static_cast<float>(byte) / 255.0f * 4095.0f;
  return static_cast<int>(whole < 0.0f ? 0.0f : whole > 4095.0f ? 4095.0f : whole);
}

// 255/4095 with 20 fraction bits, beside 3 bits of the sample, and the half that rounds.
inline constexpr int kNarrowFactor = 65296;
inline constexpr int kNarrowRound = 64;

constexpr int Narrow(int sample) {
  return ((sample * 8 + kNarrowRound) * kNarrowFactor >> 16) >> 7;
}

// 4095/255 is 16 + 1/17.
inline constexpr int kSeventeenth = 3856;  // with 16 fraction bits, rounded up

constexpr int Widen(int byte) {
  return byte * 16 + (byte * kSeventeenth >> 16);
}

static_assert([] {
  for (int sample = 0; sample <= kSampleMax; ++sample) {
    if (Narrow(sample) != NarrowInFloats(sample)) return false;
  }
  for (int byte = 0; byte < 256; ++byte) {
    if (Widen(byte) != WidenInFloats(byte)) return false;
  }
  return true;
}());

/// To `32`. `BGRA` gets the same bytes: its readers of 12-bit pictures have always expected them.
template <ByteOrder kOrder>
struct TwelveBitToArgb : KernelShape<kRuns * kGroupPixels, kTwelveBitGroup, kFourBytePixel> {
  struct Row : SeparateBlocks {
    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      const auto groups = TwelveBitGroups<kOrder>::Gather(src, kTwelveBitGroup.bytes);
      RgbSite sites[kGroupPixels / 2];
#pragma GCC unroll 4
      for (std::size_t i = 0; i < kGroupPixels / 2; ++i) {
        sites[i].red = NarrowBoth(groups.Sample(i * 6), groups.Sample(i * 6 + 3));
        sites[i].green = NarrowBoth(groups.Sample(i * 6 + 1), groups.Sample(i * 6 + 4));
        sites[i].blue = NarrowBoth(groups.Sample(i * 6 + 2), groups.Sample(i * 6 + 5));
      }
      ArgbDestination::Write(dst, sites);
    }

   private:
    static simd::Vector NarrowBoth(simd::Vector even, simd::Vector odd) {
      const simd::Vector samples = _mm_slli_epi16(_mm_packs_epi32(even, odd), 3);
      const simd::Vector product = _mm_mulhi_epu16(
          _mm_add_epi16(samples, simd::Words(kNarrowRound)), simd::Words(kNarrowFactor));
      return _mm_srli_epi16(product, 7);
    }
  };
};

template <ByteOrder kOrder>
struct BgraToTwelveBit : KernelShape<kRuns * kGroupPixels, kFourBytePixel, kTwelveBitGroup> {
  struct Row : SeparateBlocks {
    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      simd::Vector values[kGroupSamples / 2];
#pragma GCC unroll 4
      for (std::size_t i = 0; i < kGroupPixels / 2; ++i) {
        const QuadPair quads = GatherQuads(src + i * 8, kGroupPixels * 4);
        const simd::Vector blueGreen = simd::LowHalves(quads.even, quads.odd);
        const simd::Vector redAlpha = simd::HighHalves(quads.even, quads.odd);
        const simd::Vector blue = WidenWords(_mm_and_si128(blueGreen, simd::Words(0x00FF)));
        const simd::Vector green = WidenWords(_mm_srli_epi16(blueGreen, 8));
        const simd::Vector red = WidenWords(_mm_and_si128(redAlpha, simd::Words(0x00FF)));
        values[i * 3] = Join(_mm_unpacklo_epi16(red, green));
        values[i * 3 + 1] = Join(_mm_unpacklo_epi16(blue, simd::HighHalves(red, red)));
        values[i * 3 + 2] = Join(_mm_unpackhi_epi16(green, blue));
      }
      TwelveBitGroups<kOrder>::Join(values).Scatter(dst, kTwelveBitGroup.bytes);
    }

   private:
    static simd::Vector WidenWords(simd::Vector bytes) {
      return _mm_add_epi16(_mm_slli_epi16(bytes, 4),
                           _mm_mulhi_epi16(bytes, simd::Words(kSeventeenth)));
    }

    static simd::Vector Join(simd::Vector pairs) {
      return _mm_madd_epi16(pairs, simd::WordPairs(1, 1 << kSampleBits));
    }
  };
};

}  // namespace mixdecks
