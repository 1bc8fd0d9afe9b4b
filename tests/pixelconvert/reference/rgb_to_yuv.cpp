#include "tests/pixelconvert/reference/families.h"
#include "tests/pixelconvert/reference/formats.h"
#include "tests/pixelconvert/reference/rgb_rows.h"
#include "tests/pixelconvert/reference/yuv_rows.h"

namespace mixdecks::reference {
namespace {

// Everything that a pair's depths and range decide.
struct Transform {
  const ForwardMatrix& matrix;
  int shift;
  int lumaOffset, chromaOffset;
  int highest;
};

Transform TransformOf(const Format& from, PixelFormatCode destination,
                      ColourSpaceIndex colourSpace) {
  const int sourceBits = from.kind == Kind::kRgb8 ? 8 : 10;
  const int bits = destination == k2vuy ? 8 : 10;
  const int black = bits == 8 ? 16 : 64;
  return {from.videoRange ? kUnityForward[colourSpace] : kScaledForward[colourSpace],
          15 + sourceBits - bits, from.videoRange ? 0 : black, bits == 8 ? 128 : 512,
          HighestSample(bits)};
}

// The colour at an even column: its two neighbours averaged, then the result with itself. The
// first pixel stands in for its missing neighbour.
Colour Filtered(const std::vector<Colour>& pixels, std::size_t even) {
  const Colour& left = pixels[even == 0 ? 0 : even - 1];
  const Colour& centre = pixels[even];
  const Colour& right = pixels[even + 1];
  return {Average(Average(left.r, right.r), centre.r), Average(Average(left.g, right.g), centre.g),
          Average(Average(left.b, right.b), centre.b), 0};
}

}  // namespace

Bytes RgbToYuv(PixelFormatCode source, PixelFormatCode destination, ColourSpaceIndex colourSpace,
               std::size_t width, Row row) {
  const Transform t = TransformOf(FormatOf(source), destination, colourSpace);
  const auto luma = [&t](const Colour& colour) {
    return Forward(t.matrix.y, colour, t.shift, t.lumaOffset, t.highest);
  };
  const auto chroma = [&t](const ForwardRow& weights, const Colour& colour) {
    return Forward(weights, colour, t.shift, t.chromaOffset, t.highest);
  };

  std::vector<PixelPair> pairs(PairsOfRow(destination, width));
  const std::vector<Colour> pixels = ReadRgbRow(source, row, 2 * pairs.size());
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    const Colour& even = pixels[2 * k];
    const Colour& odd = pixels[2 * k + 1];
    const Colour filtered = Filtered(pixels, 2 * k);
    pairs[k] = {{chroma(t.matrix.cb, filtered), chroma(t.matrix.cr, filtered)},
                {luma(even), luma(odd)},
                {WidenAlpha(even.a), WidenAlpha(odd.a)}};
  }
  return WriteYuvRow(destination, pairs);
}

}  // namespace mixdecks::reference
