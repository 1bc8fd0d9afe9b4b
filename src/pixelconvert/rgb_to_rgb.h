// RGB to RGB, between all formats of whole words and `RGB3`.
//
// Three families cover them: fields that only move, full range cut down to video range, and video
// range stretched to full. A pixel is taken apart into its outer channels, red and blue, one in
// each half of the word, and green between them. Multiplications are scaled so that the outer
// channels come out where the destination wants them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixelconvert/kernel_frame.h"
#include "pixelconvert/layout_rgb3.h"
#include "pixelconvert/pixel_format.h"
#include "pixelconvert/pixel_word.h"
#include "pixelconvert/sample_range.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

/// Four pixels as they stand in memory, as native words, and as such with exchanged halves. What a
/// kernel does not use is never made.
struct NativePixels {
  simd::Vector memory;
  simd::Vector plain;
  simd::Vector exchanged;
};

template <class Layout>
struct PixelMemory {
  static constexpr RowUnit kRow = kFourBytePixel;

  static NativePixels Load(const std::uint8_t* src) {
    const simd::Vector memory = simd::Load(src);
    if constexpr (Layout::kWord.order == ByteOrder::kBig) {
      const simd::Vector exchanged = simd::SwapWordBytes(memory);
      return {memory, simd::SwapWords(exchanged), exchanged};
    } else {
      return {memory, memory, simd::SwapWords(memory)};
    }
  }

  template <std::size_t kVectors>
  static void Store(std::uint8_t* dst, const simd::Vector (&pixels)[kVectors]) {
#pragma GCC unroll 4
    for (std::size_t i = 0; i < kVectors; ++i)
      simd::Store(dst + i * 16, pixels[i]);
  }
};

template <>
struct PixelMemory<layout::Rgb3> {
  static constexpr RowUnit kRow = kThreeBytePixel;

  static NativePixels Load(const std::uint8_t* src) {
    const simd::Vector pixels = LoadRgb3(src);
    return {pixels, pixels, simd::SwapWords(pixels)};
  }

  template <std::size_t kVectors>
  static void Store(std::uint8_t* dst, const simd::Vector (&pixels)[kVectors]) {
    Rgb3PairWriter writer(dst);
#pragma GCC unroll 4
    for (std::size_t i = 0; i < kVectors; ++i) {
      const simd::Vector pairs = CloseRgb3Gaps(pixels[i]);
      writer.WriteLow(pairs);
      writer.WriteHigh(pairs, i + 1 == kVectors);
    }
  }
};

/// The kernel of all three families: `Rule::Convert` makes four pixels, as they stand in memory, of
/// four native ones.
template <class Source, class Destination, class Rule>
struct RgbToRgb : KernelShape<16, PixelMemory<Source>::kRow, PixelMemory<Destination>::kRow> {
  struct Row : SeparateBlocks {
    void Convert(const std::uint8_t* src, std::uint8_t* dst) {
      constexpr std::size_t vectors = RgbToRgb::kBlockPixels / 4;
      simd::Vector pixels[vectors];
#pragma GCC unroll 4
      for (std::size_t i = 0; i < vectors; ++i) {
        pixels[i] =
            Rule::Convert(PixelMemory<Source>::Load(src + i * RgbToRgb::kSourceBlock / vectors));
      }
      PixelMemory<Destination>::Store(dst, pixels);
    }
  };
};

/// The lowest bits of the outer channels, each counted in its own half of the word.
struct OuterFields {
  int lower;
  int upper;

  constexpr OuterFields Exchanged() const { return {upper, lower}; }

  /// A bit pattern at both places.
  constexpr std::uint32_t Both(std::uint32_t bits) const {
    return bits << lower | bits << (upper + 16);
  }
};

constexpr OuterFields OuterFieldsOf(const PixelWord& word) {
  return word.red < word.blue ? OuterFields{word.red, word.blue - 16}
                              : OuterFields{word.blue, word.red - 16};
}

/// How the channels get from one layout to the other.
template <class Source, class Destination>
struct ChannelPath {
  static constexpr PixelWord kFrom = Source::kWord;
  static constexpr PixelWord kTo = Destination::kWord;
  static constexpr int kWidened = kTo.bits - kFrom.bits;

  // Outer channels that trade places do so for nothing where bytes are turned round anyway: they
  // are taken from words with exchanged halves, or put into such words.
  static constexpr bool kTrade = (kFrom.red < kFrom.blue) != (kTo.red < kTo.blue);
  static constexpr bool kWriteExchanged =
      kTrade && kFrom.order == ByteOrder::kLittle && kTo.order == ByteOrder::kBig;
  static constexpr bool kReadExchanged = kTrade && !kWriteExchanged;

