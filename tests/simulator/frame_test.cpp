// Frames: judging their alpha, making pictures of them, and watching over what clients write.
#include "pixelconvert/pixel_converter.h"
#include "simulator/frame_buffer.h"
#include "simulator/frame_picture.h"
#include "tests/simulator/sample_frames.h"

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#include <gtest/gtest.h>
#include <stb/stb_image.h>

#include <array>
#include <cstring>
#include <memory>

namespace mixdecks::simulator {
namespace {

using test::AppendPixel;
using test::kSmallMode;
using test::SolidFrame;

std::vector<std::uint8_t> Pair(std::uint32_t alpha1, std::uint32_t cb, std::uint32_t luma1,
                               std::uint32_t alpha2, std::uint32_t cr, std::uint32_t luma2) {
  std::vector<std::uint8_t> pair;
  AppendPixel(pair, alpha1, cb, luma1);
  AppendPixel(pair, alpha2, cr, luma2);
  return pair;
}

TEST(JudgeAlpha, TellsTheThreeKindsApart) {
  EXPECT_EQ(JudgeAlpha(Pair(940, 100, 940, 940, 900, 64)), FrameAlpha::kOpaque);
  EXPECT_EQ(JudgeAlpha(Pair(500, 300, 500, 64, 700, 64)), FrameAlpha::kPremultiplied);
  EXPECT_EQ(JudgeAlpha(Pair(500, 300, 501, 940, 700, 64)), FrameAlpha::kPremultiplied)
      << "multiplying rounds";
  EXPECT_EQ(JudgeAlpha(Pair(500, 300, 502, 940, 700, 64)), FrameAlpha::kStraight);
  EXPECT_EQ(JudgeAlpha(Pair(940, 300, 100, 64, 700, 100)), FrameAlpha::kStraight)
      << "luma where nothing is";
  EXPECT_EQ(JudgeAlpha(Pair(64, 513, 64, 64, 512, 64)), FrameAlpha::kStraight)
      << "colour where nothing is";
}

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;  ///< R, G, B, A

  std::array<int, 4> At(std::size_t pixel) const {
    return {pixels[4 * pixel], pixels[4 * pixel + 1], pixels[4 * pixel + 2], pixels[4 * pixel + 3]};
  }
};

Picture PictureOf(std::uint32_t mode, const std::vector<std::uint8_t>& frame) {
  Still still;
  still.mode = mode;
  still.width = FindVideoMode(mode)->width;
  still.height = FindVideoMode(mode)->height;
  still.alpha = JudgeAlpha(frame);
  const std::vector<std::uint8_t> file = EncodePicture(still, frame);
  Picture picture;
  int channels = 0;
  const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
      stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &picture.width,
                            &picture.height, &channels, 0),
      &stbi_image_free);
  EXPECT_EQ(channels, 4);
  if (pixels == nullptr || channels != 4) return picture;
  picture.pixels.assign(pixels.get(), pixels.get() + 4 * picture.width * picture.height);
  return picture;
}

TEST(EncodePicture, ShowsTheColoursOfTheModesColourSpace) {
  // Red and green, as the conversion library makes them in either colour space.
  const Picture red601 = PictureOf(kSmallMode, SolidFrame(kSmallMode, 940, 361, 959, 326));
  EXPECT_EQ(red601.width, 720);
  EXPECT_EQ(red601.height, 486);
  EXPECT_EQ(red601.At(0)[0], 254);
  EXPECT_LE(red601.At(0)[1], 1);
  EXPECT_EQ(red601.At(0)[3], 255);
  constexpr std::uint32_t k720p = FourCharacterCode("72p0");
  const Picture green709 = PictureOf(k720p, SolidFrame(k720p, 940, 166, 105, 690));
  EXPECT_EQ(green709.width, 1280);
  EXPECT_EQ(green709.At(0)[1], 254);
  EXPECT_LE(green709.At(0)[0], 1);
}

TEST(EncodePicture, DividesPremultipliedColours) {
  // White at half alpha, multiplied: luma equals alpha.
  const Picture picture = PictureOf(kSmallMode, SolidFrame(kSmallMode, 502, 512, 512, 502));
  EXPECT_NEAR(picture.At(0)[0], 254, 2);
  EXPECT_NEAR(picture.At(0)[2], 254, 2);
  EXPECT_NEAR(picture.At(0)[3], 127, 1);
}

TEST(EncodePicture, LeavesStraightColours) {
  const Picture picture = PictureOf(kSmallMode, SolidFrame(kSmallMode, 283, 512, 512, 502));
  EXPECT_NEAR(picture.At(0)[0], 127, 1);
  EXPECT_NEAR(picture.At(0)[3], 63, 1);
}

TEST(EncodePicture, ShowsNothingWhereAlphaIsZero) {
  const Picture picture = PictureOf(kSmallMode, SolidFrame(kSmallMode, 64, 512, 512, 64));
  EXPECT_EQ(picture.At(1000), (std::array<int, 4>{0, 0, 0, 0}));
}

class FrameBufferTest : public testing::Test {
 protected:
  static constexpr std::uint32_t kPadding = 12;

  std::uint8_t* Row(std::uint32_t row) {
    return buffer.Bytes() + std::size_t{row} * buffer.RowBytes();
  }
  void WriteAllRows() {
    for (std::uint32_t row = 0; row < buffer.Height(); ++row) {
      std::memset(Row(row), static_cast<int>(row & 0x3F), test::kSmallWidth * 4);
    }
  }

  FrameBuffer buffer{kSmallMode, kPadding};
};

TEST_F(FrameBufferTest, HasTheModesSizeAndPaddedRows) {
  EXPECT_EQ(buffer.Mode(), kSmallMode);
  EXPECT_EQ(buffer.Height(), 486u);
  EXPECT_EQ(buffer.RowBytes(), 720u * 4 + kPadding);
}

TEST_F(FrameBufferTest, FindsNothingWrongWithAWrittenFrame) {
  WriteAllRows();
  EXPECT_EQ(buffer.FindFault(), std::nullopt);
}

TEST_F(FrameBufferTest, GivesTheRowsWithoutGaps) {
  WriteAllRows();
  const std::vector<std::uint8_t> packed = buffer.Packed();
  ASSERT_EQ(packed.size(), 720u * 486 * 4);
  for (std::size_t row = 0; row < 486; ++row) {
    EXPECT_EQ(packed[row * 720 * 4], row & 0x3F);
    EXPECT_EQ(packed[(row + 1) * 720 * 4 - 1], row & 0x3F);
  }
}

TEST_F(FrameBufferTest, MissesARow) {
  EXPECT_EQ(buffer.FindFault(), "row 0 was not written");
  WriteAllRows();
  std::memset(Row(485), 0xA5, test::kSmallWidth * 4);
  EXPECT_EQ(buffer.FindFault(), "row 485 was not written");
}

TEST_F(FrameBufferTest, SeesBytesThatWereNotToBeWritten) {
  WriteAllRows();
  Row(7)[720 * 4 + kPadding - 1] = 0;
  EXPECT_EQ(buffer.FindFault(), "bytes behind row 7 were written");
  Row(7)[720 * 4 + kPadding - 1] = 0xA5;
  buffer.Bytes()[-1] = 0;
  EXPECT_EQ(buffer.FindFault(), "bytes before the frame were written");
  buffer.Bytes()[-1] = 0xA5;
  buffer.Bytes()[std::size_t{486} * buffer.RowBytes()] = 0;
  EXPECT_EQ(buffer.FindFault(), "bytes behind the frame were written");
}

}  // namespace
}  // namespace mixdecks::simulator
