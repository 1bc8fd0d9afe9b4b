// `R12B` and `R12L`: eight pixels are nine words, which hold the samples R G B R G B … as one
// stream of twelve bits each, from the lowest bit of the first word upwards.
//
// Four groups are worked on side by side, each vector holding the same word or sample of all four.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/four_runs.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/pixel_word.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

inline constexpr std::size_t kGroupPixels = kTwelveBitGroup.pixels;
inline constexpr std::size_t kGroupWords = kTwelveBitGroup.bytes / 4;
inline constexpr std::size_t kGroupSamples = kGroupPixels * 3;
inline constexpr int kSampleBits = 12;
inline constexpr int kSampleMax = (1 << kSampleBits) - 1;

template <ByteOrder kOrder>
class TwelveBitGroups {
 public:
  /// Reads one group of each run.
  static TwelveBitGroups Gather(const std::uint8_t* src, std::size_t runBytes) {
    TwelveBitGroups groups;
#pragma GCC unroll 4
    for (std::size_t i = 0; i + 1 < kGroupWords; i += 2) {
      const PixelPair pair = GatherPixels(src + i * 4, runBytes);
      groups.words_[i] = NativeWords<kOrder>(pair.even);
      groups.words_[i + 1] = NativeWords<kOrder>(pair.odd);
    }
    const std::size_t last = kGroupWords - 1;
    groups.words_[last] = NativeWords<kOrder>(GatherPixel(src + last * 4, runBytes));
    return groups;
  }

  /// The groups of 24-bit values, each two neighbouring samples, the first in the lower bits.
  static TwelveBitGroups Join(const simd::Vector (&values)[kGroupSamples / 2]) {
    TwelveBitGroups groups;
#pragma GCC unroll 3
    for (std::size_t i = 0; i < 3; ++i) {
      const simd::Vector* value = values + i * 4;
      simd::Vector* word = groups.words_ + i * 3;
      word[0] = _mm_or_si128(value[0], _mm_slli_epi32(value[1], 24));
      word[1] = _mm_or_si128(_mm_srli_epi32(value[1], 8), _mm_slli_epi32(value[2], 16));
      word[2] = _mm_or_si128(_mm_srli_epi32(value[2], 16), _mm_slli_epi32(value[3], 8));
    }
    return groups;
  }

  /// Writes one group of each run.
  void Scatter(std::uint8_t* dst, std::size_t runBytes) const {
#pragma GCC unroll 4
    for (std::size_t i = 0; i + 1 < kGroupWords; i += 2) {
      ScatterPixels(dst + i * 4, runBytes, NativeWords<kOrder>(words_[i]),
                    NativeWords<kOrder>(words_[i + 1]));
    }
    const std::size_t last = kGroupWords - 1;
    ScatterPixel(dst + last * 4, runBytes, NativeWords<kOrder>(words_[last]));
  }

  /// Sample `n` of the groups, in double words.
  simd::Vector Sample(std::size_t n) const {
    const std::size_t bit = n * kSampleBits;
    const std::size_t word = bit / 32;
    const int shift = static_cast<int>(bit % 32);
    simd::Vector sample = _mm_srli_epi32(words_[word], shift);
    if (shift + kSampleBits > 32) {
      sample = _mm_or_si128(sample, _mm_slli_epi32(words_[word + 1], 32 - shift));
    }
    if (shift + kSampleBits == 32) return sample;
    return _mm_and_si128(sample, simd::DoubleWords(kSampleMax));
  }

 private:
  simd::Vector words_[kGroupWords];
};

}  // namespace mixdecks
