// The seventeen pixel formats of the library: codes, names, layouts, and the bytes of a row.
//
// Samples are unsigned. Full range uses all values, video range keeps black at 16 and white at 235
// in eight bits, 64 and 940 in ten; chroma, offset by half, spans 16 to 240 or 64 to 960 (ITU-R
// BT.601 and BT.709). YUV is always 4:2:2 and sited at the even pixels: Cb and Cr of a pair belong
// to both.
//
// Everything here is constexpr and may be used from any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mixdecks {

/// A four-character code, first letter in the most significant byte. The 8-bit ARGB format has no
/// letters: its code is the number 32.
using PixelFormatCode = std::uint32_t;

/// 0 selects the Rec. 601 matrices (ITU-R BT.601), 1 the Rec. 709 matrices (ITU-R BT.709).
using ColourSpaceIndex = std::uint32_t;
inline constexpr ColourSpaceIndex kRec601 = 0;
inline constexpr ColourSpaceIndex kRec709 = 1;

// 8-bit RGB, full range; bytes in memory order.
inline constexpr PixelFormatCode kArgb32 = 0x00000020;  ///< `32`: A R G B
inline constexpr PixelFormatCode kBgra = 0x42475241;    ///< B G R A
inline constexpr PixelFormatCode kBgrx = 0x42475258;    ///< B G R, filler never read
inline constexpr PixelFormatCode kRgba = 0x52474241;    ///< R G B A
inline constexpr PixelFormatCode kRgb3 = 0x52474233;    ///< R G B, three bytes a pixel

// 10-bit RGB in 32-bit words. The letter's case tells the range: video (64 to 940) or full.
// Low-aligned words have R, G and B at bits 20, 10 and 0, high-aligned ones at 22, 12 and 2. The two
// bits that are left are written as 0, in `R10A` as 3, and never read.
inline constexpr PixelFormatCode kR210Video = 0x72323130;       ///< `r210`: big-endian, low-aligned
inline constexpr PixelFormatCode kR210Full = 0x52323130;        ///< `R210`: the same, full range
inline constexpr PixelFormatCode kR10BigVideo = 0x52313062;     ///< `R10b`: big-endian, high-aligned
inline constexpr PixelFormatCode kR10LittleVideo = 0x5231306C;  ///< `R10l`: little-endian
inline constexpr PixelFormatCode kR10BigFull = 0x52313042;      ///< `R10B`
inline constexpr PixelFormatCode kR10LittleFull = 0x5231304C;   ///< `R10L`
inline constexpr PixelFormatCode kR10Alpha = 0x52313041;        ///< `R10A`: `R10B`, low bits set

// 12-bit RGB, full range: eight pixels in nine 32-bit words, the samples R G B R G B … one after
// another from the lowest bit of the first word upwards.
inline constexpr PixelFormatCode kR12Big = 0x52313242;     ///< `R12B`: big-endian words
inline constexpr PixelFormatCode kR12Little = 0x5231324C;  ///< `R12L`: little-endian words

// 4:2:2 YUV, video range.
//
// `v210` holds six pixels in four little-endian words of three samples, the first in the lowest
// bits: Cb0 Y0 Cr0, Y1 Cb1 Y2, Cr1 Y3 Cb2, Y4 Cr2 Y5. `ay10` holds a pixel in a big-endian word:
// alpha at bit 20, chroma at bit 10 (Cb at even pixels, Cr at odd ones), luma at bit 0.
inline constexpr PixelFormatCode k2vuy = 0x32767579;  ///< 8 bits: Cb Y0 Cr Y1
inline constexpr PixelFormatCode kV210 = 0x76323130;  ///< 10 bits: six pixels in 16 bytes
inline constexpr PixelFormatCode kAy10 = 0x61793130;  ///< 10 bits, with alpha in every pixel

/// How a row fills memory: units of `pixels` pixels that take `bytes` bytes, the last one whole.
struct RowUnit {
  std::uint32_t pixels;
  std::uint32_t bytes;

  /// The bytes that a row of `width` pixels occupies. A stride may be larger, never smaller.
  constexpr std::size_t RowBytes(std::uint32_t width) const {
    return (std::size_t{width} + pixels - 1) / pixels * bytes;
  }
};

// One home for each way of filling a row; converters and catalogue both name these.
inline constexpr RowUnit kFourBytePixel{1, 4};
inline constexpr RowUnit kThreeBytePixel{1, 3};
inline constexpr RowUnit kTwelveBitGroup{8, 36};
inline constexpr RowUnit k2vuyRead{1, 2};     ///< read up to the last pixel's own two bytes …
inline constexpr RowUnit k2vuyWritten{2, 4};  ///< … but always written in whole pairs
inline constexpr RowUnit kV210Group{6, 16};
inline constexpr RowUnit kAy10Block{4, 16};

