#include "tests/pixelconvert/reference/families.h"
#include "tests/pixelconvert/reference/yuv_rows.h"

namespace mixdecks::reference {

Bytes YuvToYuv(PixelFormatCode source, PixelFormatCode destination, std::size_t width, Row row) {
  std::vector<PixelPair> pairs = ReadYuvRow(source, row, PairsOfRow(destination, width));
  const auto convert = [source](int v) { return source == k2vuy ? v << 2 : v >> 2; };
  for (PixelPair& pair : pairs) {
    pair = {{convert(pair.chroma.cb), convert(pair.chroma.cr)},
            {convert(pair.y[0]), convert(pair.y[1])},
            {1023, 1023}};
  }
  return WriteYuvRow(destination, pairs);
}

}  // namespace mixdecks::reference
