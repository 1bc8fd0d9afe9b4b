#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_ay10.h"
#include "pixelconvert/layout_rgb8.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"
#include "pixelconvert/twelve_bit.h"

namespace mixdecks {

ConverterRow RowFromBgra() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<ReversePixels>(kArgb32),
      Cell<MoveFields<Bgra, Rgba>>(kRgba),
      Cell<CutToVideo<Bgra, R210>>(kR210Video),
      Cell<CutToVideo<Bgra, R10Big>>(kR10BigVideo),
      Cell<CutToVideo<Bgra, R10Little>>(kR10LittleVideo),
      Cell<MoveFields<Bgra, R210>>(kR210Full),
      Cell<MoveFields<Bgra, R10Big>>(kR10BigFull),
      Cell<MoveFields<Bgra, R10Little>>(kR10LittleFull),
      Cell<MoveFields<Bgra, R10Alpha>>(kR10Alpha),
      Cell<BgraToTwelveBit<ByteOrder::kBig>>(kR12Big),
      Cell<BgraToTwelveBit<ByteOrder::kLittle>>(kR12Little),
      CrossingCell<RgbToYuv, BgraSource, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, BgraSource, V210Destination>(kV210),
      CrossingCell<RgbToYuv, BgraSource, Ay10Destination>(kAy10),
  };
  return kCells;
}

}  // namespace mixdecks
