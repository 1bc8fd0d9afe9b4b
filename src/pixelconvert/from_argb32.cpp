#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb8.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromArgb32() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<ReversePixels>(kBgra),
      Cell<MoveFields<Argb, Rgba>>(kRgba),
      Cell<CutToVideo<Argb, R210>>(kR210Video),
      Cell<CutToVideo<Argb, R10Big>>(kR10BigVideo),
      Cell<CutToVideo<Argb, R10Little>>(kR10LittleVideo),
      Cell<MoveFields<Argb, R210>>(kR210Full),
      Cell<MoveFields<Argb, R10Big>>(kR10BigFull),
      Cell<MoveFields<Argb, R10Little>>(kR10LittleFull),
      Cell<MoveFields<Argb, R10Alpha>>(kR10Alpha),
      CrossingCell<RgbToYuv, ArgbSource, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, ArgbSource, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
