#include "tests/pixelconvert/reference/families.h"
#include "tests/pixelconvert/reference/formats.h"
#include "tests/pixelconvert/reference/rgb_rows.h"
#include "tests/pixelconvert/reference/yuv_rows.h"

namespace mixdecks::reference {
namespace {

// Everything that a pair's depths and range decide.
struct Transform {
  const InverseMatrix& matrix;
  int shiftBlue, shiftGreenRed;
  int lumaOffset, chromaOffset;
  int highest;
};

Transform TransformOf(PixelFormatCode source, const Format& to, ColourSpaceIndex colourSpace) {
  const int sourceBits = source == k2vuy ? 8 : 10;
  const int bits = to.kind == Kind::kRgb8 ? 8 : 10;
  const int depth = sourceBits - bits;
  const int black = sourceBits == 8 ? 16 : 64;
  return {to.videoRange ? kUnityInverse[colourSpace] : kScaledInverse[colourSpace],
          13 + depth,
          14 + depth,
          to.videoRange ? 0 : black,
          sourceBits == 8 ? 128 : 512,
          HighestSample(bits)};
}

// Whether the row's last odd pixel takes its pair's chroma as it stands. Otherwise it averages
// with what follows in the row's last group, or with zero behind it.
bool LastPairStandsAlone(PixelFormatCode source, PixelFormatCode destination, std::size_t width) {
  const bool toRgb3 = destination == kRgb3;
  switch (source) {
    case k2vuy:
      return width % (toRgb3 ? 16 : 8) == 0;
    case kV210: {
      const bool namedWidth = width == 1280 || width == 2048 || width == 4096;
      return width % (toRgb3 ? 48 : 12) == 0 || (namedWidth && !toRgb3);
    }
    default:
      return width % 4 == 0;
  }
}

Chroma ChromaAt(const std::vector<PixelPair>& pairs, std::size_t x, bool standsAlone) {
  const Chroma own = pairs[x / 2].chroma;
  if (x % 2 == 0 || standsAlone) return own;
  const Chroma next = pairs[x / 2 + 1].chroma;
  return {Average(own.cb, next.cb), Average(own.cr, next.cr)};
}

}  // namespace

Bytes YuvToRgb(PixelFormatCode source, PixelFormatCode destination, ColourSpaceIndex colourSpace,
               std::size_t width, Row row) {
  const Transform t = TransformOf(source, FormatOf(destination), colourSpace);
  const std::vector<PixelPair> pairs = ReadYuvRow(source, row, PairsOfRow(source, width) + 1);
  std::vector<Colour> pixels(width);
  for (std::size_t x = 0; x < width; ++x) {
    const bool standsAlone = x + 1 == width && LastPairStandsAlone(source, destination, width);
    const Chroma chroma = ChromaAt(pairs, x, standsAlone);
    const PixelPair& pair = pairs[x / 2];
    pixels[x] = Inverse(t.matrix, x % 2 == 1, pair.y[x % 2] - t.lumaOffset,
                        {chroma.cb - t.chromaOffset, chroma.cr - t.chromaOffset}, t.shiftBlue,
                        t.shiftGreenRed, t.highest);
    pixels[x].a = source == kAy10 ? NarrowAlpha(pair.a[x % 2]) : 255;
  }
  return WriteRgbRow(destination, pixels);
}

}  // namespace mixdecks::reference
