#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb10.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromR10BigFull() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<MoveFields<R10Big, Argb>>(kArgb32),
      Cell<MoveFields<R10Big, Bgra>>(kBgra),
      Cell<MoveFields<R10Big, Rgba>>(kRgba),
      Cell<MoveFields<R10Big, Rgb3>>(kRgb3),
      Cell<CutToVideo<R10Big, R210>>(kR210Video),
      Cell<CutToVideo<R10Big, R10Big>>(kR10BigVideo),
      Cell<CutToVideo<R10Big, R10Little>>(kR10LittleVideo),
      Cell<MoveFields<R10Big, R210>>(kR210Full),
      Cell<MoveFields<R10Big, R10Little>>(kR10LittleFull),
      Cell<CopyOpaque>(kR10Alpha),
      CrossingCell<RgbToYuv, Rgb10Source<R10Big, SampleRange::kFull>, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, Rgb10Source<R10Big, SampleRange::kFull>, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
