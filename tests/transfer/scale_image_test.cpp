#include "transfer/scale_image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "transfer/image_scaler.h"

namespace mixdecks {
namespace {

using Pixel = std::array<std::uint8_t, 4>;

constexpr std::int32_t kWidth = 192;
constexpr std::int32_t kHeight = 108;

class ScaleImageTest : public testing::Test {
 protected:
  void SetUp() override { StartImageScaler(); }
  void TearDown() override { StopImageScaler(); }

  bool Scale(std::int32_t width, std::int32_t height, bool hasAlpha, Pixel fill) {
    source_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), fill);
    return ScaleImage(source_.front().data(), width, height, hasAlpha, destination_.front().data(),
                      kWidth, kHeight);
  }
  const Pixel& At(std::int32_t x, std::int32_t y) const {
    return destination_[static_cast<std::size_t>(y * kWidth + x)];
  }

  std::vector<Pixel> source_;
  std::vector<Pixel> destination_ = std::vector<Pixel>(kWidth * kHeight, Pixel{1, 2, 3, 4});
};

bool IsNear(const Pixel& pixel, const Pixel& expected) {
  return std::ranges::equal(pixel, expected, [](int a, int b) { return std::abs(a - b) <= 1; });
}

TEST_F(ScaleImageTest, ScalesAlphaLikeAColour) {
  ASSERT_TRUE(Scale(100, 50, true, {10, 200, 90, 140}));
  EXPECT_TRUE(IsNear(At(96, 54), {10, 200, 90, 140}));
  EXPECT_TRUE(IsNear(At(5, 10), {10, 200, 90, 140}));
}

TEST_F(ScaleImageTest, LeavesClearMarginsRoundAnImageWithAlpha) {
  ASSERT_TRUE(Scale(100, 50, true, {10, 200, 90, 255}));
  for (std::int32_t x = 0; x < kWidth; ++x) {
    ASSERT_EQ(At(x, 0), Pixel{}) << x;
    ASSERT_EQ(At(x, 5), Pixel{}) << x;
    ASSERT_EQ(At(x, 102), Pixel{}) << x;
    ASSERT_EQ(At(x, 107), Pixel{}) << x;
  }
}

TEST_F(ScaleImageTest, KeepsColourAndAlphaApart) {
  ASSERT_TRUE(Scale(384, 216, true, {255, 255, 255, 0}));
  EXPECT_TRUE(IsNear(At(96, 54), {255, 255, 255, 0}));
  ASSERT_TRUE(Scale(384, 216, true, {0, 0, 0, 255}));
  EXPECT_TRUE(IsNear(At(96, 54), {0, 0, 0, 255}));
}

TEST_F(ScaleImageTest, LeavesTheSourceAloneWithoutAlpha) {
  ASSERT_TRUE(Scale(100, 50, false, {10, 200, 90, 7}));
  EXPECT_EQ(source_[42], (Pixel{10, 200, 90, 7}));
  EXPECT_EQ(At(96, 54)[1], 200);
}

TEST_F(ScaleImageTest, FailsWithoutAScalerOrPixels) {
  EXPECT_FALSE(ScaleImage(destination_.front().data(), 100, 0, false, destination_.front().data(),
                          kWidth, kHeight));
  EXPECT_FALSE(ScaleImage(destination_.front().data(), 0, 100, true, destination_.front().data(),
                          kWidth, kHeight));
  StopImageScaler();
  EXPECT_FALSE(Scale(100, 50, false, {}));
  EXPECT_FALSE(Scale(100, 50, true, {}));
  StartImageScaler();
}

}  // namespace
}  // namespace mixdecks
