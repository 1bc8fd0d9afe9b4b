// What every scaler does, whichever system it comes from. Values inside a drawing are compared
// with slack: systems filter differently.
#include "transfer/image_scaler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace mixdecks {
namespace {

using Pixel = std::array<std::uint8_t, 4>;

struct Image {
  std::int32_t width, height;
  std::vector<Pixel> pixels;

  Image(std::int32_t w, std::int32_t h, Pixel fill = {})
      : width(w),
        height(h),
        pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), fill) {}
  Pixel& At(std::int32_t x, std::int32_t y) {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
  std::uint8_t* Data() { return pixels.front().data(); }
};

bool Draw(Image& source, Image& destination, const FitRect& rectangle) {
  return DrawScaledImage(source.Data(), source.width, source.height, destination.Data(),
                         destination.width, destination.height, rectangle);
}

bool IsNear(const Pixel& pixel, const Pixel& expected, int slack) {
  for (std::size_t lane = 0; lane < 3; ++lane) {
    if (std::abs(int{pixel[lane]} - int{expected[lane]}) > slack) return false;
  }
  return true;
}

bool IsBlack(const Pixel& pixel) {
  return IsNear(pixel, {}, 0);
}

std::string Show(const Pixel& pixel) {
  return testing::PrintToString(std::vector<int>(pixel.begin(), pixel.begin() + 3));
}

class ImageScaler : public testing::Test {
 protected:
  void SetUp() override { StartImageScaler(); }
  void TearDown() override { StopImageScaler(); }
};

constexpr Pixel kTeal{200, 120, 10, 77};

TEST(StoppedImageScaler, DrawsNothing) {
  Image source(4, 4, kTeal);
  Image destination(8, 8);
  EXPECT_FALSE(Draw(source, destination, {0, 0, 8, 8}));
  StartImageScaler();
  EXPECT_TRUE(Draw(source, destination, {0, 0, 8, 8}));
  StopImageScaler();
  EXPECT_FALSE(Draw(source, destination, {0, 0, 8, 8}));
}

TEST_F(ImageScaler, KeepsAFlatColourAndZeroMargins) {
  Image source(100, 50, kTeal);
  Image destination(192, 108, Pixel{9, 9, 9, 9});
  ASSERT_TRUE(Draw(source, destination, {0, 6, 192, 96}));
  for (std::int32_t y = 0; y < 108; ++y) {
    const bool margin = y < 6 || y >= 102;
    const bool edge = y == 6 || y == 101;  // some systems blend the outermost row
    for (std::int32_t x = 0; x < 192; ++x) {
      const Pixel& pixel = destination.At(x, y);
      if (margin) {
        ASSERT_TRUE(IsBlack(pixel)) << x << ", " << y << ": " << Show(pixel);
      } else if (!edge && x > 0 && x < 191) {
        ASSERT_TRUE(IsNear(pixel, kTeal, 1)) << x << ", " << y << ": " << Show(pixel);
      }
    }
  }
}

TEST_F(ImageScaler, KeepsEachQuarterInItsPlace) {
  const Pixel colours[2][2] = {{{250, 0, 0, 0}, {0, 250, 0, 0}}, {{0, 0, 250, 0}, {90, 90, 0, 0}}};
  for (const std::int32_t size : {20, 400}) {
    Image source(size, size);
    for (std::int32_t y = 0; y < size; ++y) {
      for (std::int32_t x = 0; x < size; ++x) {
        source.At(x, y) = colours[y * 2 / size][x * 2 / size];
      }
    }
    Image destination(120, 100);
    ASSERT_TRUE(Draw(source, destination, {10, 0, 100, 100}));
    for (const std::int32_t y : {25, 75}) {
      for (const std::int32_t x : {25, 75}) {
        EXPECT_TRUE(IsNear(destination.At(x + 10, y), colours[y / 50][x / 50], 2))
            << size << ": " << x << ", " << y << ": " << Show(destination.At(x + 10, y));
      }
    }
  }
}

