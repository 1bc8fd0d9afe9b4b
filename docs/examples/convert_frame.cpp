#include <vector>

#include "pixelconvert/pixel_converter.h"

// A 1920 x 1080 picture, bytes B G R A, as the 10-bit frame that a switcher takes.
std::vector<std::uint8_t> ToSwitcherFrame(const std::vector<std::uint8_t>& bgra) {
  using namespace mixdecks;
  const auto convert = GetPixelConverter(kBgra, kAy10, kRec709);
  const auto rowBytes = static_cast<std::int32_t>(DestinationRowBytes(kAy10, 1920));
  std::vector<std::uint8_t> frame(std::size_t{1080} * DestinationRowBytes(kAy10, 1920));
  convert(1920, 1080, frame.data(), rowBytes, bgra.data(), 1920 * 4);
  return frame;
}
