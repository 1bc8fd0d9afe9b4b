#include "tests/e2e/sample_picture.h"

#include <algorithm>

#include "tests/pixelconvert/reference/reference.h"

namespace mixdecks::e2e {
namespace {

template <class Sample>
Picture MakePicture(std::int32_t width, std::int32_t height, const Sample& sample) {
  Picture picture{width, height, {}};
  picture.rgba.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  for (std::int32_t y = 0; y < height; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      for (int lane = 0; lane < 4; ++lane) {
        picture.rgba.push_back(static_cast<std::uint8_t>(sample(x, y, lane)));
      }
    }
  }
  return picture;
}

std::vector<std::uint8_t> BgraOf(const Picture& picture, bool withAlpha) {
  std::vector<std::uint8_t> bgra = picture.rgba;
  for (std::size_t pixel = 0; pixel < bgra.size(); pixel += 4) {
    std::swap(bgra[pixel], bgra[pixel + 2]);
    if (!withAlpha) bgra[pixel + 3] = 255;
  }
  return bgra;
}

std::uint32_t WordAt(const std::vector<std::uint8_t>& frame, std::size_t offset) {
  return static_cast<std::uint32_t>(frame[offset]) << 24 |
         static_cast<std::uint32_t>(frame[offset + 1]) << 16 |
         static_cast<std::uint32_t>(frame[offset + 2]) << 8 | frame[offset + 3];
}

void StoreWord(std::vector<std::uint8_t>& frame, std::size_t offset, std::uint32_t word) {
  for (std::size_t i = 0; i < 4; ++i) {
    frame[offset + i] = static_cast<std::uint8_t>(word >> (24 - 8 * i));
  }
}

/// Raised, then lowered, as unsigned: what fell below zero ends at the top.
std::uint32_t Cut(double value, std::uint32_t highest) {
  const auto whole = static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
  return std::min(std::max(whole, std::uint32_t{64}), highest);
}

std::uint32_t MultipliedLuma(std::uint32_t luma, double alpha) {
  double y = (luma - 64.0) / 876;
  y = y * alpha;
  y = y * 876;
  y = y + 64;
  return Cut(y + 0.5, 940);
}

std::uint32_t MultipliedChroma(std::uint32_t chroma, double alpha) {
  double c = (chroma - 64.0) / 896;
  c = c - 0.5;
  c = c * alpha;
  c = c + 0.5;
  c = c * 896;
  c = c + 64;
  return Cut(c + 0.5, 960);
}

}  // namespace

Picture BusyPicture(std::int32_t width, std::int32_t height) {
  return MakePicture(width, height, [](std::int32_t x, std::int32_t y, int lane) {
    return x * (37 + 20 * lane) + y * (91 + 6 * lane) + ((x ^ y) & 64) * lane + 40 * lane;
  });
}

Picture SmoothPicture(std::int32_t width, std::int32_t height) {
  return MakePicture(width, height, [=](std::int32_t x, std::int32_t y, int lane) {
    switch (lane) {
      case 0:
        return 30 + 200 * x / width;
      case 1:
        return 230 - 200 * y / height;
      case 2:
        return 20 + 100 * x / width + 100 * y / height;
      default:
        return 250 - 200 * x / width;
    }
  });
}

HostDocument DocumentOf(const Picture& picture, bool withAlpha) {
  return DocumentOfRgba8(picture.rgba, picture.width, picture.height, withAlpha);
}

std::vector<std::uint8_t> ExpectedFrame(const Picture& picture, bool withAlpha, bool premultiply,
                                        ColourSpaceIndex colourSpace) {
  const std::vector<std::uint8_t> bgra = BgraOf(picture, withAlpha);
  const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * 4;
  std::vector<std::uint8_t> frame;
  for (std::size_t row = 0; row < bgra.size(); row += rowBytes) {
    const std::vector<std::uint8_t> converted =
        reference::ConvertRow(kBgra, kAy10, colourSpace, static_cast<std::size_t>(picture.width),
                              std::span(bgra).subspan(row, rowBytes));
    frame.insert(frame.end(), converted.begin(), converted.end());
  }
  return premultiply ? Premultiplied(std::move(frame)) : frame;
}

// A pair of pixels shares its chroma's weight, the first one's alpha.
std::vector<std::uint8_t> Premultiplied(std::vector<std::uint8_t> frame) {
  for (std::size_t pair = 0; pair + 8 <= frame.size(); pair += 8) {
    const double chromaAlpha = ((WordAt(frame, pair) >> 20) - 64.0) / 876;
    for (const std::size_t offset : {pair, pair + 4}) {
      const std::uint32_t word = WordAt(frame, offset);
      const double alpha = ((word >> 20) - 64.0) / 876;
      StoreWord(frame, offset,
                (word >> 20) << 20 | MultipliedChroma(word >> 10 & 1023, chromaAlpha) << 10 |
                    MultipliedLuma(word & 1023, alpha));
    }
  }
  return frame;
}

FramePixel PixelAt(const std::vector<std::uint8_t>& frame, std::int32_t width, std::int32_t x,
                   std::int32_t y) {
  const std::size_t index =
      static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
  const std::uint32_t word = WordAt(frame, index * 4);
  return {static_cast<int>(word >> 20 & 1023), static_cast<int>(word >> 10 & 1023),
          static_cast<int>(word & 1023)};
}

}  // namespace mixdecks::e2e
