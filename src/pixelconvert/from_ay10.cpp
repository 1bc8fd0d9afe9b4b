#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_ay10.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/yuv_to_rgb.h"

namespace mixdecks {

ConverterRow RowFromAy10() {
  static constexpr ConverterCell kCells[] = {
      CrossingCell<YuvToRgb, Ay10Source, BgraVideoAlphaDestination,
                   WholeBlocksRepeat<kAy10, kBgra>>(kBgra),
  };
  return kCells;
}

}  // namespace mixdecks
