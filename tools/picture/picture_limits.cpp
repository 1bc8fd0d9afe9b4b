#include "tools/picture/picture_limits.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "tools/picture/picture_error.h"

namespace mixdecks {
namespace {

constexpr std::uint64_t kLargestBytes = std::numeric_limits<std::int32_t>::max();
/// The PNG decoder's own limit, whatever the depth.
constexpr std::uint64_t kLargestPngSamples = 1 << 30;

std::uint64_t SampleBytes(const PictureHeader& header) {
  return static_cast<std::uint64_t>(header.depth / 8);
}

/// Four samples a pixel must stay below 2 GB, here as in the plug-in.
std::uint64_t LargestDocument(const PictureHeader& header) {
  return kLargestBytes / (4 * SampleBytes(header));
}

/// The decoder counts the file's channels, and unpacks them all with one more byte in each row.
std::uint64_t LargestPng(const PictureHeader& header) {
  const auto channels = static_cast<std::uint64_t>(header.pngChannels);
  return std::min(kLargestPngSamples / channels,
                  (kLargestBytes - header.height) / (channels * SampleBytes(header)));
}

/// The same shape with at most so many pixels.
std::string FittingSize(const PictureHeader& header, std::uint64_t largest) {
  const double pixels = static_cast<double>(header.width) * header.height;
  const double scale = std::sqrt(static_cast<double>(largest) / pixels);
  return fmt::format("{:.0f} x {:.0f}", std::floor(header.width * scale),
                     std::floor(header.height * scale));
}

}  // namespace

void CheckArea(const PictureHeader& header) {
  const std::uint64_t pixels = std::uint64_t{header.width} * header.height;
  if (pixels > LargestDocument(header)) {
    throw PictureError(fmt::format("{} x {} pixels of {} bits per channel are more than 2 GB",
                                   header.width, header.height, header.depth),
                       "scale the picture down, to " +
                           FittingSize(header, LargestDocument(header)) + " for instance");
  }
  if (header.format != PictureFormat::kPng || pixels <= LargestPng(header)) return;
  throw PictureError(
      fmt::format("{} x {} pixels with {} channels of {} bits are more than mixdecks can read from "
                  "a PNG, {} pixels",
                  header.width, header.height, header.pngChannels, header.depth,
                  LargestPng(header)),
      fmt::format("save it as PSD, or scale it down, to {} for instance",
                  FittingSize(header, LargestPng(header))));
}

}  // namespace mixdecks
