// RGB to RGB, between all formats of whole words and `RGB3`.
//
// Three families cover them: fields that only move, full range cut down to video range, and video
// range stretched to full. Where the range changes a pixel is taken apart into words, blue with red
// in one vector and green in another, every sample at the scale of 64 to the 10-bit unit: a byte in
// the upper half of its word, or ten bits from the top.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/layout_rgb3.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/pixel_word.h"
#include "pixelconvert/sample_range.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

template <class Layout>
struct PixelMemory {
  static constexpr RowUnit kRow = kFourBytePixel;

  static simd::Vector Load(const std::uint8_t* src) {
    return NativeWords<Layout::kWord.order>(simd::Load(src));
  }

  template <std::size_t kVectors>
  static void Store(std::uint8_t* dst, const simd::Vector (&pixels)[kVectors]) {
#pragma GCC unroll 4
    for (std::size_t i = 0; i < kVectors; ++i) {
      simd::Store(dst + i * 16, NativeWords<Layout::kWord.order>(pixels[i]));
    }
  }
};

template <>
struct PixelMemory<layout::Rgb3> {
  static constexpr RowUnit kRow = kThreeBytePixel;

  static simd::Vector Load(const std::uint8_t* src) { return LoadRgb3(src); }

  // Pairs of pixels go out as eight bytes in rising order, so that each store puts right what the
  // one before it wrote too much; the last one stores its six.
  template <std::size_t kVectors>
  static void Store(std::uint8_t* dst, const simd::Vector (&pixels)[kVectors]) {
#pragma GCC unroll 4
    for (std::size_t i = 0; i < kVectors; ++i) {
      const simd::Vector pairs = CloseRgb3Gaps(pixels[i]);
      simd::StoreLowHalf(dst, pairs);
      dst += kRgb3PairBytes;
      if (i + 1 < kVectors) {
        simd::StoreHighHalf(dst, pairs);
      } else {
        simd::StoreHighSixBytes(dst, pairs);
      }
      dst += kRgb3PairBytes;
    }
  }
};

/// The kernel of all three families: `Rule::Convert` makes four destination words of four source
/// words.
template <class Source, class Destination, class Rule>
struct RgbToRgb {
  static constexpr std::size_t kVectors = 4;
  static constexpr std::uint32_t kBlockPixels = kVectors * 4;
  static constexpr RowUnit kSourceRow = PixelMemory<Source>::kRow;
  static constexpr RowUnit kDestinationRow = PixelMemory<Destination>::kRow;
  static constexpr std::size_t kSourceBlock = kSourceRow.RowBytes(kBlockPixels);
  static constexpr std::size_t kDestinationBlock = kDestinationRow.RowBytes(kBlockPixels);
  static constexpr std::uint32_t kLookAhead = 0;

  struct Row {
    void Begin(const std::uint8_t*) {}

    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      simd::Vector pixels[kVectors];
#pragma GCC unroll 4
      for (std::size_t i = 0; i < kVectors; ++i) {
        pixels[i] = Rule::Convert(PixelMemory<Source>::Load(src + i * kSourceBlock / kVectors));
      }
      PixelMemory<Destination>::Store(dst, pixels);
    }

    void Finish(std::uint8_t*, std::uint32_t, std::uint32_t) {}
  };
};

/// Red and blue are the outer channels of a pixel, in either order: one in each half of its word.
struct OuterFields {
  int lower;
  int upper;  ///< counted from the upper half's own lowest bit
};

constexpr OuterFields OuterFieldsOf(const PixelWord& word) {
  return word.red < word.blue ? OuterFields{word.red, word.blue - 16}
                              : OuterFields{word.blue, word.red - 16};
}

/// Whether the outer channels change places.
template <class Source, class Destination>
inline constexpr bool kOuterSwapped = (Source::kWord.red < Source::kWord.blue) !=
                                      (Destination::kWord.red < Destination::kWord.blue);

/// Fields that keep their range only move. Eight bits become ten with zeros below, ten become eight
/// without the two lowest: the tops of the fields meet.
template <class Source, class Destination>
struct FieldMove {
  static simd::Vector Convert(simd::Vector pixels) {
    constexpr std::uint32_t opaque = Destination::kWord.opaque;
    const simd::Vector moved = Move(pixels);
    return opaque == 0 ? moved : _mm_or_si128(moved, simd::DoubleWords(opaque));
  }

 private:
  static constexpr PixelWord kFrom = Source::kWord;
  static constexpr PixelWord kTo = Destination::kWord;
  static constexpr int kBits = kFrom.bits < kTo.bits ? kFrom.bits : kTo.bits;
  static constexpr int kFromTop = kFrom.bits - kBits;  // bits that stay behind
  static constexpr int kToTop = kTo.bits - kBits;      // bits that stay zero
  static constexpr std::uint32_t kField = (1u << kBits) - 1;

  static simd::Vector Move(simd::Vector pixels) {
    constexpr int distance = kTo.green - kFrom.green;
    if constexpr (kTo.red - kFrom.red == distance && kTo.blue - kFrom.blue == distance &&
                  kFrom.bits == kTo.bits) {
      constexpr std::uint32_t fields = kField << kTo.red | kField << kTo.green | kField << kTo.blue;
      return _mm_and_si128(simd::ShiftDoubleWords<distance>(pixels), simd::DoubleWords(fields));
    } else {
      return _mm_or_si128(MoveOuter(pixels), MoveGreen(pixels));
    }
  }

