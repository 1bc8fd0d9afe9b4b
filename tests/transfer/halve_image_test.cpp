#include "transfer/halve_image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "transfer/image_size.h"

namespace mixdecks {
namespace {

std::vector<std::uint8_t> Picture(std::int32_t width, std::int32_t height) {
  std::vector<std::uint8_t> picture(ImageBytes(width, height));
  for (std::size_t i = 0; i < picture.size(); ++i) {
    picture[i] = static_cast<std::uint8_t>(i * i * 31 + i * 7);
  }
  return picture;
}

std::vector<std::uint8_t> ReferenceHalf(const std::vector<std::uint8_t>& picture, int width,
                                        int height) {
  std::vector<std::uint8_t> half;
  for (int y = 0; y < height; y += 2) {
    for (int x = 0; x < width; x += 2) {
      for (int lane = 0; lane < 4; ++lane) {
        int sum = 2;
        for (const int row : {y, std::min(y + 1, height - 1)}) {
          for (const int column : {x, std::min(x + 1, width - 1)}) {
            sum += picture[static_cast<std::size_t>((row * width + column) * 4 + lane)];
          }
        }
        half.push_back(static_cast<std::uint8_t>(sum / 4));
      }
    }
  }
  return half;
}

TEST(HalveImage, AveragesBlocksOfTwoByTwo) {
  for (std::int32_t width = 1; width < 20; ++width) {
    for (std::int32_t height = 1; height < 6; ++height) {
      std::vector<std::uint8_t> picture = Picture(width, height);
      const std::vector<std::uint8_t> expected = ReferenceHalf(picture, width, height);
      std::int32_t halfWidth = width;
      std::int32_t halfHeight = height;
      HalveImage(picture.data(), halfWidth, halfHeight);
      EXPECT_EQ(halfWidth, (width + 1) / 2);
      EXPECT_EQ(halfHeight, (height + 1) / 2);
      picture.resize(ImageBytes(halfWidth, halfHeight));
      EXPECT_EQ(picture, expected) << width << " x " << height;
    }
  }
}

}  // namespace
}  // namespace mixdecks
