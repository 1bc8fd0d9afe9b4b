// The frame that an export stores, against the scalar reference.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include <nlohmann/json.hpp>

#include "tests/tools/command_bench.h"
#include "tests/tools/frame_reference.h"

namespace mixdecks {
namespace {

using test::Bytes;
using test::CommandBench;
using test::CommandResult;
using test::FramePixel;
using testing::HasSubstr;

constexpr std::uint32_t kWidth = 1920;
constexpr std::uint32_t kHeight = 1080;

/// Bars, ramps and noise, with every value of alpha: no two channels are alike.
Bytes Pattern(std::uint32_t width, std::uint32_t height) {
  std::mt19937 random(20);
  Bytes rgba;
  rgba.reserve(std::size_t{4} * width * height);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const auto noise = static_cast<std::uint32_t>(random());
      const bool noisy = y % 3 == 0;
      rgba.push_back(static_cast<std::uint8_t>(noisy ? noise : x / 8));
      rgba.push_back(static_cast<std::uint8_t>(noisy ? noise >> 8 : (x / 240 % 2) * 255));
      rgba.push_back(static_cast<std::uint8_t>(noisy ? noise >> 16 : 255 - y));
      rgba.push_back(static_cast<std::uint8_t>(y % 2 == 0 ? noise >> 24 : x));
    }
  }
  return rgba;
}

void MakeOpaque(Bytes& rgba) {
  for (std::size_t i = 3; i < rgba.size(); i += 4)
    rgba[i] = 255;
}

Bytes WithoutAlpha(const Bytes& rgba) {
  Bytes rgb;
  for (std::size_t i = 0; i < rgba.size(); ++i) {
    if (i % 4 != 3) rgb.push_back(rgba[i]);
  }
  return rgb;
}

/// Says where two frames part instead of printing megabytes.
void ExpectSameFrame(const Bytes& frame, const Bytes& expected, std::size_t width) {
  ASSERT_EQ(frame.size(), expected.size());
  const auto [at, other] = std::ranges::mismatch(frame, expected);
  if (at == frame.end()) return;
  const auto pixel = static_cast<std::size_t>(at - frame.begin()) / 4;
  ADD_FAILURE() << "first difference at " << pixel % width << ", " << pixel / width;
}

