// Known colours from RGB to `2vuy` and `v210`.
#include <gtest/gtest.h>

#include <array>

#include "tests/pixelconvert/reference/grid.h"
#include "tests/pixelconvert/worked_rows.h"

namespace mixdecks::proof {
namespace {

using reference::Colour;
using reference::PixelPair;

struct Yuv {
  int y, cb, cr;
};

// Every pair of a row of one colour is the same.
void ExpectSolid(const char* source, const char* destination, ColourSpaceIndex space,
                 const Colour& colour, const Yuv& expected) {
  const Bytes row =
      Convert(source, destination, space, 48, RgbRow(source, std::vector<Colour>(48, colour)));
  const std::vector<PixelPair> pairs = YuvOf(destination, row);
  ASSERT_EQ(pairs.size(), 24u);
  for (const PixelPair& pair : pairs) {
    EXPECT_EQ(pair.y[0], expected.y) << source << " to " << destination;
    EXPECT_EQ(pair.y[1], expected.y) << source << " to " << destination;
    EXPECT_EQ(pair.chroma.cb, expected.cb) << source << " to " << destination;
    EXPECT_EQ(pair.chroma.cr, expected.cr) << source << " to " << destination;
  }
}

struct SolidColour {
  Colour colour;
  std::array<Yuv, 2> expected;
};

constexpr std::array kEightBitSources = {"BGRA", "32", "RGBA", "RGB3"};

TEST(Worked2vuy, SolidColours) {
  const std::array<SolidColour, 6> colours = {{
      {{255, 255, 255, 255}, {{{234, 127, 127}, {234, 127, 127}}}},
      {{0, 0, 0, 255}, {{{16, 128, 128}, {16, 128, 128}}}},
      {{128, 128, 128, 255}, {{{125, 127, 127}, {125, 127, 127}}}},
      {{255, 0, 0, 255}, {{{81, 90, 239}, {62, 102, 239}}}},
      {{0, 255, 0, 255}, {{{144, 53, 34}, {172, 41, 26}}}},
      {{0, 0, 255, 255}, {{{40, 239, 109}, {31, 239, 117}}}},
  }};
  for (const char* source : kEightBitSources) {
    for (ColourSpaceIndex space = 0; space < 2; ++space) {
      for (const SolidColour& solid : colours) {
        ExpectSolid(source, "2vuy", space, solid.colour, solid.expected[space]);
      }
    }
  }
}

TEST(WorkedV210, SolidColours) {
  const std::array<SolidColour, 6> colours = {{
      {{255, 255, 255, 255}, {{{940, 511, 511}, {939, 510, 511}}}},
      {{0, 0, 0, 255}, {{{64, 512, 512}, {64, 512, 512}}}},
      {{128, 128, 128, 255}, {{{503, 511, 511}, {503, 511, 511}}}},
      {{255, 0, 0, 255}, {{{326, 361, 959}, {250, 408, 959}}}},
      {{0, 255, 0, 255}, {{{578, 215, 136}, {690, 166, 105}}}},
      {{0, 0, 255, 255}, {{{163, 959, 439}, {127, 959, 471}}}},
  }};
  for (const char* source : kEightBitSources) {
    for (ColourSpaceIndex space = 0; space < 2; ++space) {
      for (const SolidColour& solid : colours) {
        ExpectSolid(source, "v210", space, solid.colour, solid.expected[space]);
      }
    }
  }
}

std::vector<Colour> Halves(const Colour& left, const Colour& right) {
  std::vector<Colour> pixels(4, left);
  pixels.insert(pixels.end(), 4, right);
  return pixels;
}

TEST(Worked2vuy, AStepFromBlackToWhiteIsFiltered) {
  const Bytes row =
      Convert("BGRA", "2vuy", 0, 8, RgbRow("BGRA", Halves({0, 0, 0, 0}, {255, 255, 255, 0})));
  EXPECT_EQ(row,
            (Bytes{128, 16, 128, 16, 128, 16, 128, 16, 127, 234, 127, 234, 127, 234, 127, 234}));
}

TEST(Worked2vuy, AStepFromRedToBlueIsFiltered) {
  const Bytes row =
      Convert("BGRA", "2vuy", 0, 8, RgbRow("BGRA", Halves({255, 0, 0, 0}, {0, 0, 255, 0})));
  EXPECT_EQ(row, (Bytes{90, 81, 239, 81, 90, 81, 239, 81, 202, 40, 142, 40, 239, 40, 109, 40}));
}

TEST(Worked2vuy, AlphaChangesNothing) {
  for (const char* source : {"BGRA", "32", "RGBA"}) {
    for (const char* destination : {"2vuy", "v210"}) {
      const auto row = [&](int alpha) {
        return RgbRow(source, std::vector<Colour>(13, {200, 100, 50, alpha}));
      };
      EXPECT_EQ(Convert(source, destination, 1, 13, row(0)),
                Convert(source, destination, 1, 13, row(255)));
    }
  }
}

TEST(Worked2vuy, AnOddWidthEndsOnAWholePair) {
  const Bytes row = Convert("BGRA", "2vuy", 0, 13, RgbRow("BGRA", std::vector<Colour>(13)));
  ASSERT_EQ(row.size(), 28u);
  EXPECT_EQ(row[27], 16);
}

TEST(Worked2vuy, BlockAndTailGiveTheSameBytes) {
  std::vector<Colour> pixels;
  for (int i = 0; i < 48; ++i)
    pixels.push_back({i * 5, 255 - i * 3, (i * 83) & 255, 0});
  for (const char* source : kEightBitSources) {
    const Bytes whole = Convert(source, "2vuy", 1, 48, RgbRow(source, pixels));
    const std::vector<Colour> fewer(pixels.begin(), pixels.begin() + 46);
    EXPECT_EQ(Convert(source, "2vuy", 1, 46, RgbRow(source, fewer)), Head(whole, 92));
  }
}

TEST(WorkedV210, RowsEndOnWholeGroups) {
  const auto bytes = [](std::size_t width) {
    return Convert("BGRA", "v210", 0, width, Bytes(4 * width, 77)).size();
  };
  EXPECT_EQ(bytes(12), 32u);
  EXPECT_EQ(bytes(13), 48u);
  EXPECT_EQ(bytes(1280), 3424u);
  EXPECT_EQ(bytes(1920), 5120u);
}

TEST(WorkedV210, PaddingIsBlack) {
  const Bytes row = Convert("BGRA", "v210", 0, 14, Bytes(56, 0));
  // Words of Y, Cb, Y.
  EXPECT_EQ(Bytes(row.begin() + 36, row.begin() + 40), (Bytes{0x40, 0x00, 0x08, 0x04}));
}

TEST(WorkedV210, TheGroupOrder) {
  const Bytes row =
      YuvRow("v210", {{{1, 2}, {3, 4}, {}}, {{5, 6}, {7, 8}, {}}, {{9, 10}, {11, 12}, {}}});
  const auto word = [&](std::size_t n) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(row[4 * n + i]); };
    return byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24;
  };
  const auto packed = [](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    return a | b << 10 | c << 20;
  };
  EXPECT_EQ(word(0), packed(1, 3, 2));     // Cb0 Y0 Cr0
  EXPECT_EQ(word(1), packed(4, 5, 7));     // Y1 Cb1 Y2
  EXPECT_EQ(word(2), packed(6, 8, 9));     // Cr1 Y3 Cb2
  EXPECT_EQ(word(3), packed(11, 10, 12));  // Y4 Cr2 Y5
}

