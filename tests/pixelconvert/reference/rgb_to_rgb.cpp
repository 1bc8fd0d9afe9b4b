#include "tests/pixelconvert/reference/families.h"
#include "tests/pixelconvert/reference/formats.h"
#include "tests/pixelconvert/reference/rgb_rows.h"

namespace mixdecks::reference {
namespace {

int ConvertSample(const Format& from, const Format& to, int v) {
  if (from.kind == to.kind) {
    if (from.videoRange == to.videoRange) return v;
    return from.videoRange ? VideoToFull10(v) : FullToVideo10(v);
  }
  if (from.kind == Kind::kRgb8) return to.videoRange ? WidenVideo(v) : WidenFull(v);
  return from.videoRange ? NarrowVideo(v) : NarrowFull(v);
}

// Alpha passes between the two formats that are byte reversals of one another, nowhere else.
bool PassesAlpha(PixelFormatCode source, PixelFormatCode destination) {
  return (source == kArgb32 && destination == kBgra) || (source == kBgra && destination == kArgb32);
}

}  // namespace

Bytes RgbToRgb(PixelFormatCode source, PixelFormatCode destination, std::size_t width, Row row) {
  const Format& from = FormatOf(source);
  const Format& to = FormatOf(destination);
  std::vector<Colour> pixels = ReadRgbRow(source, row, width);
  for (Colour& pixel : pixels) {
    pixel.r = ConvertSample(from, to, pixel.r);
    pixel.g = ConvertSample(from, to, pixel.g);
    pixel.b = ConvertSample(from, to, pixel.b);
    if (!PassesAlpha(source, destination)) pixel.a = 255;
  }
  return WriteRgbRow(destination, pixels);
}

}  // namespace mixdecks::reference
