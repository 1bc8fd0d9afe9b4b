// The seventeen pixel formats of the library: their codes and the bytes of a row.
//
// Everything here is constexpr and may be used from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
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
inline constexpr PixelFormatCode kR210Video = 0x72323130;       ///< `r210`: R at bit 20, big-endian
inline constexpr PixelFormatCode kR210Full = 0x52323130;        ///< `R210`: the same, full range
inline constexpr PixelFormatCode kR10BigVideo = 0x52313062;     ///< `R10b`: R at bit 22, big-endian
inline constexpr PixelFormatCode kR10LittleVideo = 0x5231306C;  ///< `R10l`: little-endian
inline constexpr PixelFormatCode kR10BigFull = 0x52313042;      ///< `R10B`
inline constexpr PixelFormatCode kR10LittleFull = 0x5231304C;   ///< `R10L`
inline constexpr PixelFormatCode kR10Alpha = 0x52313041;        ///< `R10A`: `R10B`, low bits set

// 12-bit RGB, full range: eight pixels in nine 32-bit words.
inline constexpr PixelFormatCode kR12Big = 0x52313242;     ///< `R12B`: big-endian words
inline constexpr PixelFormatCode kR12Little = 0x5231324C;  ///< `R12L`: little-endian words

// 4:2:2 YUV, video range.
inline constexpr PixelFormatCode k2vuy = 0x32767579;  ///< 8 bits: Cb Y0 Cr Y1
inline constexpr PixelFormatCode kV210 = 0x76323130;  ///< 10 bits: six pixels in 16 bytes
inline constexpr PixelFormatCode kAy10 = 0x61793130;  ///< 10 bits, with alpha in every pixel

}  // namespace mixdecks
