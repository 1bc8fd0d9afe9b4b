// `v210`: six pixels are four little-endian words of three 10-bit samples, the first in the lowest
// bits. The samples run Cb Y Cr Y through the group as they do in `2vuy`.
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

struct V210Source {
  static constexpr int kDepth = 10;
  static constexpr int kRun = 6;
  static constexpr RowUnit kRow = kV210Group;
  static constexpr std::uint32_t kLookAhead = 1;

  static std::array<YuvSite, kRun / 2> Read(const std::uint8_t* src) {
    const Samples s = ReadSamples(src);
    const simd::Vector none = _mm_setzero_si128();
    return {{
        {simd::LowHalves(s.cb0y1, s.cr0y2), simd::OuterHalves(s.y0cb1, s.cb0y1), none},
        {simd::InnerHalves(s.y0cb1, s.cr1y4), simd::InnerHalves(s.cr0y2, s.y3cr2), none},
        {simd::OuterHalves(s.cb2y5, s.y3cr2), simd::HighHalves(s.cr1y4, s.cb2y5), none},
    }};
  }

  static ChromaPair NextChroma(const std::uint8_t* src) { return {Sample(src, 0), Sample(src, 2)}; }

  static void RepeatLastPair(std::uint8_t* row, std::uint32_t pixels) {
    const std::size_t last = std::size_t{pixels - 1} / 2 * kPairSamples;
    for (const std::size_t chroma : {last, last + 2}) {
      SetSample(row, chroma + kPairSamples, Sample(row, chroma));
    }
  }

 private:
  static constexpr std::size_t kPairSamples = 4;

  // The samples of one group of each run, by their place in the four words:
  //
  //   word      0    1    2    3
  //   first    Cb0   Y1  Cr1   Y4
  //   second    Y0  Cb1   Y3  Cr2
  //   third    Cr0   Y2  Cb2   Y5
  //
  // Every vector holds two of them, [a × 4 | b × 4].
  struct Samples {
    simd::Vector cb0y1, cr1y4;
    simd::Vector y0cb1, y3cr2;
    simd::Vector cr0y2, cb2y5;
  };

  static Samples ReadSamples(const std::uint8_t* src) {
    const QuadPair words01 = GatherQuads(src, kRow.bytes);
    const QuadPair words23 = GatherQuads(src + 8, kRow.bytes);
    const simd::Vector low01 = simd::LowHalves(words01.even, words01.odd);
    const simd::Vector high01 = simd::HighHalves(words01.even, words01.odd);
    const simd::Vector low23 = simd::LowHalves(words23.even, words23.odd);
    const simd::Vector high23 = simd::HighHalves(words23.even, words23.odd);
    return {.cb0y1 = First(low01),
            .cr1y4 = First(low23),
            .y0cb1 = Second(low01, high01),
            .y3cr2 = Second(low23, high23),
            .cr0y2 = Third(high01),
            .cb2y5 = Third(high23)};
  }

  static simd::Vector First(simd::Vector low) { return _mm_and_si128(low, simd::Words(0x03FF)); }

  static simd::Vector Second(simd::Vector low, simd::Vector high) {
    const simd::Vector top = _mm_and_si128(_mm_slli_epi16(high, 6), simd::Words(0x03C0));
    return _mm_or_si128(top, _mm_srli_epi16(low, 10));
  }

  static simd::Vector Third(simd::Vector high) {
    return _mm_srli_epi16(_mm_slli_epi16(high, 2), 6);
  }

  // Sample `n` of a row, counted through its words.
  static int Sample(const std::uint8_t* row, std::size_t n) {
    return static_cast<int>(Word(row, n) >> Shift(n) & 0x3FF);
  }

  static void SetSample(std::uint8_t* row, std::size_t n, int value) {
    const std::uint32_t cleared = Word(row, n) & ~(std::uint32_t{0x3FF} << Shift(n));
    const std::uint32_t word = cleared | static_cast<std::uint32_t>(value) << Shift(n);
    std::memcpy(row + n / 3 * 4, &word, sizeof(word));
  }

  static std::uint32_t Word(const std::uint8_t* row, std::size_t n) {
    std::uint32_t word;
    std::memcpy(&word, row + n / 3 * 4, sizeof(word));
    return word;
  }