// Ten bits.

struct TenBitColour {
  Colour colour;
  Yuv videoTo2vuy, videoToV210, fullTo2vuy, fullToV210;
};

TEST(WorkedTenBitToYuv, SolidColours) {
  const std::array<TenBitColour, 5> colours = {{
      {{1023, 1023, 1023, 0}, {255, 127, 127}, {1022, 511, 511}, {234, 127, 127}, {941, 511, 511}},
      {{940, 940, 940, 0}, {234, 127, 127}, {939, 511, 511}, {217, 127, 127}, {870, 511, 511}},
      {{64, 64, 64, 0}, {15, 127, 127}, {63, 511, 511}, {29, 127, 127}, {118, 511, 511}},
      {{940, 64, 64, 0}, {81, 89, 239}, {325, 360, 959}, {85, 95, 223}, {343, 381, 895}},
      {{1023, 0, 0, 0}, {76, 83, 255}, {305, 335, 1023}, {81, 90, 240}, {326, 360, 961}},
  }};
  for (const TenBitColour& solid : colours) {
    for (const char* video : {"r210", "R10b", "R10l"}) {
      ExpectSolid(video, "2vuy", 0, solid.colour, solid.videoTo2vuy);
      ExpectSolid(video, "v210", 0, solid.colour, solid.videoToV210);
    }
    for (const char* full : {"R210", "R10B", "R10L", "R10A"}) {
      ExpectSolid(full, "2vuy", 0, solid.colour, solid.fullTo2vuy);
      ExpectSolid(full, "v210", 0, solid.colour, solid.fullToV210);
    }
  }
}

