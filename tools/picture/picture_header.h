// What a picture file says about itself before anything is decoded.
//
// The decoders are lenient: they fill up what is missing and skip checksums. A still that goes on
// air deserves better, so that each format's structure is walked to its end first.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace mixdecks {

/// The host's image modes, in its own numbers.
enum class ColourMode : std::int16_t {
  kBitmap = 0,
  kGrey = 1,
  kIndexed = 2,
  kRgb = 3,
  kCmyk = 4,
  kMultichannel = 7,
  kDuotone = 8,
  kLab = 9,
};

/// "greyscale", for messages; "unknown" for any other number.
std::string_view ColourModeName(ColourMode mode) noexcept;

enum class PictureFormat { kPng, kJpeg, kPsd, kBmp, kPnm };

/// "PNG", for messages.
std::string_view PictureFormatName(PictureFormat format) noexcept;

struct PictureHeader {
  PictureFormat format{};
  std::uint32_t width = 0;   ///< pixels, 1 to kLargestSide
  std::uint32_t height = 0;  ///< pixels, 1 to kLargestSide
  int depth = 8;             ///< bits per sample once decoded: 8 or 16
  ColourMode mode = ColourMode::kRgb;
  int pngChannels = 4;  ///< that the PNG decoder counts; a palette stands for all four
  int orientation = 1;  ///< `ExifOrientation`
};

/// Sides are 16-bit numbers in the host's record.
inline constexpr std::uint32_t kLargestSide = 32767;

/// Reads the header of a whole file and checks that the file is complete. Throws `PictureError`.
PictureHeader InspectPicture(std::span<const std::uint8_t> file);

}  // namespace mixdecks
