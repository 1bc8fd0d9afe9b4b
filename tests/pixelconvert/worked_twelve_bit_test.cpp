// Known pixels to and from the 12-bit RGB formats.
#include <gtest/gtest.h>

#include "tests/pixelconvert/worked_rows.h"

namespace mixdecks::proof {
namespace {

using reference::Colour;

TEST(WorkedTwelveBit, BgraBecomesBytesInTheOrderOf32) {
  for (const char* source : {"R12L", "R12B"}) {
    const auto group = [&](const Colour& first) {
      std::vector<Colour> pixels(8);
      pixels[0] = first;
      return RgbRow(source, pixels);
    };
    for (const char* destination : {"32", "BGRA"}) {
      EXPECT_EQ(Convert(source, destination, 1, group({0, 0, 0, 0})), (Bytes{255, 0, 0, 0}));
      EXPECT_EQ(Convert(source, destination, 1, group({4095, 2048, 0, 0})),
                (Bytes{255, 255, 128, 0}));
    }
  }
}

TEST(WorkedTwelveBit, PackingOfOnePixel) {
  const Bytes little = Convert("BGRA", "R12L", 1, {3, 2, 1, 0});
  EXPECT_EQ(little.size(), 36u);
  EXPECT_EQ(Head(little, 4), (Bytes{0x10, 0x00, 0x02, 0x30}));
  EXPECT_EQ(little, Convert("BGRA", "R12L", 1, {3, 2, 1, 255}));
  EXPECT_EQ(Head(Convert("BGRA", "R12B", 1, {3, 2, 1, 0}), 4), (Bytes{0x30, 0x02, 0x00, 0x10}));
}

TEST(WorkedTwelveBit, TheThirdSampleStraddlesTwoWords) {
  const Bytes row = RgbRow("R12L", {{0, 0, 0x030, 0}, {0, 0, 0, 0}});
  EXPECT_EQ(row[3], 0x30);
  EXPECT_EQ(row[4] & 0x0F, 0);
}

TEST(WorkedTwelveBit, TheBitTableOfASubGroup) {
  // Samples one to eight, each a digit thrice; words from the least significant bit upward.
  const Bytes row = RgbRow(
      "R12B",
      {{0x111, 0x222, 0x334, 0}, {0x444, 0x555, 0x667, 0}, {0x777, 0x888, 0, 0}, {0, 0, 0, 0}});
  EXPECT_EQ(Head(row, 12),
            (Bytes{0x34, 0x22, 0x21, 0x11, 0x75, 0x55, 0x44, 0x43, 0x88, 0x87, 0x77, 0x66}));
}

TEST(WorkedTwelveBit, AllEightBitValuesWiden) {
  for (int v = 0; v < 256; ++v) {
    const auto byte = static_cast<std::uint8_t>(v);
    for (const char* destination : {"R12L", "R12B"}) {
      const Bytes row = Convert("BGRA", destination, 1, {byte, byte, byte, 7});
      EXPECT_EQ(RgbOf(destination, row, 1)[0].g, 4095 * v / 255);
    }
  }
}

TEST(WorkedTwelveBit, SomeEightBitValuesWidenTo) {
  for (const auto& [v, expected] :
       {std::pair{1, 16}, {2, 32}, {127, 2039}, {128, 2055}, {254, 4078}, {255, 4095}}) {
    const auto byte = static_cast<std::uint8_t>(v);
    for (const char* destination : {"R12L", "R12B"}) {
      const Bytes row = Convert("BGRA", destination, 1, {byte, byte, byte, 7});
      EXPECT_EQ(RgbOf(destination, row, 1)[0].r, expected) << v;
    }
  }
}

TEST(WorkedTwelveBit, AllTwelveBitValuesNarrowToTheNearest) {
  for (int v = 0; v < 4096; v += 8) {
    std::vector<Colour> pixels;
    for (int i = 0; i < 8; ++i)
      pixels.push_back({v + i, v + i, v + i, 0});
    for (const char* source : {"R12L", "R12B"}) {
      const Bytes bytes = Convert(source, "32", 8, RgbRow(source, pixels));
      for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(bytes[static_cast<std::size_t>(4 * i + 2)], ((v + i) * 510 + 4095) / 8190)
            << v + i;
      }
    }
  }
}

TEST(WorkedTwelveBit, ARowIsWholeGroups) {
  EXPECT_EQ(Convert("BGRA", "R12L", 9, Bytes(36, 200)).size(), 72u);
  EXPECT_EQ(Convert("R12L", "BGRA", 1, Bytes(36, 200)).size(), 4u);
}

TEST(WorkedTwelveBit, BothByteOrdersGiveTheSameBytes) {
  std::vector<Colour> pixels;
  for (int i = 0; i < 24; ++i)
    pixels.push_back({i * 170, 4095 - i * 99, (i * 1001) & 4095, 0});
  EXPECT_EQ(Convert("R12L", "BGRA", 24, RgbRow("R12L", pixels)),
            Convert("R12B", "BGRA", 24, RgbRow("R12B", pixels)));
}

}  // namespace
}  // namespace mixdecks::proof
