#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_ay10.h"
#include "pixelconvert/layout_rgb8.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromBgrx() {
  static constexpr ConverterCell kCells[] = {
      CrossingCell<RgbToYuv, BgrxSource, Ay10Destination>(kAy10),
  };
  return kCells;
}

}  // namespace mixdecks
