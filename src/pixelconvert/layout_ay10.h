// `ay10`: big-endian words of alpha, chroma and luma, Cb at even pixels, Cr at odd.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "pixelconvert/colour_matrix.h"
#include "pixelconvert/four_runs.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/sample_range.h"
#include "pixelconvert/simd.h"
#include "pixelconvert/yuv_site.h"

namespace mixdecks {

struct Ay10Source {
  static constexpr int kDepth = 10;
  static constexpr int kRun = 4;
  static constexpr RowUnit kRow = kAy10Block;
  static constexpr std::uint32_t kLookAhead = 1;

  static std::array<YuvSite, kRun / 2> Read(const std::uint8_t* src) {
    return {Site(src), Site(src + kPairBytes)};
  }

  static ChromaPair NextChroma(const std::uint8_t* src) { return {Chroma(src), Chroma(src + 4)}; }

  static void RepeatLastPair(std::uint8_t* row, std::uint32_t pixels) {
    std::uint8_t* end = row + std::size_t{pixels} * 4;
    std::memcpy(end, end - kPairBytes, kPairBytes);
  }

 private:
  static constexpr std::size_t kPairBytes = 8;

  // The four bytes of a word in memory order make two big-endian halves:
  // alpha << 4 | chroma >> 6, and chroma << 10 | luma.
  static YuvSite Site(const std::uint8_t* src) {
    const QuadPair words = GatherQuads(src, kRun * 4);
    const simd::Vector high = simd::SwapWordBytes(simd::LowHalves(words.even, words.odd));
    const simd::Vector low = simd::SwapWordBytes(simd::HighHalves(words.even, words.odd));
    const simd::Vector chromaTop = _mm_and_si128(_mm_slli_epi16(high, 6), simd::Words(0x03C0));
    return {
        .chroma = _mm_or_si128(chromaTop, _mm_srli_epi16(low, 10)),
        .luma = _mm_and_si128(low, simd::Words(0x03FF)),
        .alpha = _mm_and_si128(_mm_slli_epi16(high, 2), simd::Words(0xFFC0)),
    };
  }

  static int Chroma(const std::uint8_t* word) { return (word[1] & 0x0F) << 6 | word[2] >> 2; }
};

struct Ay10Destination {
  static constexpr int kDepth = 10;
  static constexpr int kRun = 4;
  static constexpr RowUnit kRow = kAy10Block;

  template <class Transform, class Block>
  static void Write(std::uint8_t* dst, const Block& block) {
    constexpr ForwardMatrix matrix = Transform::kMatrix;
    const simd::Vector cb = Transform::Samples(block.site[0], block.site[1], matrix.cb);
    const simd::Vector cr = Transform::Samples(block.site[0], block.site[1], matrix.cr);
    const Words even = Compose<Transform>(block.pixel[0], block.pixel[2], cb);
    const Words odd = Compose<Transform>(block.pixel[1], block.pixel[3], cr);
    ScatterPixels(dst, kRun * 4, _mm_unpacklo_epi16(even.high, even.low),
                  _mm_unpacklo_epi16(odd.high, odd.low));
    ScatterPixels(dst + 8, kRun * 4, _mm_unpackhi_epi16(even.high, even.low),
                  _mm_unpackhi_epi16(odd.high, odd.low));
  }

 private:
  // The halves of eight output words, each already with its bytes in memory order.
  struct Words {
    simd::Vector high;
    simd::Vector low;
  };

  // High half alpha << 4 | chroma >> 6, low half chroma << 10 | luma. No clamp can act on 8-bit
  // sources, and every offset is a multiple of 64, so they are added once to the finished halves.
  template <class Transform, class Quad>
  static Words Compose(const Quad& a, const Quad& b, simd::Vector chroma) {
    using Source = typename Transform::Source;
    static_assert(!Transform::kClamps);
    constexpr int highOffset = (kVideoBlack10 << 4) + ChromaOffset(kDepth) / 64;
    constexpr int lowOffset = LumaOffset(Source::kRange, kDepth);
    const simd::Vector luma = Transform::Samples(a, b, Transform::kMatrix.y);
    const simd::Vector alpha = AlphaToVideoTimes16(Source::AlphaTimes256(a, b));
    const simd::Vector high = _mm_add_epi16(alpha, _mm_srai_epi16(chroma, 6));
    const simd::Vector low = _mm_add_epi16(luma, _mm_slli_epi16(chroma, 10));
    return {simd::SwapWordBytes(_mm_add_epi16(high, simd::Words(highOffset))),
            simd::SwapWordBytes(_mm_add_epi16(low, simd::Words(lowOffset)))};
  }
};

}  // namespace mixdecks
