#include "tests/tools/frame_reference.h"

#include <algorithm>

namespace mixdecks::test {
namespace {

struct Row {
  std::int32_t blue, green, red;
};

struct Matrix {
  Row luma, blueDifference, redDifference;
};

constexpr Matrix kRec601 = {{3211, 16515, 8421}, {14385, -9535, -4849}, {-2326, -12058, 14385}};
constexpr Matrix kRec709 = {{2031, 20119, 5996}, {14385, -11108, -3309}, {-1310, -13074, 14385}};

struct Colour {
  std::int32_t blue, green, red;
};

std::uint32_t Apply(const Row& row, const Colour& colour, std::int32_t offset) {
  const std::int32_t sum = ((row.blue * colour.blue + row.green * colour.green) >> 13) +
                           ((row.red * colour.red) >> 13) + offset;
  return static_cast<std::uint32_t>(std::clamp(sum, 0, 1023));
}

std::int32_t Average(std::int32_t a, std::int32_t b) {
  return (a + b + 1) >> 1;
}

Colour Average(const Colour& a, const Colour& b) {
  return {Average(a.blue, b.blue), Average(a.green, b.green), Average(a.red, b.red)};
}

/// The picture's colours with columns past its edges repeated.
class Source {
 public:
  Source(std::span<const std::uint8_t> rgba, std::size_t width) : rgba_(rgba), width_(width) {}

  Colour At(std::size_t x, std::size_t y) const {
    const std::size_t at = (y * width_ + x) * 4;
    return {rgba_[at + 2], rgba_[at + 1], rgba_[at]};
  }
  std::uint32_t AlphaAt(std::size_t x, std::size_t y) const {
    return ((rgba_[(y * width_ + x) * 4 + 3] * 4u * 56284u) >> 16) + 64;
  }
  /// The colour that an even column's chroma is taken from.
  Colour Filtered(std::size_t x, std::size_t y) const {
    const Colour left = At(x == 0 ? 0 : x - 1, y);
    return Average(Average(left, At(x + 1, y)), At(x, y));
  }

 private:
  std::span<const std::uint8_t> rgba_;
  std::size_t width_;
};

std::uint32_t Limit(double value, std::uint32_t highest) {
  const auto number = static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
  return std::min(std::max(number, 64u), highest);
}

std::uint32_t PremultipliedLuma(std::uint32_t luma, double alpha) {
  double y = (static_cast<double>(luma) - 64) / 876;
  y = y * alpha;
  y = y * 876;
  y = y + 64;
  return Limit(y + 0.5, 940);
}

std::uint32_t PremultipliedChroma(std::uint32_t chroma, double alpha) {
  double c = (static_cast<double>(chroma) - 64) / 896;
  c = c - 0.5;
  c = c * alpha;
  c = c + 0.5;
  c = c * 896;
  c = c + 64;
  return Limit(c + 0.5, 960);
}

double Weight(const FramePixel& pixel) {
  return (static_cast<double>(pixel.alpha) - 64) / 876;
}

void Premultiply(FramePixel& even, FramePixel& odd) {
  even.chroma = PremultipliedChroma(even.chroma, Weight(even));
  odd.chroma = PremultipliedChroma(odd.chroma, Weight(even));
  even.luma = PremultipliedLuma(even.luma, Weight(even));
  odd.luma = PremultipliedLuma(odd.luma, Weight(odd));
}

void Append(std::vector<std::uint8_t>& frame, const FramePixel& pixel) {
  const std::uint32_t word = pixel.alpha << 20 | pixel.chroma << 10 | pixel.luma;
  for (const int shift : {24, 16, 8, 0})
    frame.push_back(static_cast<std::uint8_t>(word >> shift));
}

}  // namespace

std::vector<std::uint8_t> ReferenceFrame(std::span<const std::uint8_t> rgba, std::size_t width,
                                         bool rec709, bool premultiply) {
  const Matrix& matrix = rec709 ? kRec709 : kRec601;
  const Source source(rgba, width);
  std::vector<std::uint8_t> frame;
  frame.reserve(rgba.size());
  for (std::size_t y = 0; y < rgba.size() / 4 / width; ++y) {
    for (std::size_t x = 0; x < width; x += 2) {
      const Colour filtered = source.Filtered(x, y);
      FramePixel even = {source.AlphaAt(x, y), Apply(matrix.blueDifference, filtered, 512),
                         Apply(matrix.luma, source.At(x, y), 64)};
      FramePixel odd = {source.AlphaAt(x + 1, y), Apply(matrix.redDifference, filtered, 512),
                        Apply(matrix.luma, source.At(x + 1, y), 64)};
      if (premultiply) Premultiply(even, odd);
      Append(frame, even);
      Append(frame, odd);
    }
  }
  return frame;
}

FramePixel PixelAt(std::span<const std::uint8_t> frame, std::size_t width, std::size_t x,
                   std::size_t y) {
  std::uint32_t word = 0;
  for (const std::uint8_t byte : frame.subspan((y * width + x) * 4, 4))
    word = word << 8 | byte;
  return {word >> 20, word >> 10 & 1023, word & 1023};
}

}  // namespace mixdecks::test
