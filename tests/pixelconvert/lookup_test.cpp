// The lookup over every pair of codes there is, and some that there are not.
#include <gmock/gmock.h>

#include <array>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pixelconvert/pixel_converter.h"
#include "tests/pixelconvert/reference/grid.h"

namespace mixdecks {
namespace {

using namespace std::literals;

using reference::Cell;
using reference::CellOf;
using reference::Format;
using reference::FormatNamed;
using reference::kFormats;
using reference::SupportedPairs;

constexpr std::array<ColourSpaceIndex, 4> kColourSpaces = {0, 1, 2, 0xFFFFFFFF};

PixelConverter Lookup(std::string_view source, std::string_view destination,
                      ColourSpaceIndex colourSpace) {
  return GetPixelConverter(FormatNamed(source).code, FormatNamed(destination).code, colourSpace);
}

std::string PairName(const Format& source, const Format& destination) {
  return std::string(source.name) + " to " + std::string(destination.name);
}

TEST(Grid, HasSeventeenFormatsAnd168Pairs) {
  EXPECT_EQ(kPixelFormats.size(), 17u);
  int pairs = 0;
  for (const PixelFormat& source : kPixelFormats) {
    for (const PixelFormat& destination : kPixelFormats)
      pairs += GetPixelConverter(source.code, destination.code, 0) != nullptr;
  }
  EXPECT_EQ(pairs, 168);
}

struct NamedPair {
  std::string_view source, destination;
};

const std::vector<std::vector<NamedPair>>& SharingPairs() {
  static const std::vector<std::vector<NamedPair>> shared = {
      {{"32", "BGRA"}, {"BGRA", "32"}},
      {{"R210", "R10B"}, {"r210", "R10b"}},
      {{"R210", "R10L"}, {"r210", "R10l"}},
      {{"R10L", "R10B"}, {"R10l", "R10b"}},
      {{"R10L", "R210"}, {"R10l", "r210"}},
      {{"R10A", "R10L"}, {"R10B", "R10L"}, {"R10b", "R10l"}},
      {{"R10A", "R210"}, {"R10B", "R210"}, {"R10b", "r210"}},
      {{"R12L", "32"}, {"R12L", "BGRA"}},
      {{"R12B", "32"}, {"R12B", "BGRA"}},
  };
  return shared;
}

constexpr std::array kDestinationsOfR10A = {"R10A"sv, "R10b"sv, "R10l"sv, "r210"sv,
                                            "R210"sv, "R10L"sv, "32"sv,   "BGRA"sv,
                                            "RGBA"sv, "RGB3"sv, "2vuy"sv, "v210"sv};

TEST(Lookup, HasTheNumbersOfDifferentConvertersOfEachBlock) {
  std::map<std::pair<std::uint32_t, bool>, std::set<PixelConverter>> converters;
  std::set<PixelConverter> all;
  for (const reference::Pair& pair : SupportedPairs()) {
    auto& sameBlock = converters[{pair.cell.block, pair.cell.hasNamedWidths}];
    for (const ColourSpaceIndex space : {kRec601, kRec709}) {
      const PixelConverter converter =
          GetPixelConverter(pair.source->code, pair.destination->code, space);
      sameBlock.insert(converter);
      all.insert(converter);
    }
  }
  EXPECT_EQ((converters[{4, false}].size()), 74u);
  EXPECT_EQ((converters[{8, false}].size()), 53u);
  EXPECT_EQ((converters[{16, false}].size()), 21u);
  EXPECT_EQ((converters[{12, false}].size()), 18u);
  EXPECT_EQ((converters[{24, false}].size()), 6u);
  EXPECT_EQ((converters[{48, false}].size()), 2u);
  EXPECT_EQ((converters[{12, true}].size()), 20u);
  EXPECT_EQ((converters[{48, true}].size()), 2u);
  EXPECT_EQ(all.size(), 196u) << "converters of different blocks are never the same";
}

TEST(PixelFormat, CodesAreTheirLetters) {
  const std::array codes = {kArgb32,        kBgra,     kBgrx,        kRgba,           kRgb3,
                            kR210Video,     kR210Full, kR10BigVideo, kR10LittleVideo, kR10BigFull,
                            kR10LittleFull, kR10Alpha, kR12Big,      kR12Little,      k2vuy,
                            kV210,          kAy10};
  ASSERT_EQ(codes.size(), kFormats.size());
  for (std::size_t i = 0; i < codes.size(); ++i) {
    EXPECT_EQ(codes[i], kFormats[i].code) << kFormats[i].name;
    if (codes[i] == kArgb32) continue;
    std::uint32_t letters = 0;
    for (const char letter : kFormats[i].name) {
      letters = letters << 8 | static_cast<unsigned char>(letter);
    }
    EXPECT_EQ(codes[i], letters) << kFormats[i].name;
  }
}

TEST(Lookup, FollowsTheGridOverAllPairs) {
  for (const Format& source : kFormats) {
    for (const Format& destination : kFormats) {
      const Cell cell = CellOf(source.code, destination.code);
      for (const ColourSpaceIndex space : kColourSpaces) {
        const bool expected = cell.block != 0 && (!cell.usesColourSpace || space < 2);
        EXPECT_EQ(GetPixelConverter(source.code, destination.code, space) != nullptr, expected)
            << PairName(source, destination) << ", colour space " << space;
      }
    }
  }
}

TEST(Lookup, KnownAnswers) {
  const PixelConverter toRgba = Lookup("BGRA", "RGBA", 0);
  EXPECT_NE(toRgba, nullptr);
  EXPECT_EQ(Lookup("BGRA", "RGBA", 2), toRgba);
  EXPECT_EQ(Lookup("BGRA", "RGBA", 0xFFFFFFFF), toRgba);
  EXPECT_EQ(Lookup("BGRA", "ay10", 2), nullptr);
  EXPECT_EQ(Lookup("ay10", "ay10", 0), nullptr);
  EXPECT_EQ(Lookup("BGRA", "BGRA", 0), nullptr);
  EXPECT_EQ(Lookup("32", "RGB3", 0), nullptr);
  EXPECT_EQ(Lookup("R10A", "R10B", 0), nullptr);
  EXPECT_NE(GetPixelConverter(32, kBgra, 0), nullptr);
  EXPECT_EQ(GetPixelConverter(0, kBgra, 0), nullptr);
  EXPECT_EQ(GetPixelConverter(kBgra, 0, 0), nullptr);
}

TEST(Lookup, UnknownCodesGiveNothing) {
  const std::array<PixelFormatCode, 9> unknown = {
      0, 1, 33, 0xFFFFFFFF, 0x41524742, 0x42475200, 0x62677261, 0x52474232, 0x30313279};
  for (const PixelFormatCode code : unknown) {
    for (const ColourSpaceIndex space : kColourSpaces) {
      for (const Format& format : kFormats) {
        EXPECT_EQ(GetPixelConverter(code, format.code, space), nullptr) << code << format.name;
        EXPECT_EQ(GetPixelConverter(format.code, code, space), nullptr) << format.name << code;
      }
      EXPECT_EQ(GetPixelConverter(code, code, space), nullptr) << code;
    }
  }
}

TEST(Lookup, ThereIsNoIdentityButR10A) {
  for (const Format& format : kFormats) {
    const bool there = GetPixelConverter(format.code, format.code, 0) != nullptr;
    EXPECT_EQ(there, format.name == "R10A") << format.name;
  }
}

TEST(Lookup, TheColourSpacesOfAPairAreDifferentFunctions) {
  for (const reference::Pair& pair : SupportedPairs()) {
    if (!pair.cell.usesColourSpace) continue;
    EXPECT_NE(GetPixelConverter(pair.source->code, pair.destination->code, 0),
              GetPixelConverter(pair.source->code, pair.destination->code, 1))
        << PairName(*pair.source, *pair.destination);
  }
}

TEST(Lookup, OtherPairsIgnoreTheColourSpace) {
  for (const reference::Pair& pair : SupportedPairs()) {
    if (pair.cell.usesColourSpace) continue;
    for (const ColourSpaceIndex space : kColourSpaces) {
      EXPECT_EQ(GetPixelConverter(pair.source->code, pair.destination->code, 0),
                GetPixelConverter(pair.source->code, pair.destination->code, space))
          << PairName(*pair.source, *pair.destination) << ", colour space " << space;
    }
  }
}

TEST(Lookup, PairsOfOneMeaningShareOneConverter) {
  for (const auto& group : SharingPairs()) {
    for (const NamedPair& pair : group) {
      EXPECT_EQ(Lookup(pair.source, pair.destination, 0),
                Lookup(group[0].source, group[0].destination, 0))
          << pair.source << " to " << pair.destination;
    }
  }
}

TEST(Lookup, R10AIsReadByTheConvertersOfR10B) {
  for (const std::string_view destination : kDestinationsOfR10A) {
    for (const ColourSpaceIndex space : kColourSpaces) {
      EXPECT_EQ(Lookup("R10A", destination, space), Lookup("R10B", destination, space))
          << "to " << destination << ", colour space " << space;
    }
  }
}

TEST(Lookup, RepeatsItsAnswers) {
  for (const reference::Pair& pair : SupportedPairs()) {
    for (const ColourSpaceIndex space : kColourSpaces) {
      EXPECT_EQ(GetPixelConverter(pair.source->code, pair.destination->code, space),
                GetPixelConverter(pair.source->code, pair.destination->code, space));
    }
  }
}

}  // namespace
}  // namespace mixdecks
