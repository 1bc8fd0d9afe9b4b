// The library's catalogue and grid against the ones the reference was typed with.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "pixelconvert/pixel_converter.h"
#include "tests/pixelconvert/reference/grid.h"

namespace mixdecks {
namespace {

using reference::FormatNamed;
using reference::kFormats;
using reference::Kind;

TEST(Catalogue, NamesTheSeventeenFormats) {
  ASSERT_EQ(kPixelFormats.size(), kFormats.size());
  for (const reference::Format& format : kFormats) {
    const PixelFormat* found = FindPixelFormat(format.code);
    ASSERT_NE(found, nullptr) << format.name;
    EXPECT_EQ(found->code, format.code);
    EXPECT_EQ(found->name, format.name);
    EXPECT_EQ(FindPixelFormat(format.name), found) << format.name;
    EXPECT_EQ(PixelFormatName(format.code), format.name);
    EXPECT_EQ(found->model == ColourModel::kYuv, format.kind == Kind::kYuv) << format.name;
    EXPECT_EQ(found->range == SampleRange::kVideo, format.videoRange) << format.name;
  }
}

TEST(Catalogue, KnowsNoOtherCode) {
  for (const PixelFormatCode code : {0u, 1u, 33u, 0x62677261u, 0x30313276u, 0xFFFFFFFFu}) {
    EXPECT_EQ(FindPixelFormat(code), nullptr) << code;
    EXPECT_EQ(PixelFormatName(code), "") << code;
    EXPECT_EQ(SourceRowBytes(code, 100), 0u) << code;
    EXPECT_EQ(DestinationRowBytes(code, 100), 0u) << code;
  }
  EXPECT_EQ(FindPixelFormat("bgra"), nullptr);
  EXPECT_EQ(FindPixelFormat(""), nullptr);
}

TEST(Catalogue, TellsDepthAndRolesOfAFormat) {
  const auto depth = [](const char* name) {
    return FindPixelFormat(FormatNamed(name).code)->depth;
  };
  for (const char* name : {"32", "BGRA", "BGRX", "RGBA", "RGB3", "2vuy"})
    EXPECT_EQ(depth(name), 8);
  for (const char* name :
       {"r210", "R210", "R10b", "R10l", "R10B", "R10L", "R10A", "v210", "ay10"}) {
    EXPECT_EQ(depth(name), 10) << name;
  }
  for (const char* name : {"R12B", "R12L"})
    EXPECT_EQ(depth(name), 12);
}

TEST(Catalogue, GivesTheBytesOfARow) {
  for (const reference::Format& format : kFormats) {
    for (const std::uint32_t width : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 719u, 1280u, 1920u,
                                      4096u, 0x40000000u, 0xFFFFFFFFu}) {
      EXPECT_EQ(SourceRowBytes(format.code, width), reference::SourceRowBytes(format.code, width))
          << format.name << ", width " << width;
      EXPECT_EQ(DestinationRowBytes(format.code, width),
                reference::DestinationRowBytes(format.code, width))
          << format.name << ", width " << width;
    }
  }
}

TEST(Catalogue, GivesTheBytesOfKnownRows) {
  EXPECT_EQ(DestinationRowBytes(kV210, 1920), 5120u);
  EXPECT_EQ(DestinationRowBytes(kV210, 1280), 3424u);
  EXPECT_EQ(DestinationRowBytes(kV210, 12), 32u);
  EXPECT_EQ(DestinationRowBytes(kV210, 13), 48u);
  EXPECT_EQ(DestinationRowBytes(k2vuy, 13), 28u);
  EXPECT_EQ(SourceRowBytes(k2vuy, 13), 26u);
  EXPECT_EQ(DestinationRowBytes(kAy10, 6), 32u);
  EXPECT_EQ(DestinationRowBytes(kR12Little, 1), 36u);
  EXPECT_EQ(DestinationRowBytes(kR12Big, 9), 72u);
}

TEST(Catalogue, TellsEveryPairsBlockColourSpaceAndSmallestWidth) {
  for (const reference::Format& source : kFormats) {
    for (const reference::Format& destination : kFormats) {
      const reference::Cell cell = reference::CellOf(source.code, destination.code);
      const std::string pair = std::string(source.name) + " to " + std::string(destination.name);
      EXPECT_EQ(WidthBlock(source.code, destination.code), cell.block) << pair;
      EXPECT_EQ(IsSupportedPair(source.code, destination.code), cell.block != 0) << pair;
      EXPECT_EQ(DependsOnColourSpace(source.code, destination.code), cell.usesColourSpace) << pair;
      // A row of no pixels does no harm in some pairs, but the library does not offer it.
      const std::uint32_t smallest =
          cell.block == 0
              ? 0
              : std::max(reference::SmallestLegalWidth(source.code, destination.code), 1u);
      EXPECT_EQ(SmallestWidth(source.code, destination.code), smallest) << pair;
    }
  }
  EXPECT_EQ(CountSupportedPairs(), 168);
}

TEST(Catalogue, KnowsNoPairOfAnUnknownCode) {
  for (const PixelFormatCode code : {0u, 33u, 0xFFFFFFFFu}) {
    for (const reference::Format& format : kFormats) {
      EXPECT_FALSE(IsSupportedPair(code, format.code));
      EXPECT_FALSE(IsSupportedPair(format.code, code));
      EXPECT_FALSE(DependsOnColourSpace(code, format.code));
      EXPECT_EQ(SmallestWidth(format.code, code), 0u);
    }
  }
}

}  // namespace
}  // namespace mixdecks