  // Where the outer channels are found and where they are left.
  static constexpr OuterFields kOuterFrom =
      kReadExchanged ? OuterFieldsOf(kFrom).Exchanged() : OuterFieldsOf(kFrom);
  static constexpr OuterFields kOuterTo =
      kWriteExchanged ? OuterFieldsOf(kTo).Exchanged() : OuterFieldsOf(kTo);

  /// The outer channels alone, without the lowest bits of each if there are bits to drop.
  template <int kDropped = 0>
  static simd::Vector Outer(const NativePixels& pixels) {
    constexpr std::uint32_t field = (1u << kFrom.bits) - (1u << kDropped);
    return _mm_and_si128(kReadExchanged ? pixels.exchanged : pixels.plain,
                         simd::DoubleWords(kOuterFrom.Both(field)));
  }

  /// Green alone, likewise.
  template <int kDropped = 0>
  static simd::Vector Green(const NativePixels& pixels) {
    constexpr std::uint32_t field = (1u << kFrom.bits) - (1u << kDropped);
    return _mm_and_si128(pixels.plain, simd::DoubleWords(field << kFrom.green));
  }

  /// Pixels as they stand in memory, of channels at their places. `kAdded` is added to every native
  /// word and must not carry from its lower half into the upper.
  template <std::uint32_t kAdded>
  static simd::Vector Join(simd::Vector outer, simd::Vector green) {
    constexpr std::uint32_t added = kWriteExchanged ? kAdded << 16 | kAdded >> 16 : kAdded;
    if constexpr (kWriteExchanged) green = simd::SwapWords(green);
    simd::Vector pixels = _mm_or_si128(outer, green);
    if constexpr (added != 0) pixels = _mm_add_epi32(pixels, simd::DoubleWords(added));
    if constexpr (kTo.order == ByteOrder::kLittle) return pixels;
    return simd::SwapWordBytes(kWriteExchanged ? pixels : simd::SwapWords(pixels));
  }
};

/// Fields that keep their range only move. Eight bits become ten with zeros below, ten become eight
/// without the two lowest: the tops of the fields meet.
template <class Source, class Destination>
struct FieldMove {
  static simd::Vector Convert(const NativePixels& pixels) {
    if constexpr (kTogether && kBothBig) {
      return ShiftInMemoryOrder(pixels.memory);
    } else if constexpr (kTogether) {
      const simd::Vector moved = simd::ShiftDoubleWords<kDistance>(pixels.plain);
      return Path::template Join<kTo.opaque>(_mm_and_si128(moved, simd::DoubleWords(kFields)),
                                             _mm_setzero_si128());
    } else {
      constexpr OuterFields from = Path::kOuterFrom;
      constexpr OuterFields to = Path::kOuterTo;
      constexpr int widened = Path::kWidened;
      constexpr int dropped = widened < 0 ? -widened : 0;
      return Path::template Join<kTo.opaque>(
          simd::ShiftWords<to.lower - from.lower + widened, to.upper - from.upper + widened>(
              Path::template Outer<dropped>(pixels)),
          simd::ShiftDoubleWords<kDistance + widened>(Path::template Green<dropped>(pixels)));
    }
  }

 private:
  using Path = ChannelPath<Source, Destination>;
  static constexpr PixelWord kFrom = Path::kFrom;
  static constexpr PixelWord kTo = Path::kTo;

  // Fields that all go the same way go in one.
  static constexpr int kDistance = kTo.green - kFrom.green;
  static constexpr bool kTogether =
      kTo.red - kFrom.red == kDistance && kTo.blue - kFrom.blue == kDistance && Path::kWidened == 0;
  static constexpr std::uint32_t kField = (1u << kTo.bits) - 1;
  static constexpr std::uint32_t kFields =
      kField << kTo.red | kField << kTo.green | kField << kTo.blue;

  // Big-endian words shifted by a little need not be turned round: what a byte loses at one end
  // turns up at the other end of the byte beside it.
  static constexpr bool kBothBig = kFrom.order == ByteOrder::kBig && kTo.order == ByteOrder::kBig;
  static constexpr std::uint32_t kEveryByte = 0x01010101;

