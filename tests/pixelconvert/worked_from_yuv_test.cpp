// Known samples from `2vuy` and `v210` to RGB, and among the YUV formats.
#include <gtest/gtest.h>

#include <array>

#include "tests/pixelconvert/reference/grid.h"
#include "tests/pixelconvert/worked_rows.h"

namespace mixdecks::proof {
namespace {

using reference::Colour;
using reference::PixelPair;

struct Rgb {
  int r, g, b;
  bool operator==(const Rgb&) const = default;
};

void PrintTo(const Rgb& rgb, std::ostream* out) {
  *out << "R " << rgb.r << ", G " << rgb.g << ", B " << rgb.b;
}

Rgb Pixel(const std::vector<Colour>& pixels, std::size_t x) {
  return {pixels[x].r, pixels[x].g, pixels[x].b};
}

// A row of one colour; every even pixel is alike, and so is every odd one.
void ExpectSolid(const char* source, const char* destination, const std::array<int, 3>& yCbCr,
                 const Rgb& even, const Rgb& odd) {
  const auto [y, cb, cr] = yCbCr;
  const std::vector<PixelPair> pairs(48, {{cb, cr}, {y, y}, {}});
  const auto pixels =
      RgbOf(destination, Convert(source, destination, 0, 96, YuvRow(source, pairs)), 96);
  for (std::size_t x = 0; x < 96; ++x) {
    EXPECT_EQ(Pixel(pixels, x), x % 2 == 0 ? even : odd)
        << source << " to " << destination << ", pixel " << x;
  }
}

void ExpectGrey(const char* source, const char* destination, int y, int chroma, int expected) {
  const Rgb grey = {expected, expected, expected};
  ExpectSolid(source, destination, {y, chroma, chroma}, grey, grey);
}

constexpr std::array kEightBit = {"BGRA", "32", "RGBA", "RGB3"};
constexpr std::array kTenBitFull = {"R210", "R10B", "R10L", "R10A"};
constexpr std::array kTenBitVideo = {"r210", "R10b", "R10l"};

TEST(Worked2vuyToRgb, EightBitLandmarks) {
  for (const char* destination : kEightBit) {
    ExpectGrey("2vuy", destination, 235, 128, 254);
    ExpectGrey("2vuy", destination, 16, 128, 0);
    ExpectGrey("2vuy", destination, 0, 128, 0);
    ExpectGrey("2vuy", destination, 255, 128, 255);
    ExpectGrey("2vuy", destination, 126, 128, 128);
  }
}

TEST(Worked2vuyToRgb, EvenAndOddPixelsDiffer) {
  for (const char* destination : kEightBit) {
    ExpectSolid("2vuy", destination, {81, 90, 240}, {253, 0, 0}, {254, 0, 0});
    const auto pixels =
        RgbOf(destination, Convert("2vuy", destination, 0, 16, Repeated({16, 23, 16, 23}, 8)), 16);
    EXPECT_EQ(pixels[0].g, 143) << destination;
    EXPECT_EQ(pixels[1].g, 142) << destination;
  }
}

TEST(Worked2vuyToRgb, TenBitLandmarks) {
  for (const char* destination : kTenBitFull) {
    ExpectGrey("2vuy", destination, 235, 128, 1019);
    ExpectGrey("2vuy", destination, 16, 128, 0);
    ExpectGrey("2vuy", destination, 255, 128, 1023);
  }
  for (const char* destination : kTenBitVideo) {
    ExpectGrey("2vuy", destination, 235, 128, 940);
    ExpectGrey("2vuy", destination, 16, 128, 64);
    ExpectGrey("2vuy", destination, 255, 128, 1020);
    ExpectGrey("2vuy", destination, 0, 128, 0);
  }
}

TEST(Worked2vuyToRgb, AlphaIsOpaque) {
  EXPECT_EQ(Convert("2vuy", "BGRA", 0, 8, Bytes(16, 99))[31], 255);
  EXPECT_EQ(Convert("2vuy", "32", 0, 8, Bytes(16, 99))[28], 255);
  EXPECT_EQ(Convert("2vuy", "RGBA", 0, 8, Bytes(16, 99))[31], 255);
  EXPECT_EQ(Convert("2vuy", "R10A", 0, 8, Bytes(16, 99))[31] & 3, 3);
}

// The colours of a solid row's last two pixels.
std::array<Rgb, 2> RowEnd(const char* source, const char* destination, std::size_t width) {
  const int centre = std::string_view(source) == "2vuy" ? 128 : 512;
  const std::size_t padded = (width + 5) / 6 * 3;
  const PixelPair pair = {{centre + centre / 2, centre - centre / 2}, {centre, centre}, {}};
  Bytes row = YuvRow(source, std::vector<PixelPair>(padded, pair));
  row.resize(reference::SourceRowBytes(reference::FormatNamed(source).code, width));
  const auto pixels = RgbOf(destination, Convert(source, destination, 0, width, row), width);
  return {Pixel(pixels, width - 2), Pixel(pixels, width - 1)};
}

// The last odd pixel of a row whose last pair stands alone looks like any other odd pixel.
bool RepeatsItsLastPair(const char* source, const char* destination, std::size_t width) {
  const Rgb lastOdd = RowEnd(source, destination, width)[1];
  const Rgb anyOdd = RowEnd(source, destination, 96)[1];
  return lastOdd == anyOdd;
}

TEST(Worked2vuyToRgb, WholeBlocksRepeatTheLastPair) {
  for (const std::size_t width : {8u, 16u, 24u}) {
    EXPECT_TRUE(RepeatsItsLastPair("2vuy", "BGRA", width)) << width;
  }
  EXPECT_FALSE(RepeatsItsLastPair("2vuy", "BGRA", 20));
  EXPECT_TRUE(RepeatsItsLastPair("2vuy", "RGB3", 16));
  EXPECT_FALSE(RepeatsItsLastPair("2vuy", "RGB3", 24));
}

TEST(Worked2vuyToRgb, EveryWidthFromOneIsLegal) {
  for (std::size_t width = 1; width < 8; ++width) {
    EXPECT_EQ(Convert("2vuy", "BGRA", 0, width, Bytes(2 * width, 99)).size(), 4 * width);
  }
}

TEST(Worked2vuyToRgb, AnOddWidthEndsWithTheCrOfNothing) {
  const Bytes row = Repeated({90, 81, 240, 81}, 7);
  const auto pixels = RgbOf("BGRA", Convert("2vuy", "BGRA", 0, 13, Head(row, 26)), 13);
  EXPECT_EQ(Pixel(pixels, 0), (Rgb{253, 0, 0}));
  // The thirteenth pixel has Cb and Y of the row, and a Cr of zero.
  const auto alone = RgbOf("BGRA", Convert("2vuy", "BGRA", 0, 8, Repeated({90, 81, 0, 81}, 4)), 8);
  EXPECT_EQ(Pixel(pixels, 12), Pixel(alone, 0));
}

// v210.

TEST(WorkedV210ToRgb, Landmarks) {
  for (const char* destination : kEightBit) {
    ExpectGrey("v210", destination, 940, 512, 254);
    ExpectGrey("v210", destination, 64, 512, 0);
    ExpectGrey("v210", destination, 1023, 512, 255);
    ExpectGrey("v210", destination, 0, 512, 0);
  }
  for (const char* destination : kTenBitFull) {
    ExpectGrey("v210", destination, 940, 512, 1019);
    ExpectGrey("v210", destination, 64, 512, 0);
    ExpectGrey("v210", destination, 1023, 512, 1023);
    ExpectGrey("v210", destination, 0, 512, 0);
  }
  for (const char* destination : kTenBitVideo) {
    ExpectGrey("v210", destination, 940, 512, 940);
    ExpectGrey("v210", destination, 64, 512, 64);
    ExpectGrey("v210", destination, 1023, 512, 1023);
    ExpectGrey("v210", destination, 0, 512, 0);
  }
}

// Whether the row's last pixel depends on the samples that pad the last group.
bool DependsOnPadding(const char* destination, std::size_t width) {
  const auto lastPixel = [&](const PixelPair& padding) {
    std::vector<PixelPair> pairs((width + 5) / 6 * 3, {{700, 300}, {500, 500}, {}});
    for (std::size_t k = (width + 1) / 2; k < pairs.size(); ++k)
      pairs[k] = padding;
    const Bytes row = Convert("v210", destination, 0, width, YuvRow("v210", pairs));
    return Pixel(RgbOf(destination, row, width), width - 1);
  };
  return lastPixel({{700, 300}, {500, 500}, {}}) != lastPixel({{100, 900}, {0, 0}, {}});
}

TEST(WorkedV210ToRgb, NamedWidthsIgnoreThePaddingExceptToRgb3) {
  for (const std::size_t width : {1280u, 2048u, 4096u}) {
    EXPECT_FALSE(DependsOnPadding("BGRA", width)) << width;
    EXPECT_FALSE(DependsOnPadding("r210", width)) << width;
    EXPECT_FALSE(DependsOnPadding("R10L", width)) << width;
    EXPECT_TRUE(DependsOnPadding("RGB3", width)) << width;
    EXPECT_TRUE(RepeatsItsLastPair("v210", "BGRA", width)) << width;
  }
}

TEST(WorkedV210ToRgb, OtherWidthsReadThePadding) {
  for (const std::size_t width : {20u, 1282u, 1286u, 2050u, 4100u}) {
    EXPECT_TRUE(DependsOnPadding("BGRA", width)) << width;
  }
}

TEST(WorkedV210ToRgb, WholeBlocksRepeatTheLastPair) {
  EXPECT_TRUE(RepeatsItsLastPair("v210", "BGRA", 24));
  EXPECT_TRUE(RepeatsItsLastPair("v210", "BGRA", 1284));
  EXPECT_FALSE(RepeatsItsLastPair("v210", "BGRA", 18));
  EXPECT_TRUE(RepeatsItsLastPair("v210", "RGB3", 96));
  EXPECT_FALSE(RepeatsItsLastPair("v210", "RGB3", 60));
}

TEST(WorkedV210ToRgb, TheTwoUppermostBitsAreIgnored) {
  Bytes row = YuvRow("v210", std::vector<PixelPair>(48, {{700, 300}, {200, 900}, {}}));
  const Bytes clear = row;
  for (std::size_t i = 3; i < row.size(); i += 4)
    row[i] |= 0xC0;
  for (const auto& pair : reference::SupportedPairs()) {
    if (pair.source->name != "v210") continue;
    EXPECT_EQ(Convert("v210", pair.destination->name, 1, 96, row),
              Convert("v210", pair.destination->name, 1, 96, clear));
  }
}

// Among themselves.

TEST(WorkedYuv, WideningIsAShift) {
  const Bytes row = Convert("2vuy", "v210", 6, {0, 1, 128, 255, 16, 235, 240, 254, 0, 0, 0, 0});
  const auto pairs = YuvOf("v210", row);
  EXPECT_EQ(pairs[0].chroma.cb, 0);
  EXPECT_EQ(pairs[0].y[0], 4);
  EXPECT_EQ(pairs[0].chroma.cr, 512);
  EXPECT_EQ(pairs[0].y[1], 1020);
  EXPECT_EQ(pairs[1].chroma.cb, 64);
  EXPECT_EQ(pairs[1].y[0], 940);
  EXPECT_EQ(pairs[1].chroma.cr, 960);
}

TEST(WorkedYuv, NarrowingCutsTheLowBits) {
  const Bytes row = YuvRow(
      "v210", {{{0, 4}, {3, 512}, {}}, {{1019, 941}, {1023, 940}, {}}, {{0, 0}, {0, 0}, {}}});
  EXPECT_EQ(Convert("v210", "2vuy", 6, row), (Bytes{0, 0, 1, 128, 254, 255, 235, 235, 0, 0, 0, 0}));
}

TEST(WorkedYuv, AllSampleValues) {
  std::vector<PixelPair> pairs;
  for (int v = 0; v < 1024; ++v) {
    pairs.push_back({{v, 1023 - v}, {(v + 341) & 1023, (v + 682) & 1023}, {}});
  }
  pairs.resize(1026, {{1, 2}, {3, 4}, {}});
  const Bytes narrow = Convert("v210", "2vuy", 2052, YuvRow("v210", pairs));
  const Bytes back = Convert("v210", "2vuy", 2052, Convert("2vuy", "v210", 2052, narrow));
  EXPECT_EQ(back, narrow);
  Convert("2vuy", "ay10", 2052, narrow);
}

TEST(WorkedYuv, RowsEndAsTheirFormatAsks) {
  EXPECT_EQ(Convert("2vuy", "v210", 1920, Bytes(3840, 9)).size(), 5120u);
  EXPECT_EQ(Convert("2vuy", "v210", 1280, Bytes(2560, 9)).size(), 3424u);
  EXPECT_EQ(Convert("2vuy", "v210", 7, Bytes(14, 9)).size(), 32u);
  EXPECT_EQ(Convert("v210", "2vuy", 7, Bytes(32, 9)).size(), 16u);
  EXPECT_EQ(Convert("2vuy", "ay10", 1, Bytes(2, 9)).size(), 16u);
}

TEST(WorkedYuv, AMacroPixelToAy10) {
  const Bytes row = Convert("2vuy", "ay10", 4, {0xA8, 0x2C, 0x30, 0x41, 0xA8, 0x2C, 0x30, 0x41});
  EXPECT_EQ(Head(row, 8), (Bytes{0x3F, 0xFA, 0x80, 0xB0, 0x3F, 0xF3, 0x01, 0x04}));
}

TEST(WorkedYuv, OnePixelToAy10PadsTheBlock) {
  const Bytes row = Convert("2vuy", "ay10", 1, {0xA8, 0x2C});
  EXPECT_EQ(row,
            (Bytes{0x3F, 0xFA, 0x80, 0xB0, 0x3F, 0xF0, 0, 0, 0x3F, 0xF0, 0, 0, 0x3F, 0xF0, 0, 0}));
}

TEST(WorkedYuv, AnOddWidthTo2vuyTakesTheLumaOfThePadding) {
  const Bytes row = YuvRow(
      "v210",
      {{{40, 80}, {120, 160}, {}}, {{200, 240}, {280, 320}, {}}, {{360, 400}, {440, 480}, {}}});
  EXPECT_EQ(Convert("v210", "2vuy", 3, row), (Bytes{10, 30, 20, 40, 50, 70, 60, 80}));
}

}  // namespace
}  // namespace mixdecks::proof