enum class ColourModel : std::uint8_t { kRgb, kYuv };

/// The span of the samples: full uses every value, video keeps black at 16 and white at 235 (64 and
/// 940 in ten bits).
enum class SampleRange : std::uint8_t { kFull, kVideo };

struct PixelFormat {
  PixelFormatCode code;
  std::string_view name;
  std::uint8_t depth;  ///< bits of a sample
  ColourModel model;
  SampleRange range;
  RowUnit sourceRow;       ///< bytes read
  RowUnit destinationRow;  ///< bytes written
};

/// All formats, in the order of the conversion grid.
inline constexpr std::array<PixelFormat, 17> kPixelFormats = [] {
  using enum ColourModel;
  using enum SampleRange;
  return std::array<PixelFormat, 17>{{
      // clang-format off
      // code             name    depth model  range    row read         row written
      {kArgb32,          "32",    8, kRgb, kFull,  kFourBytePixel,  kFourBytePixel},
      {kBgra,            "BGRA",  8, kRgb, kFull,  kFourBytePixel,  kFourBytePixel},
      {kRgba,            "RGBA",  8, kRgb, kFull,  kFourBytePixel,  kFourBytePixel},
      {kBgrx,            "BGRX",  8, kRgb, kFull,  kFourBytePixel,  kFourBytePixel},
      {kRgb3,            "RGB3",  8, kRgb, kFull,  kThreeBytePixel, kThreeBytePixel},
      {kR210Video,       "r210", 10, kRgb, kVideo, kFourBytePixel,  kFourBytePixel},
      {kR210Full,        "R210", 10, kRgb, kFull,  kFourBytePixel,  kFourBytePixel},
      {kR10BigVideo,     "R10b", 10, kRgb, kVideo, kFourBytePixel,  kFourBytePixel},
      {kR10LittleVideo,  "R10l", 10, kRgb, kVideo, kFourBytePixel,  kFourBytePixel},
      {kR10BigFull,      "R10B", 10, kRgb, kFull,  kFourBytePixel,  kFourBytePixel},
      {kR10LittleFull,   "R10L", 10, kRgb, kFull,  kFourBytePixel,  kFourBytePixel},
      {kR10Alpha,        "R10A", 10, kRgb, kFull,  kFourBytePixel,  kFourBytePixel},
      {kR12Big,          "R12B", 12, kRgb, kFull,  kTwelveBitGroup, kTwelveBitGroup},
      {kR12Little,       "R12L", 12, kRgb, kFull,  kTwelveBitGroup, kTwelveBitGroup},
      {k2vuy,            "2vuy",  8, kYuv, kVideo, k2vuyRead,       k2vuyWritten},
      {kV210,            "v210", 10, kYuv, kVideo, kV210Group,      kV210Group},
      {kAy10,            "ay10", 10, kYuv, kVideo, kAy10Block,      kAy10Block},
      // clang-format on
  }};
}();

/// The catalogue's entry for a code, or null for a code that is no format.
constexpr const PixelFormat* FindPixelFormat(PixelFormatCode code) {
  for (const PixelFormat& format : kPixelFormats) {
    if (format.code == code) return &format;
  }
  return nullptr;
}

/// The format of a name as written in the catalogue ("BGRA", "32"; the case counts), or null.
constexpr const PixelFormat* FindPixelFormat(std::string_view name) {
  for (const PixelFormat& format : kPixelFormats) {
    if (format.name == name) return &format;
  }
  return nullptr;
}

/// A format's name, empty for a code that is no format.
constexpr std::string_view PixelFormatName(PixelFormatCode code) {
  const PixelFormat* format = FindPixelFormat(code);
  return format ? format->name : std::string_view{};
}

/// The bytes a converter reads from a row of `width` pixels; 0 for a code that is no format.
constexpr std::size_t SourceRowBytes(PixelFormatCode code, std::uint32_t width) {
  const PixelFormat* format = FindPixelFormat(code);
  return format ? format->sourceRow.RowBytes(width) : 0;
}

/// The bytes a converter writes to a row of `width` pixels, padding of the last unit included; 0
/// for a code that is no format. A destination row must have room for them.
constexpr std::size_t DestinationRowBytes(PixelFormatCode code, std::uint32_t width) {
  const PixelFormat* format = FindPixelFormat(code);
  return format ? format->destinationRow.RowBytes(width) : 0;
}

}  // namespace mixdecks