TEST(ExportFrameTest, StoresThePictureWithItsAlphaBitForBit) {
  const CommandBench bench;
  const Bytes rgba = Pattern(kWidth, kHeight);
  const std::string picture =
      bench.Write("pattern.png", test::PngFile(kWidth, kHeight, test::kPngRgba, 8, rgba));
  for (const bool premultiply : {true, false}) {
    SCOPED_TRACE(premultiply);
    const CommandResult result = bench.Export(
        {picture, "--mode", "10i9", premultiply ? "--premultiply" : "--no-premultiply"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.err, "");
    ExpectSameFrame(bench.Frame(1), test::ReferenceFrame(rgba, kWidth, true, premultiply), kWidth);
  }
}

TEST(ExportFrameTest, StoresAPictureWithoutAlphaAsOpaque) {
  const CommandBench bench;
  Bytes rgba = Pattern(kWidth, kHeight);
  const std::string picture =
      bench.Write("pattern.ppm", test::PnmFile('6', kWidth, kHeight, WithoutAlpha(rgba)));
  ASSERT_EQ(bench.Export({picture, "--slot", "7"}).exitCode, 0);
  MakeOpaque(rgba);
  ExpectSameFrame(bench.Frame(7), test::ReferenceFrame(rgba, kWidth, true, true), kWidth);
}

TEST(ExportFrameTest, UsesTheMatrixOfStandardDefinition) {
  const CommandBench bench;
  const Bytes rgba = Pattern(720, 576);
  const std::string picture =
      bench.Write("pattern.png", test::PngFile(720, 576, test::kPngRgba, 8, rgba));
  ASSERT_EQ(bench.Export({picture, "--mode", "pall", "--no-premultiply"}).exitCode, 0);
  ExpectSameFrame(bench.Frame(1), test::ReferenceFrame(rgba, 720, false, false), 720);
}

TEST(ExportFrameTest, TakesAnExtraAlphaChannelInsteadOfTransparency) {
  const CommandBench bench;
  Bytes rgba = Pattern(720, 486);
  const std::string picture =
      bench.Write("pattern.png", test::PngFile(720, 486, test::kPngRgba, 8, rgba));
  Bytes mask;
  for (std::size_t i = 0; i < rgba.size(); i += 4) {
    mask.push_back(static_cast<std::uint8_t>(i / 4));
    rgba[i + 3] = mask.back();
  }
  const std::string alpha = bench.Write("mask.pgm", test::PnmFile('5', 720, 486, mask));
  const CommandResult result = bench.Export({"--alpha-channel", alpha, picture, "--mode", "ntsc"});
  ASSERT_EQ(result.exitCode, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("from the extra alpha channel, colours multiplied by it"));
  ExpectSameFrame(bench.Frame(1), test::ReferenceFrame(rgba, 720, false, true), 720);
}

TEST(ExportFrameTest, DoesNotMindRowsWithGapsInTheFrame) {
  const CommandBench bench;
  const Bytes rgba = Pattern(720, 486);
  const std::string picture =
      bench.Write("pattern.png", test::PngFile(720, 486, test::kPngRgba, 8, rgba));
  const std::string scenario = bench.Write("gaps.json", R"({"mode": "ntsc", "rowPadding": 64})");
  ASSERT_EQ(bench.Export({picture, "--scenario", scenario}).exitCode, 0);
  ExpectSameFrame(bench.Frame(1), test::ReferenceFrame(rgba, 720, false, true), 720);
}

// 1000 x 500 into 1920 x 1080: 1920 x 960 at 0, 60.
class FittedFrameTest : public testing::Test {
 protected:
  static constexpr FramePixel kRed = {940, 408, 250};
  static constexpr std::size_t kTop = 60;
  static constexpr std::size_t kBottom = 60 + 960;

  nlohmann::json Export(int colourType, const Bytes& pixel) {
    Bytes samples;
    for (int i = 0; i < 1000 * 500; ++i)
      samples.insert(samples.end(), pixel.begin(), pixel.end());
    const std::string picture =
        bench_.Write("solid.png", test::PngFile(1000, 500, colourType, 8, samples));
    const CommandResult result = bench_.Export({picture, "--json", "--mode", "10i9"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    frame_ = bench_.Frame(1);
    return nlohmann::json::parse(result.out);
  }
  FramePixel At(std::size_t x, std::size_t y) const { return test::PixelAt(frame_, kWidth, x, y); }
  /// Rows above and below the picture, whole.
  void ExpectMargins(const FramePixel& expected) const {
    for (const std::size_t y : {std::size_t{0}, kTop - 1, kBottom, std::size_t{kHeight - 1}}) {
      for (std::size_t x = 0; x < kWidth; ++x)
        ASSERT_EQ(At(x, y), expected) << x << ", " << y;
    }
  }

  CommandBench bench_;
  Bytes frame_;
};

TEST_F(FittedFrameTest, LandsInTheMiddleAndIsOpaqueEverywhere) {
  const nlohmann::json report = Export(test::kPngRgb, {255, 0, 0});
  EXPECT_EQ(report["fit"],
            (nlohmann::json{{"left", 0.0}, {"top", 60.0}, {"width", 1920.0}, {"height", 960.0}}));
  ExpectMargins({940, 512, 64});
  for (const std::size_t y : {kTop + 2, std::size_t{540}, kBottom - 3}) {
    EXPECT_EQ(At(960, y), kRed) << y;
  }
}

TEST_F(FittedFrameTest, HasTransparentMarginsWhenThePictureHasAlpha) {
  Export(test::kPngRgba, {255, 0, 0, 255});
  ExpectMargins({64, 512, 64});
  EXPECT_EQ(At(960, 540), kRed);
}

TEST_F(FittedFrameTest, ScalesAlphaAsWell) {
  Export(test::kPngRgba, {255, 0, 0, 128});
  const FramePixel pixel = At(960, 540);
  EXPECT_EQ(pixel.alpha, 503u);
  EXPECT_EQ(pixel.luma, 157u);  // 64 + (250 - 64) * 439 / 876, rounded
}

TEST(ExportFrameTest, DeepDocumentsComeOutBlueOrBlack) {
  const CommandBench bench;
  const Bytes rgb = {0xFF, 0xFF, 0xFF, 0xFF, 0x80, 0x00};
  Bytes samples;
  for (int i = 0; i < 720 * 486; ++i)
    samples.insert(samples.end(), rgb.begin(), rgb.end());
  const std::string picture =
      bench.Write("deep.png", test::PngFile(720, 486, test::kPngRgb, 16, samples));

  const CommandResult deep = bench.Export({picture, "--mode", "ntsc"});
  ASSERT_EQ(deep.exitCode, 0) << deep.err;
  EXPECT_THAT(deep.err, HasSubstr("warning"));
  EXPECT_THAT(deep.err, HasSubstr("blue"));
  EXPECT_THAT(deep.err, HasSubstr("--depth 8"));
  Bytes blue;
  for (int i = 0; i < 720 * 486; ++i)
    blue.insert(blue.end(), {0, 0, 127, 255});
  ExpectSameFrame(bench.Frame(1), test::ReferenceFrame(blue, 720, false, true), 720);

  const CommandResult converted = bench.Export({picture, "--mode", "ntsc", "--depth", "8"});
  ASSERT_EQ(converted.exitCode, 0) << converted.err;
  EXPECT_EQ(converted.err, "");
  Bytes right;
  for (int i = 0; i < 720 * 486; ++i)
    right.insert(right.end(), {255, 255, 128, 255});
  ExpectSameFrame(bench.Frame(1), test::ReferenceFrame(right, 720, false, true), 720);
}

}  // namespace
}  // namespace mixdecks
