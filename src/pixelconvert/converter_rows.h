// The cells of the grid as the units of the source formats hold them.
#pragma once

#include <span>

#include "pixelconvert/kernel_frame.h"
#include "pixelconvert/pixel_converter.h"

namespace mixdecks {

/// One destination of a source format: a converter for each colour space, twice the same where the
/// colour space has no say.
struct ConverterCell {
  PixelFormatCode destination;
  PixelConverter rec601;
  PixelConverter rec709;
};

using ConverterRow = std::span<const ConverterCell>;

/// A cell that ignores the colour space.
template <class Kernel>
constexpr ConverterCell Cell(PixelFormatCode destination) {
  return {destination, ConvertRows<Kernel>, ConvertRows<Kernel>};
}

/// A cell that crosses between RGB and YUV, with a kernel for each colour space.
template <template <ColourSpaceIndex, class...> class Kernel, class... Parts>
constexpr ConverterCell CrossingCell(PixelFormatCode destination) {
  return {destination, ConvertRows<Kernel<kRec601, Parts...>>,
          ConvertRows<Kernel<kRec709, Parts...>>};
}

// The rows, each in the unit that is named after it. `R10A` reads as `R10B` and shares its row; the
// row of `v210` stands in three units by the kind of destination.
ConverterRow RowFromArgb32();
ConverterRow RowFromBgra();
ConverterRow RowFromRgba();
ConverterRow RowFromBgrx();
ConverterRow RowFromRgb3();
ConverterRow RowFromR210Video();
ConverterRow RowFromR210Full();
ConverterRow RowFromR10BigVideo();
ConverterRow RowFromR10LittleVideo();
ConverterRow RowFromR10BigFull();
ConverterRow RowFromR10LittleFull();
ConverterRow RowFromR12Big();
ConverterRow RowFromR12Little();
ConverterRow RowFrom2vuy();
ConverterRow RowFromV210ToRgb8();
ConverterRow RowFromV210ToRgb10();
ConverterRow RowFromV210To2vuy();
ConverterRow RowFromAy10();

}  // namespace mixdecks
