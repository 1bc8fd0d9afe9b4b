#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb8.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromRgba() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<MoveFields<Rgba, Argb>>(kArgb32),
      Cell<MoveFields<Rgba, Bgra>>(kBgra),
      Cell<MoveFields<Rgba, Rgb3>>(kRgb3),
      Cell<CutToVideo<Rgba, R210>>(kR210Video),
      Cell<CutToVideo<Rgba, R10Big>>(kR10BigVideo),
      Cell<CutToVideo<Rgba, R10Little>>(kR10LittleVideo),
      Cell<MoveFields<Rgba, R210>>(kR210Full),
      Cell<MoveFields<Rgba, R10Big>>(kR10BigFull),
      Cell<MoveFields<Rgba, R10Little>>(kR10LittleFull),
      Cell<MoveFields<Rgba, R10Alpha>>(kR10Alpha),
      CrossingCell<RgbToYuv, RgbaSource, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, RgbaSource, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
