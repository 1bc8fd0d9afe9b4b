#include "transfer/alpha_lane.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace mixdecks {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Ramp(std::size_t pixels, unsigned factor) {
  Bytes bytes(pixels * 4);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(i * factor + 11);
  }
  return bytes;
}

/// All counts around the block of four: what is left over is the risk.
class AlphaLane : public testing::TestWithParam<std::size_t> {};

TEST_P(AlphaLane, BecomesOpaque) {
  Bytes pixels = Ramp(GetParam(), 7);
  Bytes expected = pixels;
  for (std::size_t i = 3; i < expected.size(); i += 4)
    expected[i] = 255;
  SetAlphaOpaque(pixels.data(), GetParam());
  EXPECT_EQ(pixels, expected);
}

TEST_P(AlphaLane, BecomesBlue) {
  Bytes pixels = Ramp(GetParam(), 7);
  Bytes expected(pixels.size());
  for (std::size_t i = 0; i < expected.size(); i += 4)
    expected[i] = pixels[i + 3];
  KeepAlphaAsBlue(pixels.data(), GetParam());
  EXPECT_EQ(pixels, expected);
}

TEST_P(AlphaLane, IsTakenFromBlue) {
  Bytes pixels = Ramp(GetParam(), 7);
  const Bytes lane = Ramp(GetParam(), 29);
  Bytes expected = pixels;
  for (std::size_t i = 0; i < expected.size(); i += 4)
    expected[i + 3] = lane[i];
  SetAlphaFromBlue(pixels.data(), lane.data(), GetParam());
  EXPECT_EQ(pixels, expected);
}

INSTANTIATE_TEST_SUITE_P(Counts, AlphaLane, testing::Values(0, 1, 2, 3, 4, 5, 7, 8, 1023));

}  // namespace
}  // namespace mixdecks
