// The 12-bit pairs. Every floating-point operation is rounded to single precision in the order in
// which it stands here; this file is compiled without contraction.
#include <bit>

#include "tests/pixelconvert/reference/families.h"
#include "tests/pixelconvert/reference/formats.h"
#include "tests/pixelconvert/reference/rgb_rows.h"
#include "tests/pixelconvert/reference/yuv_rows.h"

namespace mixdecks::reference {
namespace {

constexpr float kNormalise = 0.00024420026f;
static_assert(std::bit_cast<std::uint32_t>(kNormalise) == 0x39800801);

struct YCbCr {
  float y, cb, cr;
};

YCbCr Transform(const Colour& pixel, ColourSpaceIndex colourSpace) {
  const float r = static_cast<float>(pixel.r) * kNormalise;
  const float g = static_cast<float>(pixel.g) * kNormalise;
  const float b = static_cast<float>(pixel.b) * kNormalise;
  if (colourSpace == kRec601) {
    return {r * 0.257f + g * 0.504f + b * 0.098f + 0.0625f,
            b * 0.439f - (r * 0.148f + g * 0.291f) + 0.5f,
            r * 0.439f - g * 0.368f - b * 0.071f + 0.5f};
  }
  return {g * 0.614f + r * 0.183f + b * 0.062f + 0.0625f,
          b * 0.439f - (r * 0.101f + g * 0.339f) + 0.5f,
          r * 0.439f - g * 0.399f - b * 0.04f + 0.5f};
}

std::vector<YCbCr> TransformRow(PixelFormatCode source, ColourSpaceIndex colourSpace, Row row,
                                std::size_t count) {
  std::vector<YCbCr> result;
  for (const Colour& pixel : ReadRgbRow(source, row, count)) {
    result.push_back(Transform(pixel, colourSpace));
  }
  return result;
}

int To8(float sample) {
  const float v = std::clamp(sample * 255.0f, 0.0f, 255.0f);
  return static_cast<int>(v + 0.5f);
}

int To12(int v8) {
  const float value = static_cast<float>(v8) / 255.0f;
  return static_cast<int>(std::clamp(value * 4095.0f, 0.0f, 4095.0f));
}

// A step of its own in double precision, the only one.
float Times255(float x) {
  return static_cast<float>(static_cast<double>(x) * 255.0);
}

int RoundTo8(float v) {
  return static_cast<int>(std::clamp(v, 0.0f, 255.0f) + 0.5f);
}

float Filter(float left, float centre, float right) {
  return ((Times255(right) + Times255(left)) * 0.5f + Times255(centre)) * 0.5f;
}

int RoundTo10(float x) {
  return std::clamp(static_cast<int>(x * 1023.0f + 0.5f), 0, 1023);
}

// The neighbour before a group of six is cut where all others are rounded.
int CutTo10(float x) {
  return static_cast<int>(x * 1023.0f);
}

int Filter(int left, int centre, int right) {
  return (((right + left) >> 1) + centre) >> 1;
}

}  // namespace

Bytes BgraToTwelveBit(PixelFormatCode destination, std::size_t width, Row row) {
  std::vector<Colour> pixels = ReadRgbRow(kBgra, row, width);
  for (Colour& pixel : pixels)
    pixel = {To12(pixel.r), To12(pixel.g), To12(pixel.b), 0};
  return WriteRgbRow(destination, pixels);
}

// Both destinations receive the bytes in the order of `32`.
Bytes TwelveBitToRgb8(PixelFormatCode source, std::size_t width, Row row) {
  std::vector<Colour> pixels = ReadRgbRow(source, row, width);
  const auto convert = [](int sample) { return To8(static_cast<float>(sample) * kNormalise); };
  for (Colour& pixel : pixels) {
    pixel = {convert(pixel.r), convert(pixel.g), convert(pixel.b), 255};
  }
  return WriteRgbRow(kArgb32, pixels);
}

Bytes TwelveBitTo2vuy(PixelFormatCode source, ColourSpaceIndex colourSpace, std::size_t width,
                      Row row) {
  std::vector<PixelPair> pairs(PairsOfRow(k2vuy, width));
  const std::vector<YCbCr> pixels = TransformRow(source, colourSpace, row, 2 * pairs.size());
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    const YCbCr& p = pixels[k == 0 ? 0 : 2 * k - 1];
    const YCbCr& a = pixels[2 * k];
    const YCbCr& b = pixels[2 * k + 1];
    pairs[k].chroma = {RoundTo8(Filter(p.cb, a.cb, b.cb)), RoundTo8(Filter(p.cr, a.cr, b.cr))};
    pairs[k].y = {RoundTo8(Times255(a.y)), RoundTo8(Times255(b.y))};
  }
  return WriteYuvRow(k2vuy, pairs);
}

Bytes TwelveBitToV210(PixelFormatCode source, ColourSpaceIndex colourSpace, std::size_t width,
                      Row row) {
  std::vector<PixelPair> pairs(PairsOfRow(kV210, width));
  const std::vector<YCbCr> pixels = TransformRow(source, colourSpace, row, 2 * pairs.size());
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    const bool groupStarts = k % 3 == 0;
    const YCbCr& p = pixels[k == 0 ? 0 : 2 * k - 1];
    const YCbCr& a = pixels[2 * k];
    const YCbCr& b = pixels[2 * k + 1];
    const int leftCb = groupStarts ? CutTo10(p.cb) : RoundTo10(p.cb);
    const int leftCr = groupStarts ? CutTo10(p.cr) & 0xFFFF : RoundTo10(p.cr);
    pairs[k].chroma = {Filter(leftCb, RoundTo10(a.cb), RoundTo10(b.cb)),
                       Filter(leftCr, RoundTo10(a.cr), RoundTo10(b.cr))};
    pairs[k].y = {RoundTo10(a.y), RoundTo10(b.y)};
  }
  return WriteYuvRow(kV210, pairs);
}

}  // namespace mixdecks::reference
