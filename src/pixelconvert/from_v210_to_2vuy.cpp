#include "pixelconvert/converter_rows.h"
#include "pixelconvert/yuv_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromV210To2vuy() {
  static constexpr ConverterCell kCells[] = {
      Cell<V210ToTwoVuy>(k2vuy),
  };
  return kCells;
}

}  // namespace mixdecks
