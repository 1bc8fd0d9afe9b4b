// `RGB3`, three bytes a pixel without padding: how four-byte pixels are made of it and closed up to
// it again.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/simd.h"

namespace mixdecks {

/// Four pixels R G B x from twelve bytes; x is of no use.
inline simd::Vector LoadRgb3(const std::uint8_t* src) {
  const simd::Vector first = simd::LoadQuarter(src);
  const simd::Vector second = simd::LoadQuarter(src + 3);
  const simd::Vector third = simd::LoadQuarter(src + 6);
  // The fourth is read from its own last byte backwards: nothing behind it may be touched.
  const simd::Vector fourth = _mm_srli_epi32(simd::LoadQuarter(src + 8), 8);
  return simd::LowHalves(_mm_unpacklo_epi32(first, second), _mm_unpacklo_epi32(third, fourth));
}

/// [R G B x R G B x] to [R G B R G B 0 0] in each half.
inline simd::Vector CloseRgb3Gaps(simd::Vector pixels) {
  const simd::Vector first = _mm_and_si128(pixels, _mm_set1_epi64x(0x000000FFFFFF));
  const simd::Vector second =
      _mm_and_si128(_mm_srli_epi64(pixels, 8), _mm_set1_epi64x(0xFFFFFF000000));
  return _mm_or_si128(first, second);
}

/// Writes pairs of closed-up pixels, six bytes each, in rising order. A pair goes out as eight
/// bytes, which is fastest: the next one puts right what it wrote too much, and the last one of a
/// block stores its six alone.
class Rgb3PairWriter {
 public:
  explicit Rgb3PairWriter(std::uint8_t* dst) : dst_(dst) {}

  void WriteLow(simd::Vector pairs) {
    simd::StoreLowHalf(dst_, pairs);
    dst_ += kPairBytes;
  }

  void WriteHigh(simd::Vector pairs, bool last) {
    if (last) {
      simd::StoreHighSixBytes(dst_, pairs);
    } else {
      simd::StoreHighHalf(dst_, pairs);
    }
    dst_ += kPairBytes;
  }

 private:
  static constexpr std::size_t kPairBytes = 6;

  std::uint8_t* dst_;
};

}  // namespace mixdecks
