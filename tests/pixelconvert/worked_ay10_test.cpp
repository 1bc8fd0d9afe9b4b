// Known colours through `ay10` and back.
#include <gtest/gtest.h>

#include <array>

#include "tests/pixelconvert/reference/grid.h"
#include "tests/pixelconvert/worked_rows.h"

namespace mixdecks::proof {
namespace {

using reference::NarrowAlpha;
using reference::WidenAlpha;

std::vector<std::uint32_t> BigEndianWords(const Bytes& row) {
  std::vector<std::uint32_t> words;
  for (std::size_t i = 0; i + 3 < row.size(); i += 4) {
    words.push_back(std::uint32_t{row[i]} << 24 | std::uint32_t{row[i + 1]} << 16 |
                    std::uint32_t{row[i + 2]} << 8 | row[i + 3]);
  }
  return words;
}

struct SolidColour {
  const char* name;
  Bytes bgra;
  // Words of an even and an odd pixel, in each colour space.
  std::array<std::array<std::uint32_t, 2>, 2> words;
};

const std::vector<SolidColour>& SolidColours() {
  static const std::vector<SolidColour> colours = {
      {"white", {255, 255, 255, 255}, {{{0x3AC7FFAC, 0x3AC7FFAC}, {0x3AC7FBAB, 0x3AC7FFAB}}}},
      {"black", {0, 0, 0, 255}, {{{0x3AC80040, 0x3AC80040}, {0x3AC80040, 0x3AC80040}}}},
      {"red", {0, 0, 255, 255}, {{{0x3AC5A546, 0x3ACEFD46}, {0x3AC660FA, 0x3ACEFCFA}}}},
      {"green", {0, 255, 0, 255}, {{{0x3AC35E42, 0x3AC22242}, {0x3AC29AB2, 0x3AC1A6B2}}}},
      {"blue", {255, 0, 0, 255}, {{{0x3ACEFCA3, 0x3AC6DCA3}, {0x3ACEFC7F, 0x3AC75C7F}}}},
      {"transparent", {0, 0, 0, 0}, {{{0x04080040, 0x04080040}, {0x04080040, 0x04080040}}}},
      {"grey", {128, 128, 128, 128}, {{{0x1F77FDF7, 0x1F77FDF7}, {0x1F77FDF7, 0x1F77FDF7}}}},
  };
  return colours;
}

TEST(WorkedAy10, SolidColoursGiveTheirWords) {
  for (const SolidColour& colour : SolidColours()) {
    for (ColourSpaceIndex space = 0; space < 2; ++space) {
      const auto words =
          BigEndianWords(Convert("BGRA", "ay10", space, 8, Repeated(colour.bgra, 8)));
      ASSERT_EQ(words.size(), 8u);
      for (std::size_t x = 0; x < 8; ++x) {
        EXPECT_EQ(words[x], colour.words[space][x % 2])
            << colour.name << ", colour space " << space << ", pixel " << x;
      }
    }
  }
}

TEST(WorkedAy10, LiesInMemoryMostSignificantByteFirst) {
  const Bytes row = Convert("BGRA", "ay10", 0, 4, Repeated({0, 0, 255, 255}, 4));
  EXPECT_EQ(Head(row, 8), (Bytes{0x3A, 0xC5, 0xA5, 0x46, 0x3A, 0xCE, 0xFD, 0x46}));
}

TEST(WorkedAy10, FourColoursInARowShowTheFilterAtTheLeftEdge) {
  const Bytes row = {0, 0, 255, 255, 255, 0, 0, 255, 0, 255, 0, 255, 255, 255, 255, 255};
  EXPECT_EQ(BigEndianWords(Convert("BGRA", "ay10", 0, 4, row)),
            (std::vector<std::uint32_t>{0x3AC7F946, 0x3ACCF8A3, 0x3AC76E42, 0x3AC4C7AC}));
}

TEST(WorkedAy10, BgrxIsBgraWithFullAlpha) {
  for (ColourSpaceIndex space = 0; space < 2; ++space) {
    const Bytes opaque = Convert("BGRA", "ay10", space, 4, Repeated({10, 200, 90, 255}, 4));
    for (const std::uint8_t filler : Bytes{0, 1, 128, 255}) {
      EXPECT_EQ(Convert("BGRX", "ay10", space, 4, Repeated({10, 200, 90, filler}, 4)), opaque);
    }
  }
}

TEST(WorkedAy10, WidthSixWritesTwoBlocks) {
  const Bytes row = Convert("BGRA", "ay10", 0, 6, Repeated({255, 255, 255, 255}, 6));
  EXPECT_EQ(row.size(), 32u);
  EXPECT_EQ(BigEndianWords(row)[5], 0x3AC7FFACu);
}

TEST(WorkedAy10, PaddingIsThatOfTransparentBlack) {
  // Behind an even width only the filter's left neighbour reaches the padding.
  const auto words = BigEndianWords(Convert("BGRA", "ay10", 0, 6, Repeated({0, 0, 0, 0}, 6)));
  EXPECT_EQ(words[6], 0x04080040u);
  EXPECT_EQ(words[7], 0x04080040u);
}

struct WayBack {
  Bytes bgra, even, odd;
};

void ExpectWayBack(ColourSpaceIndex space, const WayBack& colour) {
  const Bytes there = Convert("BGRA", "ay10", space, 8, Repeated(colour.bgra, 8));
  const Bytes back = Convert("ay10", "BGRA", space, 8, there);
  for (std::size_t x = 0; x < 8; ++x) {
    const Bytes pixel(back.begin() + static_cast<std::ptrdiff_t>(4 * x),
                      back.begin() + static_cast<std::ptrdiff_t>(4 * x + 4));
    EXPECT_EQ(pixel, x % 2 == 0 ? colour.even : colour.odd)
        << "colour space " << space << ", pixel " << x;
  }
}

TEST(WorkedAy10, TheWayBackLosesALittleAndNeighboursDiffer) {
  ExpectWayBack(0, {{255, 255, 255, 255}, {254, 255, 253, 255}, {253, 255, 254, 255}});
  ExpectWayBack(1, {{255, 255, 255, 255}, {253, 254, 253, 255}, {252, 254, 254, 255}});
  for (ColourSpaceIndex space = 0; space < 2; ++space) {
    ExpectWayBack(space, {{0, 0, 0, 255}, {0, 0, 0, 255}, {0, 0, 0, 255}});
    ExpectWayBack(space, {{0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}});
    ExpectWayBack(space, {{128, 128, 128, 128}, {127, 127, 126, 127}, {126, 127, 127, 127}});
  }
}

TEST(WorkedAy10, RedAndGreenComeBackOneLower) {
  for (ColourSpaceIndex space = 0; space < 2; ++space) {
    const auto channelAfter = [space](const Bytes& bgra, std::size_t channel) {
      const Bytes there = Convert("BGRA", "ay10", space, 8, Repeated(bgra, 8));
      return Convert("ay10", "BGRA", space, 8, there)[channel];
    };
    EXPECT_EQ(channelAfter({0, 0, 255, 255}, 2), 254) << space;
    EXPECT_EQ(channelAfter({0, 255, 0, 255}, 1), 254) << space;
  }
}

TEST(WorkedAy10, AlphaIsScaledToTheVideoRange) {
  for (const auto& [alpha, expected] : {std::pair{0, 64u}, {128, 503u}, {255, 940u}}) {
    const Bytes row = Repeated({0, 0, 0, static_cast<std::uint8_t>(alpha)}, 4);
    EXPECT_EQ(BigEndianWords(Convert("BGRA", "ay10", 0, 4, row))[0] >> 20, expected) << alpha;
  }
  for (const auto& [alpha, expected] :
       {std::pair{0, 0}, {64, 0}, {939, 254}, {940, 255}, {1023, 255}}) {
    const Bytes row = YuvRow(
        "ay10", std::vector<reference::PixelPair>(4, {{512, 512}, {64, 64}, {alpha, alpha}}));
    EXPECT_EQ(Convert("ay10", "BGRA", 0, 8, row)[3], expected) << alpha;
  }
}

TEST(WorkedAy10, ChromaOfEightBitColoursNeverReaches960) {
  for (const Bytes& bgra : {Bytes{255, 0, 0, 255}, {0, 0, 255, 255}}) {
    for (ColourSpaceIndex space = 0; space < 2; ++space) {
      const auto words = BigEndianWords(Convert("BGRA", "ay10", space, 4, Repeated(bgra, 4)));
      EXPECT_EQ(std::max(words[0] >> 10 & 1023, words[1] >> 10 & 1023), 959u);
    }
  }
}

TEST(WorkedAy10, AllAlphaValuesGoThereAndBack) {
  for (int alpha = 0; alpha < 256; ++alpha) {
    const auto a8 = static_cast<std::uint8_t>(alpha);
    const Bytes there = Convert("BGRA", "ay10", 0, 8, Repeated({0, 0, 0, a8}, 8));
    EXPECT_EQ(BigEndianWords(there)[3] >> 20, static_cast<std::uint32_t>(WidenAlpha(alpha)));
    const Bytes back = Convert("ay10", "BGRA", 0, 8, there);
    const bool unchanged = alpha % 85 == 0;
    EXPECT_EQ(back[3], unchanged ? alpha : alpha - 1);
  }
}

TEST(WorkedAy10, AllTenBitAlphaValuesComeBack) {
  for (int alpha = 0; alpha < 1024; ++alpha) {
    const Bytes row = YuvRow("ay10", std::vector<reference::PixelPair>(
                                         4, {{512, 512}, {64, 64}, {alpha, 1023 - alpha}}));
    const Bytes back = Convert("ay10", "BGRA", 1, 8, row);
    EXPECT_EQ(back[3], NarrowAlpha(alpha));
    EXPECT_EQ(back[7], NarrowAlpha(1023 - alpha));
  }
}

TEST(WorkedAy10, TheTwoUppermostBitsAreIgnored) {
  Bytes row = YuvRow("ay10", std::vector<reference::PixelPair>(4, {{300, 700}, {400, 500}, {}}));
  const Bytes clear = Convert("ay10", "BGRA", 0, 8, row);
  for (std::size_t i = 0; i < row.size(); i += 4)
    row[i] |= 0xC0;
  EXPECT_EQ(Convert("ay10", "BGRA", 0, 8, row), clear);
}

TEST(WorkedAy10, PaddingDecidesTheChromaOfTailPixels) {
  const auto pixelsOf = [](std::size_t width, int paddingChroma) {
    std::vector<reference::PixelPair> pairs(4, {{300, 700}, {400, 500}, {900, 900}});
    Bytes row = YuvRow("ay10", pairs);
    const Bytes padding =
        YuvRow("ay10", {{{paddingChroma, paddingChroma}, {400, 500}, {900, 900}}});
    for (std::size_t x = width; x < 8; ++x) {
      std::copy_n(padding.begin() + static_cast<std::ptrdiff_t>(x % 2 * 4), 4,
                  row.begin() + static_cast<std::ptrdiff_t>(4 * x));
    }
    return RgbOf("BGRA", Convert("ay10", "BGRA", 0, width, row), width);
  };
  const auto same = [](const reference::Colour& a, const reference::Colour& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
  };
  for (const std::size_t width : {5u, 6u, 7u}) {
    const auto one = pixelsOf(width, 100);
    const auto other = pixelsOf(width, 900);
    EXPECT_FALSE(same(one[width - 1], other[width - 1])) << width;
    // Behind an odd width the pixel before the last averages with the padding's Cr too.
    const std::size_t untouched = width % 2 == 0 ? width - 1 : width - 2;
    for (std::size_t x = 0; x < untouched; ++x)
      EXPECT_TRUE(same(one[x], other[x])) << width << x;
  }
}

}  // namespace
}  // namespace mixdecks::proof