  static simd::Vector MoveGreen(simd::Vector pixels) {
    constexpr int from = kFrom.green + kFromTop;
    const simd::Vector green = _mm_and_si128(pixels, simd::DoubleWords(kField << from));
    return simd::ShiftDoubleWords<kTo.green + kToTop - from>(green);
  }

  static simd::Vector MoveOuter(simd::Vector pixels) {
    constexpr bool swapped = kOuterSwapped<Source, Destination>;
    constexpr OuterFields from = OuterFieldsOf(kFrom);
    constexpr OuterFields to = OuterFieldsOf(kTo);
    constexpr int lower = (swapped ? to.upper : to.lower) + kToTop - from.lower - kFromTop;
    constexpr int upper = (swapped ? to.lower : to.upper) + kToTop - from.upper - kFromTop;
    constexpr std::uint32_t fields =
        kField << (from.lower + kFromTop) | kField << (from.upper + kFromTop + 16);
    const simd::Vector moved =
        simd::ShiftWords<lower, upper>(_mm_and_si128(pixels, simd::DoubleWords(fields)));
    return swapped ? simd::SwapWords(moved) : moved;
  }
};

/// A pixel taken apart, every sample × 64.
struct SplitPixels {
  simd::Vector outer;  ///< the outer channels as [lower upper] words
  simd::Vector green;  ///< in the lower words, the upper ones zero
};

template <class Layout>
SplitPixels Split(simd::Vector pixels) {
  constexpr PixelWord word = Layout::kWord;
  constexpr OuterFields at = OuterFieldsOf(word);
  constexpr std::uint32_t field = (1u << word.bits) - 1;
  constexpr int top = 16 - word.bits;
  // What stands above the fields is shifted out; only what is below has to be cleared.
  constexpr bool clean = at.lower == 0 && at.upper == 0;
  constexpr std::uint32_t fields = field << at.lower | field << (at.upper + 16);
  const simd::Vector outer = clean ? pixels : _mm_and_si128(pixels, simd::DoubleWords(fields));
  const simd::Vector green = _mm_and_si128(pixels, simd::DoubleWords(field << word.green));
  return {simd::ShiftWords<top - at.lower, top - at.upper>(outer),
          simd::ShiftDoubleWords<top - word.green>(green)};
}

/// Puts samples of the destination's depth together. `kSwap` exchanges the outer channels.
template <class Layout, bool kSwap>
simd::Vector Join(SplitPixels samples) {
  constexpr PixelWord word = Layout::kWord;
  constexpr OuterFields at = OuterFieldsOf(word);
  const simd::Vector outer = kSwap ? simd::SwapWords(samples.outer) : samples.outer;
  const simd::Vector joined = _mm_or_si128(simd::ShiftWords<at.lower, at.upper>(outer),
                                           simd::ShiftDoubleWords<word.green>(samples.green));
  return word.opaque == 0 ? joined : _mm_or_si128(joined, simd::DoubleWords(word.opaque));
}

/// Full range of any depth to ten bits of video range.
template <class Source, class Destination>
struct FullToVideoRule {
  static simd::Vector Convert(simd::Vector pixels) {
    constexpr PixelWord to = Destination::kWord;
    constexpr std::uint32_t black = kVideoBlack10;
    const SplitPixels full = Split<Source>(pixels);
    const SplitPixels aboveBlack{FullToVideo(full.outer), FullToVideo(full.green)};
    // Black is added to all three fields at once: no sample reaches 1024.
    return _mm_add_epi32(Join<Destination, kOuterSwapped<Source, Destination>>(aboveBlack),
                         simd::DoubleWords(black << to.red | black << to.green | black << to.blue));
  }
};

/// Ten bits of video range to full range of the destination's depth.
template <class Source, class Destination>
struct VideoToFullRule {
  static simd::Vector Convert(simd::Vector pixels) {
    constexpr int bits = Destination::kWord.bits;
    const SplitPixels video = Split<Source>(pixels);
    return Join<Destination, kOuterSwapped<Source, Destination>>(
        {VideoToFull<bits>(video.outer), VideoToFull<bits>(video.green)});
  }
};

/// The 32-bit pixel turned round, which takes each of `32` and `BGRA` to the other, alpha and all.
struct ReverseRule {
  static simd::Vector Convert(simd::Vector pixels) { return simd::ReverseBytes(pixels); }
};

/// `R10B` or `R10A` as it stands in memory, with the two low bits of every pixel set.
struct OpaqueRule {
  static simd::Vector Convert(simd::Vector bigEndian) {
    return _mm_or_si128(bigEndian, simd::DoubleWords(layout::R10Alpha::kWord.opaque << 24));
  }
};

template <class Source, class Destination>
using MoveFields = RgbToRgb<Source, Destination, FieldMove<Source, Destination>>;

template <class Source, class Destination>
using CutToVideo = RgbToRgb<Source, Destination, FullToVideoRule<Source, Destination>>;

template <class Source, class Destination>
using StretchToFull = RgbToRgb<Source, Destination, VideoToFullRule<Source, Destination>>;

// Neither cares for the fields, so both take the pixels as they lie in memory.
using ReversePixels = RgbToRgb<layout::Argb, layout::Argb, ReverseRule>;
using CopyOpaque = RgbToRgb<layout::R10Little, layout::R10Little, OpaqueRule>;

}  // namespace mixdecks
