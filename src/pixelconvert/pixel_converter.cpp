#include "pixelconvert/pixel_converter.h"

#include "pixelconvert/converter_rows.h"

namespace mixdecks {
namespace {

ConverterRow RowFrom(PixelFormatCode source) {
  switch (source) {
    case kArgb32:
      return RowFromArgb32();
    case kBgra:
      return RowFromBgra();
    case kRgba:
      return RowFromRgba();
    case kRgb3:
      return RowFromRgb3();
    case k2vuy:
      return RowFrom2vuy();
    case kBgrx:
      return RowFromBgrx();
    case kAy10:
      return RowFromAy10();
    default:
      return {};
  }
}

}  // namespace

PixelConverter GetPixelConverter(PixelFormatCode source, PixelFormatCode destination,
                                 ColourSpaceIndex colourSpace) noexcept {
  for (const ConverterCell& cell : RowFrom(source)) {
    if (cell.destination != destination) continue;
    if (!DependsOnColourSpace(source, destination) || colourSpace == kRec601) return cell.rec601;
    return colourSpace == kRec709 ? cell.rec709 : nullptr;
  }
  return nullptr;
}

}  // namespace mixdecks
