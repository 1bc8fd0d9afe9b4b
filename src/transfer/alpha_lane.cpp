#include "transfer/alpha_lane.h"

#include <emmintrin.h>

#include <cstring>

namespace mixdecks {
namespace {

constexpr std::size_t kBytesPerPixel = 4;
constexpr std::size_t kPixelsPerBlock = 4;
constexpr int kColourMask = 0x00FFFFFF;

__m128i Load(const std::uint8_t* pixels) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
}

void Store(std::uint8_t* pixels, __m128i block) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), block);
}

/// Replaces four pixels at a time by `change` of them and of the same four of `other`; what is
/// left over goes through a block of its own.
template <typename Change>
void ChangePixels(std::uint8_t* pixels, const std::uint8_t* other, std::size_t count,
                  Change change) {
  constexpr std::size_t kBlockBytes = kPixelsPerBlock * kBytesPerPixel;
  const std::size_t blocks = count / kPixelsPerBlock;
  for (std::size_t i = 0; i < blocks * kBlockBytes; i += kBlockBytes) {
    Store(pixels + i, change(Load(pixels + i), Load(other + i)));
  }
  const std::size_t rest = count % kPixelsPerBlock * kBytesPerPixel;
  if (rest == 0) return;
  std::uint8_t last[kBlockBytes] = {};
  std::uint8_t lastOther[kBlockBytes] = {};
  std::memcpy(last, pixels + blocks * kBlockBytes, rest);
  std::memcpy(lastOther, other + blocks * kBlockBytes, rest);
  Store(last, change(Load(last), Load(lastOther)));
  std::memcpy(pixels + blocks * kBlockBytes, last, rest);
}

}  // namespace

void SetAlphaOpaque(std::uint8_t* pixels, std::size_t count) noexcept {
  const __m128i opaque = _mm_set1_epi32(~kColourMask);
  ChangePixels(pixels, pixels, count,
               [=](__m128i block, __m128i) { return _mm_or_si128(block, opaque); });
}

void KeepAlphaAsBlue(std::uint8_t* pixels, std::size_t count) noexcept {
  ChangePixels(pixels, pixels, count,
               [](__m128i block, __m128i) { return _mm_srli_epi32(block, 24); });
}

void SetAlphaFromBlue(std::uint8_t* pixels, const std::uint8_t* lane, std::size_t count) noexcept {
  const __m128i colour = _mm_set1_epi32(kColourMask);
  ChangePixels(pixels, lane, count, [=](__m128i block, __m128i alpha) {
    return _mm_or_si128(_mm_and_si128(block, colour), _mm_slli_epi32(alpha, 24));
  });
}

}  // namespace mixdecks
