#include "transfer/fit_rect.h"

#include <gtest/gtest.h>

#include <cmath>

namespace mixdecks {
namespace {

struct FitCase {
  std::int32_t sourceWidth, sourceHeight, destinationWidth, destinationHeight;
  FitRect expected;
};

class FitRectTest : public testing::TestWithParam<FitCase> {};

TEST_P(FitRectTest, LandsAt) {
  const FitCase& c = GetParam();
  FitRect rectangle{};
  ComputeFitRect(c.sourceWidth, c.sourceHeight, c.destinationWidth, c.destinationHeight, rectangle);
  EXPECT_EQ(rectangle.left, c.expected.left);
  EXPECT_EQ(rectangle.top, c.expected.top);
  EXPECT_EQ(rectangle.width, c.expected.width);
  EXPECT_EQ(rectangle.height, c.expected.height);
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, FitRectTest,
    testing::Values(FitCase{1000, 500, 1920, 1080, {0, 60, 1920, 960}},
                    FitCase{500, 1000, 1920, 1080, {690, 0, 540, 1080}},
                    FitCase{3840, 2160, 1920, 1080, {0, 0, 1920, 1080}},
                    FitCase{960, 540, 1920, 1080, {0, 0, 1920, 1080}},
                    FitCase{30000, 20000, 1920, 1080, {150, 0, 1620, 1080}},
                    // 1000 x (1080 / 999) is 1081.08: 419.46 down, 1081.08 up.
                    FitCase{1000, 999, 1920, 1080, {419, 0, 1082, 1080}},
                    FitCase{1, 1, 720, 486, {117, 0, 486, 486}},
                    // Nobody draws an image of the right size, and the origin says so.
                    FitCase{1920, 1080, 1920, 1080, {1920, 1080, 1920, 1080}}));

TEST(ComputeFitRect, StaysWithinAPixelOfTheDestination) {
  for (std::int32_t width = 1; width <= 32767; width += 331) {
    for (std::int32_t height = 1; height <= 32767; height += 337) {
      FitRect rectangle{};
      ComputeFitRect(width, height, 1920, 1080, rectangle);
      ASSERT_GE(rectangle.left, -1.0F) << width << " x " << height;
      ASSERT_GE(rectangle.top, -1.0F) << width << " x " << height;
      ASSERT_LE(rectangle.left + rectangle.width, 1921.0F) << width << " x " << height;
      ASSERT_LE(rectangle.top + rectangle.height, 1081.0F) << width << " x " << height;
      ASSERT_EQ(rectangle.left, std::floor(rectangle.left));
      ASSERT_EQ(rectangle.width, std::ceil(rectangle.width));
    }
  }
}

}  // namespace
}  // namespace mixdecks