  static int Shift(std::size_t n) { return static_cast<int>(n % 3) * 10; }
};

struct V210Destination {
  static constexpr int kDepth = 10;
  static constexpr int kRun = 6;
  static constexpr RowUnit kRow = kV210Group;

  template <class Transform, class Block>
  static void Write(std::uint8_t* dst, const Block& block) {
    constexpr ForwardMatrix m = Transform::kMatrix;
    const auto& pixel = block.pixel;
    const auto& site = block.site;
    WriteWords<Transform>(dst,                                               //
                          Transform::Samples(site[0], m.cb, pixel[1], m.y),  //
                          Transform::Samples(pixel[0], m.y, site[1], m.cb),  //
                          Transform::Samples(site[0], m.cr, pixel[2], m.y));
    WriteWords<Transform>(dst + 8,                                           //
                          Transform::Samples(site[1], m.cr, pixel[4], m.y),  //
                          Transform::Samples(pixel[3], m.y, site[2], m.cr),  //
                          Transform::Samples(site[2], m.cb, pixel[5], m.y));
  }

  /// Stores finished samples of one group of each run: of its three sites the chroma,
  /// [Cb × 4 | Cr × 4], and the luma, [even × 4 | odd × 4].
  static void StoreSites(std::uint8_t* dst, std::size_t runBytes, const simd::Vector (&chroma)[3],
                         const simd::Vector (&luma)[3]) {
    StoreWords(dst, runBytes, simd::OuterHalves(chroma[0], luma[0]),
               simd::LowHalves(luma[0], chroma[1]), simd::InnerHalves(chroma[0], luma[1]));
    StoreWords(dst + 8, runBytes, simd::InnerHalves(chroma[1], luma[2]),
               simd::HighHalves(luma[1], chroma[2]), simd::OuterHalves(chroma[2], luma[2]));
  }

 private:
  // First and third samples are chroma in word a and luma in word b, second ones the other way.
  template <class Transform>
  static void WriteWords(std::uint8_t* dst, simd::Vector first, simd::Vector second,
                         simd::Vector third) {
    constexpr int y = LumaOffset(Transform::Source::kRange, kDepth);
    constexpr int c = ChromaOffset(kDepth);
    if constexpr (Transform::kClamps) {
      first = AddAndClamp(first, simd::WordHalves(c, y));
      second = AddAndClamp(second, simd::WordHalves(y, c));
      third = AddAndClamp(third, simd::WordHalves(c, y));
    }
    simd::Vector low = _mm_add_epi16(first, _mm_slli_epi16(second, 10));
    simd::Vector high = _mm_add_epi16(_mm_srai_epi16(second, 6), _mm_slli_epi16(third, 4));
    if constexpr (!Transform::kClamps) {
      // Every offset is a multiple of 64, so the second's touches the upper half alone, and all of
      // them can be added once to the finished halves.
      low = _mm_add_epi16(low, simd::WordHalves(c, y));
      high = _mm_add_epi16(high, simd::WordHalves(y / 64 + (c << 4), c / 64 + (y << 4)));
    }
    StoreHalves(dst, kRow.bytes, low, high);
  }

  static void StoreWords(std::uint8_t* dst, std::size_t runBytes, simd::Vector first,
                         simd::Vector second, simd::Vector third) {
    StoreHalves(dst, runBytes, _mm_or_si128(first, _mm_slli_epi16(second, 10)),
                _mm_or_si128(_mm_srli_epi16(second, 6), _mm_slli_epi16(third, 4)));
  }

  // Two words of each run from their halves, [word a × 4 | word b × 4].
  static void StoreHalves(std::uint8_t* dst, std::size_t runBytes, simd::Vector low,
                          simd::Vector high) {
    ScatterPixels(dst, runBytes, _mm_unpacklo_epi16(low, high), _mm_unpackhi_epi16(low, high));
  }

  // Saturation at the top of a signed word, then at the bottom of an unsigned one.
  static simd::Vector AddAndClamp(simd::Vector samples, simd::Vector offsets) {
    const simd::Vector room = simd::Words(0x7FFF - 1023);
    const simd::Vector raised = _mm_adds_epi16(samples, _mm_add_epi16(offsets, room));
    return _mm_subs_epu16(raised, room);
  }
};

}  // namespace mixdecks
