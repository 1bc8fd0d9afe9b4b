#include "host/sample_lanes.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstring>

namespace mixdecks {
namespace {

constexpr std::size_t kPixelBytes = 4;
constexpr std::size_t kVectorBytes = 16;
constexpr std::size_t kVectorPixels = kVectorBytes / kPixelBytes;

__m128i Load(const void* at) noexcept {
  return _mm_loadu_si128(static_cast<const __m128i*>(at));
}

void Store(std::uint8_t* at, __m128i value) noexcept {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(at), value);
}

/// 0 to 32768 becomes 0 to 255: doubled, lowered to 65535, divided by 257.
std::uint32_t Narrow(std::uint16_t sample) noexcept {
  return std::min<std::uint32_t>(2u * sample, 65535) / 257;
}

/// The same for eight samples. For t up to 65535, t / 257 is (t - (t >> 8)) >> 8.
__m128i Narrow(__m128i samples) noexcept {
  const __m128i doubled = _mm_adds_epu16(samples, samples);
  return _mm_srli_epi16(_mm_sub_epi16(doubled, _mm_srli_epi16(doubled, 8)), 8);
}

/// Replaces one lane of four pixels by the low bytes of `words`.
class LaneMerge {
 public:
  explicit LaneMerge(std::size_t lane) noexcept
      : shift_(_mm_cvtsi32_si128(static_cast<int>(8 * lane))),
        others_(_mm_andnot_si128(_mm_sll_epi32(_mm_set1_epi32(0xFF), shift_), _mm_set1_epi32(-1))) {
  }

  void Store(std::uint8_t* pixels, __m128i words) const noexcept {
    mixdecks::Store(
        pixels, _mm_or_si128(_mm_and_si128(Load(pixels), others_), _mm_sll_epi32(words, shift_)));
  }

 private:
  __m128i shift_;
  __m128i others_;
};

}  // namespace

void SpreadSamples8(const std::uint8_t* samples, std::size_t count, std::uint8_t* image,
                    std::size_t lane) noexcept {
  const __m128i zero = _mm_setzero_si128();
  const LaneMerge merge(lane);
  std::size_t i = 0;
  for (; i + kVectorBytes <= count; i += kVectorBytes) {
    const __m128i bytes = Load(samples + i);
    const __m128i low = _mm_unpacklo_epi8(bytes, zero);
    const __m128i high = _mm_unpackhi_epi8(bytes, zero);
    std::uint8_t* pixels = image + kPixelBytes * i;
    merge.Store(pixels, _mm_unpacklo_epi16(low, zero));
    merge.Store(pixels + kVectorBytes, _mm_unpackhi_epi16(low, zero));
    merge.Store(pixels + 2 * kVectorBytes, _mm_unpacklo_epi16(high, zero));
    merge.Store(pixels + 3 * kVectorBytes, _mm_unpackhi_epi16(high, zero));
  }
  for (; i < count; ++i) {
    image[kPixelBytes * i + lane] = samples[i];
  }
}

void SpreadSamples16(const std::uint16_t* samples, std::size_t count, std::uint8_t* image,
                     std::size_t lane) noexcept {
  if (count == 0) return;
  const __m128i zero = _mm_setzero_si128();
  std::uint8_t* words = image + lane;
  // The last pixel's word reaches past the image's end, so it stays out of the whole stores.
  const std::size_t last = count - 1;
  std::size_t i = 0;
  for (; i + 2 * kVectorPixels <= last; i += 2 * kVectorPixels) {
    const __m128i values = Narrow(Load(samples + i));
    Store(words + kPixelBytes * i, _mm_unpacklo_epi16(values, zero));
    Store(words + kPixelBytes * i + kVectorBytes, _mm_unpackhi_epi16(values, zero));
  }
  for (; i <= last; ++i) {
    const std::uint32_t value = Narrow(samples[i]);
    std::memcpy(words + kPixelBytes * i, &value, i < last ? kPixelBytes : kPixelBytes - lane);
  }
}

void ClearOtherLanes(std::uint8_t* image, std::size_t count, std::uint32_t keptLanes) noexcept {
  for (std::size_t i = 0; i < count; ++i) {
    std::uint8_t* pixel = image + kPixelBytes * i;
    std::uint32_t word = 0;
    std::memcpy(&word, pixel, kPixelBytes);
    word &= keptLanes;
    std::memcpy(pixel, &word, kPixelBytes);
  }
}

}  // namespace mixdecks
