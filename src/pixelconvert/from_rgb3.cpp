#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb8.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromRgb3() {
  static constexpr ConverterCell kCells[] = {
      CrossingCell<RgbToYuv, Rgb3Source, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, Rgb3Source, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
