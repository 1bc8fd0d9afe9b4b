#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb8.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromArgb32() {
  static constexpr ConverterCell kCells[] = {
      CrossingCell<RgbToYuv, ArgbSource, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, ArgbSource, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
