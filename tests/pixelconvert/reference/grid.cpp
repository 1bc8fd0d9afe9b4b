#include "tests/pixelconvert/reference/grid.h"

#include <array>
#include <sstream>
#include <string>
#include <string_view>

namespace mixdecks::reference {
namespace {

// A row is a source, a column a destination. The number is the block, `c` marks a pair that
// depends on the colour space, `*` one that treats some widths by name.
constexpr std::string_view kGrid = R"(
from 32   BGRA RGBA RGB3 r210 R210 R10b R10l R10B R10L R10A R12B R12L 2vuy v210 ay10
32   .    4    4    .    4    4    4    4    4    4    4    .    .    8c   12c  .
BGRA 4    .    4    .    8    8    4    4    4    4    4    8    8    8c   12c  4c
RGBA 4    4    .    16   4    4    4    4    4    4    4    .    .    8c   12c  .
BGRX .    .    .    .    .    .    .    .    .    .    .    .    .    .    .    4c
RGB3 16   16   16   .    16   16   16   16   16   16   16   .    .    16c  48c  .
r210 4    8    4    16   .    8    4    4    4    4    4    .    .    8c   12c  .
R210 4    8    4    16   8    .    4    4    4    4    4    .    .    8c   12c  .
R10b 4    4    4    16   4    4    .    4    4    4    4    .    .    8c   12c  .
R10l 4    4    4    16   4    4    4    .    4    4    4    .    .    8c   12c  .
R10B 4    4    4    16   4    4    4    4    .    4    4    .    .    8c   12c  .
R10L 4    4    4    16   4    4    4    4    4    .    4    .    .    8c   12c  .
R10A 4    4    4    16   4    4    4    4    .    4    4    .    .    8c   12c  .
R12B 8    8    .    .    .    .    .    .    .    .    .    .    .    8c   24c  .
R12L 8    8    .    .    .    .    .    .    .    .    .    .    .    8c   24c  .
2vuy 8c   8c   8c   16c  8c   8c   8c   8c   8c   8c   8c   .    .    .    24   8
v210 12c* 12c* 12c* 48c* 12c* 12c* 12c* 12c* 12c* 12c* 12c* .    .    24   .    .
ay10 .    4c   .    .    .    .    .    .    .    .    .    .    .    .    .    .
)";

Cell ParseCell(const std::string& text) {
  if (text == ".") return {};
  return {static_cast<std::uint32_t>(std::stoul(text)), text.find('c') != std::string::npos,
          text.find('*') != std::string::npos};
}

std::vector<Pair> ParseGrid() {
  std::istringstream lines{std::string(kGrid)};
  std::string line, word;
  std::vector<const Format*> columns;
  std::vector<Pair> pairs;
  while (std::getline(lines, line)) {
    std::istringstream words(line);
    if (!(words >> word)) continue;
    if (word == "from") {
      while (words >> word)
        columns.push_back(&FormatNamed(word));
      continue;
    }
    const Format* source = &FormatNamed(word);
    for (const Format* destination : columns) {
      words >> word;
      if (const Cell cell = ParseCell(word); cell.block != 0) {
        pairs.push_back({source, destination, cell});
      }
    }
  }
  return pairs;
}

std::uint32_t SmallestLegalWidthToYuv(const Format& source, PixelFormatCode destination) {
  if (destination == kAy10) return 4;
  if (source.code == kRgb3) return destination == k2vuy ? 16 : 48;
  if (source.kind == Kind::kRgb12) return destination == k2vuy ? 8 : 24;
  return destination == k2vuy ? 8 : 12;
}

}  // namespace

const std::vector<Pair>& SupportedPairs() {
  static const std::vector<Pair> pairs = ParseGrid();
  return pairs;
}

Cell CellOf(PixelFormatCode source, PixelFormatCode destination) {
  for (const Pair& pair : SupportedPairs()) {
    if (pair.source->code == source && pair.destination->code == destination) return pair.cell;
  }
  return {};
}

std::uint32_t SmallestLegalWidth(PixelFormatCode source, PixelFormatCode destination) {
  const Format& from = FormatOf(source);
  const Format& to = FormatOf(destination);
  if (from.kind != Kind::kYuv && to.kind != Kind::kYuv) return 0;
  if (from.kind != Kind::kYuv) return SmallestLegalWidthToYuv(from, destination);
  if (source == k2vuy || to.kind == Kind::kYuv) return 1;
  if (source == kAy10) return 5;
  return destination == kRgb3 ? 49 : 13;
}

}  // namespace mixdecks::reference
