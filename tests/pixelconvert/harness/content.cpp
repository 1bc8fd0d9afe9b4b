#include "tests/pixelconvert/harness/content.h"

#include <algorithm>

#include "tests/pixelconvert/reference/rgb_rows.h"
#include "tests/pixelconvert/reference/yuv_rows.h"

namespace mixdecks::proof {
namespace {

using namespace reference;

// Colours in 12 bits whose samples differ from one another in most bit positions; grey ones would
// hide an error in a matrix.
constexpr std::array<std::array<int, 4>, 10> kColours = {{
    {4095, 0, 0, 4095},
    {0, 4095, 0, 0},
    {0, 0, 4095, 2048},
    {4095, 4095, 0, 1},
    {0, 4095, 4095, 4094},
    {4095, 0, 4095, 1365},
    {0xE53, 0x1B4, 0x729, 0xA5C},
    {0x1AC, 0xE4B, 0x8D6, 0x5A3},
    {0x39C, 0xC53, 0xFA6, 0x0F0},
    {0xF0F, 0x333, 0x0AA, 0xFFF},
}};

int Extreme(int bits, Random& random) {
  const int highest = (1 << bits) - 1;
  const int unit = 1 << (bits - 8);
  const std::array values = {0,
                             1,
                             2,
                             3,
                             highest,
                             highest,
                             highest - 1,
                             highest - 3,
                             16 * unit,
                             235 * unit,
                             240 * unit,
                             128 * unit,
                             16 * unit - 1,
                             235 * unit + 1,
                             128 * unit - 1,
                             0};
  return values[random.Below(static_cast<std::uint32_t>(values.size()))];
}

// The samples of a pixel's neighbour differ by a step that no two components share.
int Ramp(std::size_t pixel, int component, int bits, std::uint32_t start) {
  constexpr std::array<std::size_t, 4> kSteps = {1, 3, 5, 7};
  const auto c = static_cast<std::size_t>(component);
  const std::size_t value = start + pixel * kSteps[c] + 67 * c;
  return static_cast<int>(value & ((std::size_t{1} << bits) - 1));
}

std::vector<std::uint8_t> RandomBytes(std::size_t count, Random& random) {
  std::vector<std::uint8_t> bytes(count);
  for (std::uint8_t& byte : bytes)
    byte = static_cast<std::uint8_t>(random.Next() >> 40);
  return bytes;
}

std::vector<std::uint8_t> MakeYuvRow(const Format& format, std::size_t width,
                                     const Samples& samples) {
  const int bits = DepthOf(format);
  std::vector<PixelPair> pairs(PairsOfRow(format.code, width));
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    pairs[k] = {{samples(2 * k, 1, bits), samples(2 * k, 2, bits)},
                {samples(2 * k, 0, bits), samples(2 * k + 1, 0, bits)},
                {samples(2 * k, 3, bits), samples(2 * k + 1, 3, bits)}};
  }
  return WriteYuvRow(format.code, pairs);
}

std::vector<std::uint8_t> MakeRgbRow(const Format& format, std::size_t width,
                                     const Samples& samples) {
  const int bits = DepthOf(format);
  const std::size_t count = format.kind == Kind::kRgb12 ? (width + 7) / 8 * 8 : width;
  std::vector<Colour> pixels(count);
  for (std::size_t x = 0; x < count; ++x) {
    pixels[x] = {samples(x, 0, bits), samples(x, 1, bits), samples(x, 2, bits),
                 samples(x, 3, bits)};
  }
  return WriteRgbRow(format.code, pixels);
}

}  // namespace

std::vector<std::uint8_t> MakeRow(const Format& format, std::size_t width, const Samples& samples) {
  std::vector<std::uint8_t> row = format.kind == Kind::kYuv ? MakeYuvRow(format, width, samples)
                                                            : MakeRgbRow(format, width, samples);
  row.resize(reference::SourceRowBytes(format.code, width));
  return row;
}

std::vector<std::uint8_t> MakeRow(const Format& format, std::size_t width, Content content,
                                  Random& random) {
  const std::uint32_t start = random.Below(4096);
  const auto& colour = kColours[random.Below(static_cast<std::uint32_t>(kColours.size()))];
  switch (content) {
    case Content::kRandom:
      break;
    case Content::kExtremes:
      return MakeRow(format, width,
                     [&](std::size_t, int, int bits) { return Extreme(bits, random); });
    case Content::kRamps:
      return MakeRow(format, width, [&](std::size_t pixel, int component, int bits) {
        return Ramp(pixel, component, bits, start);
      });
    case Content::kSolid:
      return MakeRow(format, width, [&](std::size_t, int component, int bits) {
        return colour[static_cast<std::size_t>(component)] >> (12 - bits);
      });
  }
  return RandomBytes(reference::SourceRowBytes(format.code, width), random);
}

}  // namespace mixdecks::proof