  static simd::Vector ShiftInMemoryOrder(simd::Vector pixels) {
    constexpr int across = kDistance > 0 ? kDistance - 16 : kDistance + 16;
    constexpr std::uint32_t inside =
        kDistance > 0 ? 0xFFu << kDistance & 0xFF : 0xFFu >> -kDistance;
    const simd::Vector within = _mm_and_si128(simd::ShiftDoubleWords<kDistance>(pixels),
                                              simd::DoubleWords(kEveryByte * inside));
    const simd::Vector beside = _mm_and_si128(simd::ShiftDoubleWords<across>(pixels),
                                              simd::DoubleWords(kEveryByte * (0xFF - inside)));
    const simd::Vector moved = _mm_or_si128(within, beside);
    if constexpr (kTo.opaque == 0) return moved;
    return _mm_or_si128(moved, simd::DoubleWords(kTo.opaque << 24));
  }
};

/// Full range of any depth to ten bits of video range.
template <class Source, class Destination>
struct FullToVideoRule {
  static simd::Vector Convert(const NativePixels& pixels) {
    constexpr OuterFields from = Path::kOuterFrom;
    constexpr OuterFields to = Path::kOuterTo;
    constexpr int widened = Path::kWidened;
    const simd::Vector outer = FullToVideo(
        simd::ShiftWords<to.lower - from.lower + widened, to.upper - from.upper + widened>(
            Path::Outer(pixels)));
    const simd::Vector green =
        FullToVideo(simd::ShiftDoubleWords<widened - Path::kFrom.green>(Path::Green(pixels)));
    constexpr std::uint32_t field = (1u << kTo.bits) - 1;
    // Black ends in zeros, so adding it to all channels at once carries nowhere.
    return Path::template Join<kBlack>(_mm_and_si128(outer, simd::DoubleWords(to.Both(field))),
                                       simd::ShiftDoubleWords<kTo.green>(green));
  }

 private:
  using Path = ChannelPath<Source, Destination>;
  static constexpr PixelWord kTo = Path::kTo;
  static constexpr std::uint32_t kBlack = std::uint32_t{kVideoBlack10} << kTo.red |
                                          std::uint32_t{kVideoBlack10} << kTo.green |
                                          std::uint32_t{kVideoBlack10} << kTo.blue;
};

/// Ten bits of video range to full range of the destination's depth.
template <class Source, class Destination>
struct VideoToFullRule {
  static simd::Vector Convert(const NativePixels& pixels) {
    constexpr OuterFields from = Path::kOuterFrom;
    constexpr OuterFields to = Path::kOuterTo;
    constexpr int highest = to.lower < to.upper ? to.upper : to.lower;
    constexpr int lower = VideoScale(kTo.bits, to.lower, highest);
    constexpr int upper = VideoScale(kTo.bits, to.upper, highest);
    constexpr int rest = to.lower - FullPlace(kTo.bits, lower);
    static_assert(rest == to.upper - FullPlace(kTo.bits, upper));
    const simd::Vector outer = simd::ShiftWords<rest, rest>(VideoToFull<kTo.bits, lower, upper>(
        simd::ShiftWords<lower - from.lower, upper - from.upper>(Path::Outer(pixels))));

    constexpr int middle = VideoScale(kTo.bits, 0, 0);
    constexpr int down = -FullPlace(kTo.bits, middle);
    const simd::Vector green = simd::ShiftWords<down, down>(VideoToFull<kTo.bits, middle, middle>(
        simd::ShiftDoubleWords<middle - Path::kFrom.green>(Path::Green(pixels))));

    // Shifted down, a sample has no fraction left.
    constexpr std::uint32_t field = (1u << kTo.bits) - 1;
    return Path::template Join<kTo.opaque>(
        rest < 0 ? outer : _mm_and_si128(outer, simd::DoubleWords(to.Both(field))),
        simd::ShiftDoubleWords<kTo.green>(green));
  }

 private:
  using Path = ChannelPath<Source, Destination>;
  static constexpr PixelWord kTo = Path::kTo;
};

/// The 32-bit pixel turned round, which takes each of `32` and `BGRA` to the other, alpha and all.
struct ReverseRule {
  static simd::Vector Convert(const NativePixels& pixels) {
    return simd::SwapWordBytes(pixels.exchanged);
  }
};

/// `R10B` or `R10A` as it stands in memory, with the two low bits of every pixel set.
struct OpaqueRule {
  static simd::Vector Convert(const NativePixels& pixels) {
    return _mm_or_si128(pixels.memory, simd::DoubleWords(layout::R10Alpha::kWord.opaque << 24));
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
