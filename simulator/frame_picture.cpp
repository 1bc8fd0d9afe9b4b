#include "simulator/frame_picture.h"

#include <algorithm>
#include <utility>

#include "pixelconvert/pixel_converter.h"
#include "simulator/png_file.h"
#include "transfer/video_modes.h"

namespace mixdecks::simulator {
namespace {

constexpr std::uint32_t kTransparent = 64;
constexpr std::uint32_t kOpaque = 940;
constexpr std::uint32_t kBlack = 64;
constexpr std::uint32_t kNoColour = 512;

/// Multiplying rounds, so that a product may lie one above its bound.
constexpr std::uint32_t kRounding = 1;

struct Pixel {
  std::uint32_t alpha, chroma, luma;
};

Pixel ReadPixel(const std::uint8_t* bytes) noexcept {
  const std::uint32_t word = std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
                             std::uint32_t{bytes[2]} << 8 | bytes[3];
  return {word >> 20 & 0x3FF, word >> 10 & 0x3FF, word & 0x3FF};
}

bool LumaWithinAlpha(const Pixel& pixel) noexcept {
  return pixel.luma <= std::max(pixel.alpha, kBlack) + kRounding;
}

/// Colour of a pair, which premultiplication weighs with its first pixel's alpha.
bool ChromaWithinAlpha(const Pixel& first, const Pixel& second) noexcept {
  if (first.alpha > kTransparent) return true;
  return first.chroma == kNoColour && second.chroma == kNoColour;
}

/// Divides the colours of B, G, R, A pixels by their alpha.
void Unmultiply(std::span<std::uint8_t> pixels) noexcept {
  for (; !pixels.empty(); pixels = pixels.subspan(4)) {
    const std::uint32_t alpha = pixels[3];
    for (std::size_t i = 0; i < 3; ++i) {
      const std::uint32_t colour = alpha == 0 ? 0 : (pixels[i] * 255u + alpha / 2) / alpha;
      pixels[i] = static_cast<std::uint8_t>(std::min(colour, 255u));
    }
  }
}

void SwapRedAndBlue(std::span<std::uint8_t> pixels) noexcept {
  for (; !pixels.empty(); pixels = pixels.subspan(4))
    std::swap(pixels[0], pixels[2]);
}

}  // namespace

FrameAlpha JudgeAlpha(std::span<const std::uint8_t> frame) noexcept {
  bool opaque = true;
  bool premultiplied = true;
  for (; frame.size() >= 8; frame = frame.subspan(8)) {
    const Pixel first = ReadPixel(frame.data());
    const Pixel second = ReadPixel(frame.data() + 4);
    opaque = opaque && first.alpha >= kOpaque && second.alpha >= kOpaque;
    premultiplied = premultiplied && LumaWithinAlpha(first) && LumaWithinAlpha(second) &&
                    ChromaWithinAlpha(first, second);
    if (!opaque && !premultiplied) return FrameAlpha::kStraight;
  }
  return opaque ? FrameAlpha::kOpaque : FrameAlpha::kPremultiplied;
}

std::vector<std::uint8_t> EncodePicture(const Still& still, std::span<const std::uint8_t> frame) {
  std::vector<std::uint8_t> pixels(frame.size());
  const auto stride = static_cast<std::int32_t>(still.width * 4);
  const auto height = static_cast<std::int32_t>(still.height);
  const PixelConverter convert =
      GetPixelConverter(kAy10, kBgra, FindVideoMode(still.mode)->colourSpace);
  convert(still.width, height, pixels.data(), stride, frame.data(), stride);
  if (still.alpha == FrameAlpha::kPremultiplied) Unmultiply(pixels);
  SwapRedAndBlue(pixels);
  return EncodePng(pixels, still.width, still.height);
}

}  // namespace mixdecks::simulator
