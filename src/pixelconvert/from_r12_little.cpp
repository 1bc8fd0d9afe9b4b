// clang-format off
#include "pixelconvert/uncontracted_floats.h"  // first of all
// clang-format on

#include "pixelconvert/converter_rows.h"
#include "pixelconvert/rgb12_to_yuv.h"
#include "pixelconvert/twelve_bit.h"

namespace mixdecks {
namespace {

template <ColourSpaceIndex kSpace, class Destination>
using ToYuv = TwelveBitToYuv<kSpace, ByteOrder::kLittle, Destination>;

}  // namespace

ConverterRow RowFromR12Little() {
  static constexpr ConverterCell kCells[] = {
      Cell<TwelveBitToArgb<ByteOrder::kLittle>>(kArgb32),
      Cell<TwelveBitToArgb<ByteOrder::kLittle>>(kBgra),
      CrossingCell<ToYuv, TwoVuyFromFloats>(k2vuy),
      CrossingCell<ToYuv, V210FromFloats>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
