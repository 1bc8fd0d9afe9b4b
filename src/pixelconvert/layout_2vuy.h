// `2vuy`: two pixels are four bytes, Cb Y0 Cr Y1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "pixelconvert/colour_matrix.h"
#include "pixelconvert/four_runs.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/simd.h"
#include "pixelconvert/yuv_site.h"

namespace mixdecks {

struct TwoVuySource {
  static constexpr int kDepth = 8;
  static constexpr int kRun = 4;
  static constexpr RowUnit kRow = k2vuyRead;
  static constexpr std::uint32_t kLookAhead = 2;

  static std::array<YuvSite, kRun / 2> Read(const std::uint8_t* src) {
    const QuadPair pairs = GatherQuads(src, kRow.RowBytes(kRun));
    return {Site(pairs.even), Site(pairs.odd)};
  }

  static ChromaPair NextChroma(const std::uint8_t* src) { return {src[0], src[2]}; }

  static void RepeatLastPair(std::uint8_t* row, std::uint32_t pixels) {
    std::uint8_t* end = row + kRow.RowBytes(pixels);
    std::memcpy(end, end - kPairBytes, kPairBytes);
  }

 private:
  static constexpr std::size_t kPairBytes = 4;

  static YuvSite Site(simd::Vector quad) {
    return {.chroma = _mm_and_si128(quad, simd::Words(0x00FF)),
            .luma = _mm_srli_epi16(quad, 8),
            .alpha = _mm_setzero_si128()};
  }
};

struct TwoVuyDestination {
  static constexpr int kDepth = 8;
  static constexpr int kRun = 4;
  static constexpr RowUnit kRow = k2vuyWritten;

  // The saturating packs are the clamp: chroma is cut to its span around zero, luma has no negative
  // values before its offset.
  template <class Transform, class Block>
  static void Write(std::uint8_t* dst, const Block& block) {
    constexpr ForwardMatrix matrix = Transform::kMatrix;
    constexpr int lumaOffset = LumaOffset(Transform::Source::kRange, kDepth);
    const simd::Vector cb = Transform::Samples(block.site[0], block.site[1], matrix.cb);
    const simd::Vector cr = Transform::Samples(block.site[0], block.site[1], matrix.cr);
    const simd::Vector even = Transform::Samples(block.pixel[0], block.pixel[2], matrix.y);
    const simd::Vector odd = Transform::Samples(block.pixel[1], block.pixel[3], matrix.y);
    const simd::Vector chroma =
        _mm_xor_si128(_mm_packs_epi16(cb, cr), simd::Bytes(ChromaOffset(kDepth)));
    const simd::Vector luma = _mm_adds_epu8(_mm_packus_epi16(even, odd), simd::Bytes(lumaOffset));
    const simd::Vector first = _mm_unpacklo_epi8(chroma, luma);   // [Cb Y0] × 8
    const simd::Vector second = _mm_unpackhi_epi8(chroma, luma);  // [Cr Y1] × 8
    const simd::Vector pairs0 = _mm_unpacklo_epi16(first, second);
    const simd::Vector pairs1 = _mm_unpackhi_epi16(first, second);
    simd::Store(dst, _mm_unpacklo_epi32(pairs0, pairs1));
    simd::Store(dst + 16, _mm_unpackhi_epi32(pairs0, pairs1));
  }
};

}  // namespace mixdecks