TEST(WorkedTenBitToYuv, ZeroWords) {
  for (ColourSpaceIndex space = 0; space < 2; ++space) {
    for (const char* video : {"r210", "R10b", "R10l"}) {
      ExpectSolid(video, "2vuy", space, {0, 0, 0, 0}, {0, 128, 128});
    }
    for (const char* full : {"R210", "R10B", "R10L", "R10A"}) {
      ExpectSolid(full, "2vuy", space, {0, 0, 0, 0}, {16, 128, 128});
    }
  }
}

// Twelve bits.

TEST(WorkedTwelveBitToYuv, SolidColoursTo2vuy) {
  const std::array<SolidColour, 3> colours = {{
      {{4095, 4095, 4095, 0}, {{{235, 128, 128}, {235, 127, 128}}}},
      {{0, 0, 0, 0}, {{{16, 128, 128}, {16, 128, 128}}}},
      {{4095, 0, 0, 0}, {{{81, 90, 239}, {63, 102, 239}}}},
  }};
  for (const char* source : {"R12L", "R12B"}) {
    for (ColourSpaceIndex space = 0; space < 2; ++space) {
      for (const SolidColour& solid : colours) {
        ExpectSolid(source, "2vuy", space, solid.colour, solid.expected[space]);
      }
    }
  }
}

TEST(WorkedTwelveBitToYuv, TheFirstChromaSiteOfEachGroupIsOneBelow) {
  for (const char* source : {"R12L", "R12B"}) {
    const Bytes row =
        Convert(source, "v210", 0, 48, RgbRow(source, std::vector<Colour>(48, {0, 0, 0, 0})));
    const std::vector<PixelPair> pairs = YuvOf("v210", row);
    for (std::size_t k = 0; k < pairs.size(); ++k) {
      const int expected = k % 3 == 0 ? 511 : 512;
      EXPECT_EQ(pairs[k].chroma.cb, expected) << source << ", pair " << k;
      EXPECT_EQ(pairs[k].chroma.cr, expected) << source << ", pair " << k;
      EXPECT_EQ(pairs[k].y[0], 64);
      EXPECT_EQ(pairs[k].y[1], 64);
    }
  }
}

TEST(WorkedTwelveBitToYuv, WhiteIs943InV210) {
  const std::vector<Colour> white(24, {4095, 4095, 4095, 0});
  for (const char* source : {"R12L", "R12B"}) {
    for (ColourSpaceIndex space = 0; space < 2; ++space) {
      for (const PixelPair& pair :
           YuvOf("v210", Convert(source, "v210", space, 24, RgbRow(source, white)))) {
        EXPECT_EQ(pair.y[0], 943) << source << ", colour space " << space;
        EXPECT_EQ(pair.y[1], 943) << source << ", colour space " << space;
      }
    }
  }
}

TEST(WorkedTwelveBitToYuv, ThePaddingOfTheLastSourceGroupIsPartOfAnOddRow) {
  std::vector<Colour> pixels(16, {4095, 0, 0, 0});
  const Bytes red = Convert("R12L", "2vuy", 0, 9, RgbRow("R12L", pixels));
  for (std::size_t x = 9; x < 16; ++x)
    pixels[x] = {0, 0, 4095, 0};
  const Bytes blue = Convert("R12L", "2vuy", 0, 9, RgbRow("R12L", pixels));
  EXPECT_EQ(Head(red, 16), Head(blue, 16));
  EXPECT_NE(red, blue);
}

}  // namespace
}  // namespace mixdecks::proof
