#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_ay10.h"
#include "pixelconvert/layout_rgb8.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromBgra() {
  static constexpr ConverterCell kCells[] = {
      CrossingCell<RgbToYuv, BgraSource, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, BgraSource, V210Destination>(kV210),
      CrossingCell<RgbToYuv, BgraSource, Ay10Destination>(kAy10),
  };
  return kCells;
}

}  // namespace mixdecks
