#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb8.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromRgb3() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<MoveFields<Rgb3, Argb>>(kArgb32),
      Cell<MoveFields<Rgb3, Bgra>>(kBgra),
      Cell<MoveFields<Rgb3, Rgba>>(kRgba),
      Cell<CutToVideo<Rgb3, R210>>(kR210Video),
      Cell<CutToVideo<Rgb3, R10Big>>(kR10BigVideo),
      Cell<CutToVideo<Rgb3, R10Little>>(kR10LittleVideo),
      Cell<MoveFields<Rgb3, R210>>(kR210Full),
      Cell<MoveFields<Rgb3, R10Big>>(kR10BigFull),
      Cell<MoveFields<Rgb3, R10Little>>(kR10LittleFull),
      Cell<MoveFields<Rgb3, R10Alpha>>(kR10Alpha),
      CrossingCell<RgbToYuv, Rgb3Source, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, Rgb3Source, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
