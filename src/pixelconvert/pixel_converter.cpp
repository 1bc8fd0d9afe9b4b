#include "pixelconvert/pixel_converter.h"

#include "pixelconvert/converter_rows.h"

namespace mixdecks {
namespace {

using RowOf = ConverterRow (*)();

struct SourceRow {
  PixelFormatCode source;
  RowOf row;
};

constexpr SourceRow kRows[] = {
    {kArgb32, RowFromArgb32},
    {kBgra, RowFromBgra},
    {kRgba, RowFromRgba},
    {kBgrx, RowFromBgrx},
    {kRgb3, RowFromRgb3},
    {kR210Video, RowFromR210Video},
    {kR210Full, RowFromR210Full},
    {kR10BigVideo, RowFromR10BigVideo},
    {kR10LittleVideo, RowFromR10LittleVideo},
    {kR10BigFull, RowFromR10BigFull},
    {kR10Alpha, RowFromR10BigFull},
    {kR10LittleFull, RowFromR10LittleFull},
    {kR12Big, RowFromR12Big},
    {kR12Little, RowFromR12Little},
    {k2vuy, RowFrom2vuy},
    {kV210, RowFromV210ToRgb8},
    {kV210, RowFromV210ToRgb10},
    {kV210, RowFromV210To2vuy},
    {kAy10, RowFromAy10},
};

const ConverterCell* FindCell(PixelFormatCode source, PixelFormatCode destination) {
  for (const SourceRow& candidate : kRows) {
    if (candidate.source != source) continue;
    for (const ConverterCell& cell : candidate.row()) {
      if (cell.destination == destination) return &cell;
    }
  }
  return nullptr;
}

}  // namespace

PixelConverter GetPixelConverter(PixelFormatCode source, PixelFormatCode destination,
                                 ColourSpaceIndex colourSpace) noexcept {
  const ConverterCell* cell = FindCell(source, destination);
  if (cell == nullptr) return nullptr;
  if (colourSpace == kRec601 || !DependsOnColourSpace(source, destination)) return cell->rec601;
  return colourSpace == kRec709 ? cell->rec709 : nullptr;
}

}  // namespace mixdecks
