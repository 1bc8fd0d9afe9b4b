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

// In a small run: widths apart by a number that is prime to every block, and few named ones.
constexpr std::uint32_t kSmallStep = 11;
constexpr std::size_t kSmallNamedStep = 2;

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

std::vector<std::uint32_t> WidthsOf(const Conversion& conversion, const Plan& plan) {
  if (TheOptions().width) return {*TheOptions().width};
  const bool small = plan.effort == Effort::kSmall;
  const std::uint32_t smallest = std::max(
      reference::SmallestLegalWidth(conversion.source->code, conversion.destination->code), 1u);
  std::vector<std::uint32_t> widths;
  for (std::uint32_t w = smallest; w <= kWidestOfAll; w += small ? kSmallStep : 1) {
    widths.push_back(w);
  }
  for (std::size_t i = 0; i < kNamedWidths.size(); i += small ? kSmallNamedStep : 1) {
    widths.push_back(kNamedWidths[i]);
  }
  return widths;
}

std::vector<Picture> PicturesOf(const Conversion& conversion, std::uint32_t width,
                                const Plan& plan) {
  const std::size_t rows = width <= kWidestOfAll ? plan.rows : plan.rowsOfNamedWidths;
  std::vector<Picture> pictures;
  for (std::size_t i = 0; i < kContents.size() * plan.repeats; ++i) {
    Random random(SeedOf(conversion, width, i));
    Rows source;
    for (std::size_t row = 0; row < rows; ++row) {
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
  const std::size_t pictures = kContents.size() * plan.repeats;
  for (const Conversion& conversion : conversions) {
    pairs.emplace(conversion.source->code, conversion.destination->code);
    ++totals.conversions;
    for (const std::uint32_t width : WidthsOf(conversion, plan)) {
      ++totals.widths;
      const std::size_t rows = width <= kWidestOfAll ? plan.rows : plan.rowsOfNamedWidths;
      for (std::size_t i = 0; i < pictures; ++i) {
        // Every check converts twice.
        const std::size_t calls = 2 * LayoutsOf(width, i, plan).size();
        totals.calls += calls;
        totals.pixels += calls * rows * width;
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
