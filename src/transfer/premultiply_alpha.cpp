#include "transfer/premultiply_alpha.h"

#include <emmintrin.h>

#include <cstring>

#include "transfer/image_size.h"
#include "transfer/service_contract.h"

namespace mixdecks {
namespace {

// Video range of 10-bit samples. The factors and their order are what receivers' reference frames
// were made with: another order rounds differently.
constexpr double kBlack = 64;
constexpr double kLumaSpan = 876;
constexpr double kChromaSpan = 896;
constexpr int kLowestSample = 64;
constexpr int kHighestLuma = 940;
constexpr int kHighestChroma = 960;

constexpr int kAlphaShift = 20;
constexpr int kChromaShift = 10;
constexpr int kSampleMask = 0x3FF;

constexpr std::size_t kPairBytes = 2 * kImageBytesPerPixel;

__m128d Subtract(__m128d value, double number) {
  return _mm_sub_pd(value, _mm_set1_pd(number));
}
__m128d Add(__m128d value, double number) {
  return _mm_add_pd(value, _mm_set1_pd(number));
}
__m128d Multiply(__m128d value, double number) {
  return _mm_mul_pd(value, _mm_set1_pd(number));
}
__m128d Divide(__m128d value, double number) {
  return _mm_div_pd(value, _mm_set1_pd(number));
}

/// Swaps the bytes of the low two 32-bit words.
__m128i SwapBytes(__m128i words) {
  const __m128i swapped = _mm_or_si128(_mm_slli_epi16(words, 8), _mm_srli_epi16(words, 8));
  return _mm_shufflelo_epi16(swapped, _MM_SHUFFLE(2, 3, 0, 1));
}

/// The two numbers cut to integers between the bounds. They stay well within 16 bits. A negative
/// integer counts as a huge one and ends at the upper bound.
__m128i ToSamples(__m128d values, int highest) {
  const __m128i whole = _mm_cvttpd_epi32(values);
  const __m128i upper = _mm_set1_epi32(highest);
  const __m128i negative = _mm_srai_epi32(whole, 31);
  const __m128i raised = _mm_or_si128(_mm_andnot_si128(negative, whole),  //
                                      _mm_and_si128(negative, upper));
  return _mm_min_epi16(_mm_max_epi16(raised, _mm_set1_epi32(kLowestSample)), upper);
}

__m128i PremultiplyLuma(__m128i samples, __m128d alpha) {
  __m128d y = Divide(Subtract(_mm_cvtepi32_pd(samples), kBlack), kLumaSpan);
  y = Multiply(_mm_mul_pd(y, alpha), kLumaSpan);
  return ToSamples(Add(Add(y, kBlack), 0.5), kHighestLuma);
}

__m128i PremultiplyChroma(__m128i samples, __m128d alpha) {
  __m128d c = Divide(Subtract(_mm_cvtepi32_pd(samples), kBlack), kChromaSpan);
  c = Add(_mm_mul_pd(Subtract(c, 0.5), alpha), 0.5);
  return ToSamples(Add(Add(Multiply(c, kChromaSpan), kBlack), 0.5), kHighestChroma);
}

/// Premultiplies the pair in the low two words.
__m128i PremultiplyPair(__m128i words) {
  const __m128i mask = _mm_set1_epi32(kSampleMask);
  const __m128i alphas = _mm_srli_epi32(words, kAlphaShift);
  const __m128d alpha = Divide(Subtract(_mm_cvtepi32_pd(alphas), kBlack), kLumaSpan);
  const __m128i luma = PremultiplyLuma(_mm_and_si128(words, mask), alpha);
  const __m128i chroma = PremultiplyChroma(_mm_and_si128(_mm_srli_epi32(words, kChromaShift), mask),
                                           _mm_unpacklo_pd(alpha, alpha));
  return _mm_or_si128(_mm_or_si128(_mm_slli_epi32(alphas, kAlphaShift), luma),
                      _mm_slli_epi32(chroma, kChromaShift));
}

void PremultiplyPairAt(std::uint8_t* pixels) {
  const __m128i words = SwapBytes(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels)));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(pixels), SwapBytes(PremultiplyPair(words)));
}

}  // namespace

TransferError PremultiplyAlpha(std::uint8_t* image, std::int32_t width, std::int32_t height,
                               std::uint32_t format, bool premultiply) noexcept {
  if (format != kFrameFormatYuva) return TransferError::kUnknown;
  if (!premultiply) return TransferError::kNone;
  const std::size_t count = PixelCount(width, height);
  const std::size_t pairedBytes = count / 2 * kPairBytes;
  for (std::size_t i = 0; i < pairedBytes; i += kPairBytes)
    PremultiplyPairAt(image + i);
  if (count % 2 != 0) {
    std::uint8_t last[kPairBytes] = {};
    std::memcpy(last, image + pairedBytes, kImageBytesPerPixel);
    PremultiplyPairAt(last);
    std::memcpy(image + pairedBytes, last, kImageBytesPerPixel);
  }
  return TransferError::kNone;
}

}  // namespace mixdecks
