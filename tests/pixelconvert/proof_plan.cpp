#include "tests/pixelconvert/proof_plan.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace mixdecks::proof {
namespace {

using reference::Pair;

constexpr std::uint32_t kWidestOfAll = 300;

// Common rows, the widths that some converters treat by name, and their neighbours.
constexpr std::array<std::uint32_t, 14> kNamedWidths = {719,  720,  1280, 1281, 1282, 1284, 1286,
                                                        1919, 1920, 2048, 2050, 3840, 4096, 4100};

// In a small run: widths apart by a number that is prime to every block.
constexpr std::uint32_t kSmallStep = 11;

bool IsWanted(const Pair& pair) {
  const Options& options = TheOptions();
  return options.source.empty() ||
         (options.source == pair.source->name && options.destination == pair.destination->name);
}

std::uint64_t SeedOf(const Conversion& conversion, std::uint32_t width, std::size_t picture) {
  Random mix(TheOptions().seed);
  for (const std::uint64_t part :
       {std::uint64_t{conversion.source->code}, std::uint64_t{conversion.destination->code},
        std::uint64_t{conversion.colourSpace}, std::uint64_t{width}, std::uint64_t{picture}}) {
    mix = Random(mix.Next() ^ part);
  }
  return mix.Next();
}

std::string WithSeparators(std::size_t number) {
  const std::string digits = std::to_string(number);
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) text += ',';
    text += digits[i];
  }
  return text;
}

std::size_t PictureCount(const Plan& plan) {
  return kContents.size() * plan.repeats;
}

// The last picture is a row alone.
std::size_t RowCount(const Plan& plan, std::uint32_t width, std::size_t picture) {
  if (picture + 1 == PictureCount(plan)) return 1;
  return width <= kWidestOfAll ? plan.rows : plan.rowsOfNamedWidths;
}

std::uint32_t SmallestWidthOf(const Conversion& conversion) {
  return std::max(
      reference::SmallestLegalWidth(conversion.source->code, conversion.destination->code), 1u);
}

std::string_view NameOf(Effort effort) {
  switch (effort) {
    case Effort::kSmall:
      return "small";
    case Effort::kFull:
      return "full";
    case Effort::kDefault:
      break;
  }
  return "default";
}

}  // namespace

Plan ThePlan() {
  switch (TheOptions().effort) {
    case Effort::kSmall:
      return {Effort::kSmall, 3, 2, 1};
    case Effort::kFull:
      return {Effort::kFull, 5, 3, 12};
    case Effort::kDefault:
      break;
  }
  return {Effort::kDefault, 3, 2, 3};
}

std::vector<Conversion> AllConversions() {
  std::vector<Conversion> all;
  for (const Pair& pair : reference::SupportedPairs()) {
    if (!IsWanted(pair)) continue;
    const std::uint32_t spaces = pair.cell.usesColourSpace ? 2 : 1;
    for (ColourSpaceIndex space = 0; space < spaces; ++space) {
      all.push_back({pair.source, pair.destination, space,
                     GetPixelConverter(pair.source->code, pair.destination->code, space)});
    }
  }
  return all;
}

std::optional<std::string> ProblemOf(const Options& options) {
  const std::vector<Conversion> wanted = AllConversions();
  if (wanted.empty()) {
    return "there is no conversion from '" + options.source + "' to '" + options.destination +
           "': the names of formats are those of the catalogue, as in --pair=BGRA:ay10";
  }
  if (!options.width) return std::nullopt;
  for (const Conversion& conversion : wanted) {
    if (*options.width < SmallestWidthOf(conversion)) {
      return "--width=" + std::to_string(*options.width) + " is too narrow for " +
             Describe(conversion) + ", which begins at " +
             std::to_string(SmallestWidthOf(conversion));
    }
  }
  return std::nullopt;
}

std::vector<std::uint32_t> WidthsOf(const Conversion& conversion, const Plan& plan) {
  if (TheOptions().width) return {*TheOptions().width};
  const std::uint32_t step = plan.effort == Effort::kSmall ? kSmallStep : 1;
  std::vector<std::uint32_t> widths;
  for (std::uint32_t w = SmallestWidthOf(conversion); w <= kWidestOfAll; w += step)
    widths.push_back(w);
  widths.insert(widths.end(), kNamedWidths.begin(), kNamedWidths.end());
  return widths;
}

std::vector<Picture> PicturesOf(const Conversion& conversion, std::uint32_t width,
                                const Plan& plan) {
  std::vector<Picture> pictures;
  for (std::size_t i = 0; i < PictureCount(plan); ++i) {
    Random random(SeedOf(conversion, width, i));
    Rows source;
    for (std::size_t row = 0; row < RowCount(plan, width, i); ++row) {
      const Content content = kContents[i % kContents.size()].content;
      source.push_back(MakeRow(*conversion.source, width, content, random));
    }
    pictures.push_back(MakePicture(conversion, width, std::move(source)));
  }
  return pictures;
}

std::vector<Layout> LayoutsOf(std::uint32_t width, std::size_t picture, const Plan& plan) {
  if (plan.effort != Effort::kSmall) return {kLayouts.begin(), kLayouts.end()};
  // Both guards always, and two of the others in turn.
  const std::size_t turn = (width + picture) % (kLayouts.size() - 2);
  return {kLayouts[0], kLayouts[1], kLayouts[2 + turn],
          kLayouts[2 + (turn + 3) % (kLayouts.size() - 2)]};
}

Totals Count(const Plan& plan, const std::vector<Conversion>& conversions) {
  Totals totals;
  std::set<std::pair<PixelFormatCode, PixelFormatCode>> pairs;
  for (const Conversion& conversion : conversions) {
    pairs.emplace(conversion.source->code, conversion.destination->code);
    ++totals.conversions;
    for (const std::uint32_t width : WidthsOf(conversion, plan)) {
      ++totals.widths;
      for (std::size_t i = 0; i < PictureCount(plan); ++i) {
        // Every check converts twice.
        const std::size_t calls = 2 * LayoutsOf(width, i, plan).size();
        totals.calls += calls;
        totals.pixels += calls * RowCount(plan, width, i) * width;
      }
    }
  }
  totals.pairs = pairs.size();
  return totals;
}

std::string Announce(const Plan& plan) {
  const Totals totals = Count(plan, AllConversions());
  return "[ proof    ] " + std::string(NameOf(plan.effort)) + " run, seed " +
         std::to_string(TheOptions().seed) + ": " + std::to_string(totals.pairs) + " of " +
         std::to_string(reference::SupportedPairs().size()) + " pairs, " +
         std::to_string(totals.conversions) + " conversions with both colour spaces, " +
         WithSeparators(totals.widths) + " widths, " + WithSeparators(totals.calls) + " calls, " +
         WithSeparators(totals.pixels) + " pixels to be compared\n";
}

}  // namespace mixdecks::proof