TEST_F(ImageScaler, IgnoresTheFourthByteOfTheSource) {
  Image opaque(10, 10);
  Image clear(10, 10);
  for (std::int32_t i = 0; i < 100; ++i) {
    const auto value = static_cast<std::uint8_t>(i * 37);
    opaque.At(i % 10, i / 10) = {value, static_cast<std::uint8_t>(255 - value), 3, 255};
    clear.At(i % 10, i / 10) = {value, static_cast<std::uint8_t>(255 - value), 3, 0};
  }
  Image fromOpaque(33, 33);
  Image fromClear(33, 33);
  ASSERT_TRUE(Draw(opaque, fromOpaque, {0, 0, 33, 33}));
  ASSERT_TRUE(Draw(clear, fromClear, {0, 0, 33, 33}));
  for (std::int32_t i = 0; i < 33 * 33; ++i) {
    ASSERT_TRUE(IsNear(fromOpaque.At(i % 33, i / 33), fromClear.At(i % 33, i / 33), 0)) << i;
  }
}

TEST_F(ImageScaler, InterpolatesBetweenPixels) {
  Image source(2, 1);
  source.At(1, 0) = {240, 240, 240, 0};
  Image destination(64, 32);
  ASSERT_TRUE(Draw(source, destination, {0, 0, 64, 32}));
  // Where a source pixel's centre lies differs between systems; that a ramp joins two does not.
  int between = 0;
  for (std::int32_t x = 0; x < 64; ++x) {
    const int value = destination.At(x, 16)[0];
    between += value > 60 && value < 180 ? 1 : 0;
  }
  EXPECT_GT(between, 8);
  for (std::int32_t x = 17; x < 48; ++x) {
    EXPECT_GE(destination.At(x, 16)[0], destination.At(x - 1, 16)[0]) << x;
  }
}

TEST_F(ImageScaler, TakesFractionsAndRectanglesThatReachOut) {
  Image source(40, 40, kTeal);
  Image destination(60, 60);
  ASSERT_TRUE(Draw(source, destination, {10.25F, -5.5F, 30.5F, 80.0F}));
  EXPECT_TRUE(IsBlack(destination.At(9, 30)));
  EXPECT_TRUE(IsBlack(destination.At(42, 30)));
  for (const std::int32_t y : {1, 30, 58}) {
    EXPECT_TRUE(IsNear(destination.At(12, y), kTeal, 1)) << Show(destination.At(12, y));
    EXPECT_TRUE(IsNear(destination.At(38, y), kTeal, 1)) << Show(destination.At(38, y));
  }
  ASSERT_TRUE(Draw(source, destination, {200, 200, 10, 10}));
  EXPECT_THAT(destination.pixels, testing::Each(testing::ResultOf(IsBlack, testing::IsTrue())));
}

TEST_F(ImageScaler, RefusesImagesWithoutPixels) {
  Image image(4, 4);
  const FitRect whole{0, 0, 4, 4};
  EXPECT_FALSE(DrawScaledImage(image.Data(), 0, 4, image.Data(), 4, 4, whole));
  EXPECT_FALSE(DrawScaledImage(image.Data(), 4, -1, image.Data(), 4, 4, whole));
  EXPECT_FALSE(DrawScaledImage(image.Data(), 4, 4, image.Data(), 0, 4, whole));
}

#ifndef _WIN32
TEST_F(ImageScaler, FiltersBeforeItShrinks) {
  Image source(256, 256);
  for (std::int32_t y = 0; y < 256; ++y) {
    for (std::int32_t x = 0; x < 256; ++x) {
      source.At(x, y) = (x + y) % 2 == 0 ? Pixel{} : Pixel{254, 254, 254, 0};
    }
  }
  Image destination(37, 37);
  ASSERT_TRUE(Draw(source, destination, {0, 0, 37, 37}));
  for (std::int32_t i = 0; i < 37 * 37; ++i) {
    ASSERT_TRUE(IsNear(destination.At(i % 37, i / 37), {127, 127, 127, 0}, 6)) << i;
  }
}

TEST_F(ImageScaler, CopiesAtTheSameSize) {
  Image source(16, 16);
  for (std::int32_t i = 0; i < 256; ++i) {
    const auto value = static_cast<std::uint8_t>(i);
    source.At(i % 16, i / 16) = {value, static_cast<std::uint8_t>(i * 7), 200, 0};
  }
  Image destination(20, 18);
  ASSERT_TRUE(Draw(source, destination, {3, 1, 16, 16}));
  for (std::int32_t i = 0; i < 256; ++i) {
    ASSERT_TRUE(IsNear(destination.At(3 + i % 16, 1 + i / 16), source.At(i % 16, i / 16), 0)) << i;
  }
}
#endif

}  // namespace
}  // namespace mixdecks
