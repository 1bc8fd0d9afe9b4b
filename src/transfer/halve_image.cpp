#include "transfer/halve_image.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstddef>

#include "transfer/image_size.h"

namespace mixdecks {
namespace {

constexpr std::size_t kBlockBytes = 16;

__m128i Load(const std::uint8_t* pixels) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
}

/// Four pixels of an upper and a lower row become two, in the low half.
__m128i HalveBlock(__m128i upper, __m128i lower) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i left = _mm_add_epi16(_mm_unpacklo_epi8(upper, zero),  //
                                     _mm_unpacklo_epi8(lower, zero));
  const __m128i right = _mm_add_epi16(_mm_unpackhi_epi8(upper, zero),  //
                                      _mm_unpackhi_epi8(lower, zero));
  const __m128i sums =
      _mm_add_epi16(_mm_unpacklo_epi64(left, right), _mm_unpackhi_epi64(left, right));
  return _mm_packus_epi16(_mm_srli_epi16(_mm_add_epi16(sums, _mm_set1_epi16(2)), 2), zero);
}

/// Halves one pair of rows. `halved` may lie on the rows' beginning: what is written never
/// overtakes what is read.
void HalveRows(std::uint8_t* halved, const std::uint8_t* upper, const std::uint8_t* lower,
               std::size_t rowBytes) {
  std::size_t done = 0;
  for (; done + kBlockBytes <= rowBytes; done += kBlockBytes) {
    const __m128i block = HalveBlock(Load(upper + done), Load(lower + done));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(halved + done / 2), block);
  }
  for (; done < rowBytes; done += 2 * kImageBytesPerPixel) {
    const std::size_t partner =
        std::min(done + kImageBytesPerPixel, rowBytes - kImageBytesPerPixel);
    for (std::size_t lane = 0; lane < kImageBytesPerPixel; ++lane) {
      const int sum = upper[done + lane] + upper[partner + lane] +  //
                      lower[done + lane] + lower[partner + lane];
      halved[done / 2 + lane] = static_cast<std::uint8_t>((sum + 2) >> 2);
    }
  }
}

}  // namespace

void HalveImage(std::uint8_t* pixels, std::int32_t& width, std::int32_t& height) noexcept {
  const std::size_t rowBytes = ImageBytes(width, 1);
  const auto rows = static_cast<std::size_t>(height);
  width = (width + 1) / 2;
  height = (height + 1) / 2;
  const std::size_t halvedRowBytes = ImageBytes(width, 1);
  for (std::size_t row = 0; row < rows; row += 2) {
    const std::uint8_t* upper = pixels + row * rowBytes;
    const std::uint8_t* lower = pixels + std::min(row + 1, rows - 1) * rowBytes;
    HalveRows(pixels + row / 2 * halvedRowBytes, upper, lower, rowBytes);
  }
}

}  // namespace mixdecks
