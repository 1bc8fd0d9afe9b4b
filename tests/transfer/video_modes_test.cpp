#include "transfer/video_modes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mixdecks {
namespace {

std::string Describe(const VideoModeInfo& mode) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8)
    text += static_cast<char>(mode.code >> shift & 255);
  for (const std::uint32_t column :
       {mode.width, mode.height, mode.aspectNumerator, mode.aspectDenominator, mode.colourSpace,
        mode.frameRateFamily}) {
    text += ' ' + std::to_string(column);
  }
  return text;
}

TEST(VideoModes, AreTheseInThisOrder) {
  std::vector<std::string> rows;
  for (const VideoModeInfo& mode : VideoModes())
    rows.push_back(Describe(mode));
  const std::vector<std::string> expected = {
      "ntsc 720 486 4 3 0 30",    "pall 720 576 4 3 0 25",    "ntsA 720 486 16 9 0 30",
      "palA 720 576 16 9 0 25",   "72p0 1280 720 16 9 1 25",  "72p9 1280 720 16 9 1 30",
      "10i0 1920 1080 16 9 1 25", "10i9 1920 1080 16 9 1 30", "10p3 1920 1080 16 9 1 25",
      "10p4 1920 1080 16 9 1 25", "10p5 1920 1080 16 9 1 25", "10p7 1920 1080 16 9 1 30",
      "10p0 1920 1080 16 9 1 25", "10p9 1920 1080 16 9 1 30", "4H23 3840 2160 16 9 1 25",
      "4H24 3840 2160 16 9 1 25", "4H25 3840 2160 16 9 1 25", "4H29 3840 2160 16 9 1 30",
      "4H50 3840 2160 16 9 1 25", "4H59 3840 2160 16 9 1 30"};
  EXPECT_EQ(rows, expected);
}

TEST(VideoModes, AreFoundByTheirCode) {
  for (const VideoModeInfo& mode : VideoModes())
    EXPECT_EQ(FindVideoMode(mode.code), &mode);
  EXPECT_EQ(FindVideoMode(0x6E747363)->height, 486U);
}

TEST(VideoModes, FallBackToFullHighDefinition) {
  const std::string fallback(4, '\0');
  for (const std::uint32_t code : {0U, 0x6373746EU, 0x31306931U, 0xFFFFFFFFU}) {
    EXPECT_EQ(Describe(*FindVideoMode(code)), fallback + " 1920 1080 16 9 1 25") << code;
  }
}

TEST(VideoModes, SuitTheConvertersBlocks) {
  for (const VideoModeInfo& mode : VideoModes())
    EXPECT_EQ(mode.width % 4, 0U) << mode.code;
}

}  // namespace
}  // namespace mixdecks
