// Known pixels among the RGB formats.
#include <gtest/gtest.h>

#include "tests/pixelconvert/reference/grid.h"
#include "tests/pixelconvert/worked_rows.h"

namespace mixdecks::proof {
namespace {

using reference::Colour;

// One pixel of three equal samples.
Bytes Grey(std::string_view format, int sample) {
  return Head(RgbRow(format, {{sample, sample, sample, 255}}),
              reference::SourceRowBytes(reference::FormatNamed(format).code, 1));
}

// The green sample that a grey pixel becomes.
int Sample(std::string_view source, std::string_view destination, int sample) {
  const Bytes row = Convert(source, destination, 1, Grey(source, sample));
  const Colour pixel = RgbOf(destination, row, 1)[0];
  EXPECT_EQ(pixel.r, pixel.g);
  EXPECT_EQ(pixel.b, pixel.g);
  return pixel.g;
}

constexpr std::array kVideoFormats = {"r210", "R10b", "R10l"};
constexpr std::array kFullFormats = {"R210", "R10B", "R10L", "R10A"};
constexpr std::array kFourByteFormats = {"32", "BGRA", "RGBA"};

// Swizzles.

TEST(WorkedSwizzles, BgraAnd32AreReversalsOfOneAnother) {
  EXPECT_EQ(Convert("BGRA", "32", 1, {10, 20, 30, 40}), (Bytes{40, 30, 20, 10}));
  EXPECT_EQ(Convert("32", "BGRA", 1, {40, 30, 20, 10}), (Bytes{10, 20, 30, 40}));
}

TEST(WorkedSwizzles, RgbaNeitherGivesNorTakesAlpha) {
  EXPECT_EQ(Convert("BGRA", "RGBA", 1, {10, 20, 30, 40}), (Bytes{30, 20, 10, 255}));
  EXPECT_EQ(Convert("32", "RGBA", 1, {40, 30, 20, 10}), (Bytes{30, 20, 10, 255}));
  EXPECT_EQ(Convert("RGBA", "32", 1, {10, 20, 30, 40}), (Bytes{255, 10, 20, 30}));
  EXPECT_EQ(Convert("RGBA", "BGRA", 1, {10, 20, 30, 40}), (Bytes{30, 20, 10, 255}));
}

TEST(WorkedSwizzles, BlockAndTailGiveTheSameBytes) {
  const Bytes pixels = Repeated({1, 2, 3, 4, 5, 6, 7, 8}, 4);
  const Bytes block = Convert("BGRA", "RGBA", 8, pixels);
  EXPECT_EQ(Convert("BGRA", "RGBA", 7, Head(pixels, 28)), Head(block, 28));
}

// Widening from 8 to 10 bits.

TEST(WorkedWidening, KnownPixels) {
  EXPECT_EQ(Convert("BGRA", "r210", 1, {0, 0, 0, 255}), (Bytes{0x04, 0x01, 0x00, 0x40}));
  EXPECT_EQ(Convert("BGRA", "R10A", 1, {255, 255, 255, 0}), (Bytes{0xFF, 0x3F, 0xCF, 0xF3}));
}

TEST(WorkedWidening, WhiteIs1020InFullAnd940InVideoRange) {
  for (const char* source : {"32", "BGRA", "RGBA", "RGB3"}) {
    for (const char* full : kFullFormats)
      EXPECT_EQ(Sample(source, full, 255), 1020) << full;
    for (const char* video : kVideoFormats)
      EXPECT_EQ(Sample(source, video, 255), 940) << video;
  }
}

TEST(WorkedWidening, VideoRangeLandmarks) {
  for (const char* source : {"32", "BGRA", "RGBA", "RGB3"}) {
    EXPECT_EQ(Sample(source, "r210", 0), 64);
    EXPECT_EQ(Sample(source, "r210", 1), 67);
    EXPECT_EQ(Sample(source, "r210", 128), 503);
    EXPECT_EQ(Sample(source, "r210", 254), 936);
  }
}

TEST(WorkedWidening, ByteOrdersAreReversals) {
  const Bytes pixel = {0x12, 0xA7, 0xE5, 0x00};
  for (const auto& [little, big] : {std::pair{"R10l", "R10b"}, {"R10L", "R10B"}}) {
    Bytes reversed = Convert("BGRA", little, 1, pixel);
    std::reverse(reversed.begin(), reversed.end());
    EXPECT_EQ(reversed, Convert("BGRA", big, 1, pixel));
  }
}

TEST(WorkedWidening, SourceAlphaChangesNothing) {
  for (const char* source : kFourByteFormats) {
    for (const auto& pair : reference::SupportedPairs()) {
      if (pair.source->name != source || pair.destination->kind != reference::Kind::kRgb10)
        continue;
      const auto row = [&](int alpha) { return RgbRow(source, {{9, 99, 199, alpha}}); };
      EXPECT_EQ(Convert(source, pair.destination->name, 1, row(0)),
                Convert(source, pair.destination->name, 1, row(255)));
    }
  }
}

// Ten bits among themselves and down to eight.

TEST(WorkedTenBit, VideoToFull) {
  for (const auto& [v, expected] : {std::pair{0, 0},
                                    {64, 0},
                                    {65, 1},
                                    {100, 41},
                                    {502, 510},
                                    {940, 1020},
                                    {941, 1021},
                                    {1023, 1023}}) {
    for (const char* from : kVideoFormats) {
      for (const char* to : kFullFormats)
        EXPECT_EQ(Sample(from, to, v), expected) << from << to;
    }
  }
}

TEST(WorkedTenBit, FullToVideo) {
  for (const auto& [v, expected] :
       {std::pair{0, 64}, {1, 64}, {2, 65}, {512, 503}, {1020, 940}, {1023, 942}}) {
    for (const char* from : kFullFormats) {
      for (const char* to : kVideoFormats)
        EXPECT_EQ(Sample(from, to, v), expected) << from << to;
    }
  }
}

TEST(WorkedTenBit, TheRoundTripOfTheHighestSampleLosesOne) {
  EXPECT_EQ(Sample("r210", "R210", Sample("R210", "r210", 1023)), 1022);
}

TEST(WorkedTenBit, FullToEightBits) {
  for (const auto& [v, expected] : {std::pair{1023, 255}, {3, 0}, {4, 1}, {0, 0}}) {
    for (const char* from : kFullFormats) {
      for (const char* to : {"32", "BGRA", "RGBA", "RGB3"}) {
        EXPECT_EQ(Sample(from, to, v), expected) << from << to;
      }
    }
  }
}

TEST(WorkedTenBit, VideoToEightBits) {
  for (const auto& [v, expected] : {std::pair{0, 0},
                                    {64, 0},
                                    {67, 0},
                                    {68, 1},
                                    {502, 127},
                                    {939, 254},
                                    {940, 255},
                                    {941, 255},
                                    {1023, 255}}) {
    for (const char* from : kVideoFormats) {
      for (const char* to : {"32", "BGRA", "RGBA", "RGB3"}) {
        EXPECT_EQ(Sample(from, to, v), expected) << from << to;
      }
    }
  }
}

TEST(WorkedTenBit, TheLetterAloneTellsTheRule) {
  const Bytes row = RgbRow("R10L", {{502, 940, 68, 0}});
  EXPECT_EQ(row, RgbRow("R10l", {{502, 940, 68, 0}}));
  EXPECT_EQ(Convert("R10L", "BGRA", 1, row), (Bytes{17, 235, 125, 255}));
  EXPECT_EQ(Convert("R10l", "BGRA", 1, row), (Bytes{1, 255, 127, 255}));
}

TEST(WorkedTenBit, R10ASourceAlphaIsNeverRead) {
  for (const auto& pair : reference::SupportedPairs()) {
    if (pair.source->name != "R10A" || pair.destination->kind == reference::Kind::kYuv) continue;
    Bytes clear = RgbRow("R10B", {{111, 555, 999, 0}});
    Bytes set = clear;
    set[3] |= 3;
    EXPECT_EQ(Convert("R10A", pair.destination->name, 1, clear),
              Convert("R10A", pair.destination->name, 1, set));
  }
}

TEST(WorkedTenBit, R10AIsWrittenWithBothAlphaBits) {
  EXPECT_EQ(Convert("R10A", "R10A", 1, {0xFF, 0x3F, 0xCF, 0xF0}), (Bytes{0xFF, 0x3F, 0xCF, 0xF3}));
  EXPECT_EQ(Convert("R10B", "R10A", 1, {0x12, 0x34, 0x56, 0x78}), (Bytes{0x12, 0x34, 0x56, 0x7B}));
  for (const auto& pair : reference::SupportedPairs()) {
    if (pair.destination->name != "R10A" || pair.cell.usesColourSpace) continue;
    const Bytes row = Convert(pair.source->name, "R10A", 3,
                              Bytes(reference::SourceRowBytes(pair.source->code, 3), 0));
    for (std::size_t x = 0; x < 3; ++x)
      EXPECT_EQ(row[4 * x + 3] & 3, 3) << pair.source->name;
  }
}

TEST(WorkedTenBit, R10AToR10LClearsTheAlphaField) {
  EXPECT_EQ(Convert("R10A", "R10L", 1, {0xFF, 0xFF, 0xFF, 0xFF}), (Bytes{0xFC, 0xFF, 0xFF, 0xFF}));
}

TEST(WorkedTenBit, UnusedBitsChangeNothing) {
  for (const char* source : {"r210", "R210", "R10b", "R10l", "R10B", "R10L", "R10A"}) {
    const bool lowAligned = source[1] == '2';
    const std::size_t byte = lowAligned || source[3] == 'l' || source[3] == 'L' ? 0 : 3;
    for (const auto& pair : reference::SupportedPairs()) {
      if (pair.source->name != source) continue;
      const Bytes clear = RgbRow(source, std::vector<Colour>(48, {123, 456, 789, 0}));
      Bytes set = clear;
      for (std::size_t i = byte; i < set.size(); i += 4)
        set[i] |= lowAligned ? 0xC0 : 3;
      const std::string_view to = pair.destination->name;
      EXPECT_EQ(Convert(source, to, 48, clear), Convert(source, to, 48, set)) << source << to;
    }
  }
}

TEST(WorkedTenBit, AlphaOfEightBitDestinationsIs255) {
  EXPECT_EQ(Convert("R10L", "32", 1, Grey("R10L", 1023)), (Bytes{255, 255, 255, 255}));
  for (const char* source : {"r210", "R210", "R10b", "R10l", "R10B", "R10L", "R10A"}) {
    EXPECT_EQ(Convert(source, "32", 1, Grey(source, 0))[0], 255);
    EXPECT_EQ(Convert(source, "BGRA", 1, Grey(source, 0))[3], 255);
    EXPECT_EQ(Convert(source, "RGBA", 1, Grey(source, 0))[3], 255);
  }
}

TEST(WorkedTenBit, TheSamplePlacesOfEachFormat) {
  const std::vector<Colour> pixel = {{0x2AB, 0x155, 0x3C6, 0}};
  // R 10 1010 1011, G 01 0101 0101, B 11 1100 0110.
  EXPECT_EQ(RgbRow("r210", pixel), (Bytes{0x2A, 0xB5, 0x57, 0xC6}));
  EXPECT_EQ(RgbRow("R10b", pixel), (Bytes{0xAA, 0xD5, 0x5F, 0x18}));
  EXPECT_EQ(RgbRow("R10A", pixel), (Bytes{0xAA, 0xD5, 0x5F, 0x1B}));
  EXPECT_EQ(RgbRow("R10l", pixel), (Bytes{0x18, 0x5F, 0xD5, 0xAA}));
}

// RGB3.

TEST(WorkedRgb3, ToFourBytes) {
  EXPECT_EQ(Convert("RGB3", "BGRA", 1, {10, 20, 30}), (Bytes{30, 20, 10, 255}));
  EXPECT_EQ(Convert("RGB3", "32", 1, {10, 20, 30}), (Bytes{255, 10, 20, 30}));
  EXPECT_EQ(Convert("RGB3", "RGBA", 1, {10, 20, 30}), (Bytes{10, 20, 30, 255}));
  EXPECT_EQ(Convert("RGB3", "R10A", 1, {255, 255, 255}), (Bytes{0xFF, 0x3F, 0xCF, 0xF3}));
}

TEST(WorkedRgb3, FromFourBytes) {
  EXPECT_EQ(Convert("RGBA", "RGB3", 1, {10, 20, 30, 40}), (Bytes{10, 20, 30}));
  EXPECT_EQ(Convert("R10L", "RGB3", 1, Grey("R10L", 1023)), (Bytes{255, 255, 255}));
  EXPECT_EQ(Convert("r210", "RGB3", 1, Grey("r210", 64)), (Bytes{0, 0, 0}));
}

TEST(WorkedRgb3, SeventeenPixelsAreABlockAndOne) {
  Bytes row(51);
  for (std::size_t i = 0; i < row.size(); ++i)
    row[i] = static_cast<std::uint8_t>(5 * i);
  const Bytes rgba = Convert("RGB3", "RGBA", 17, row);
  EXPECT_EQ(rgba.size(), 68u);
  EXPECT_EQ(Convert("RGBA", "RGB3", 17, rgba), row);
}

// All sample values of every sample rule, in every pair of the RGB formats.

TEST(WorkedSamples, AllValuesInEveryRgbPair) {
  for (const auto& pair : reference::SupportedPairs()) {
    if (pair.cell.usesColourSpace || pair.source->kind == reference::Kind::kYuv) continue;
    const int values = 1 << reference::DepthOf(*pair.source);
    std::vector<Colour> pixels;
    for (int v = 0; v < values; ++v) {
      // Every value in every channel, and never the same value in two of them.
      pixels.push_back({v, (v + values / 3) % values, values - 1 - v, v & 255});
    }
    Convert(pair.source->name, pair.destination->name, pixels.size(),
            RgbRow(pair.source->name, pixels));
  }
}

TEST(WorkedSamples, VideoBlackAndFullDarkGreyShareTheirBits) {
  EXPECT_EQ(Grey("r210", 64), Grey("R210", 64));
  EXPECT_EQ(Sample("r210", "BGRA", 64), 0);
  EXPECT_EQ(Sample("R210", "BGRA", 64), 16);
}

}  // namespace
}  // namespace mixdecks::proof
