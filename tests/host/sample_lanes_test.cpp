// Spreading samples over pixels, against loops that store as plainly as can be.
#include "host/sample_lanes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

namespace mixdecks {
namespace {

constexpr std::size_t kLongest = 70;  // several vectors and every tail
constexpr std::uint8_t kGuard = 0xEE;

template <typename Sample>
std::vector<Sample> RandomSamples(std::size_t count, std::uint32_t largest) {
  std::mt19937 random(static_cast<std::uint32_t>(count) + largest);
  std::uniform_int_distribution<std::uint32_t> any(0, largest);
  std::vector<Sample> samples(count);
  std::ranges::generate(samples, [&] { return static_cast<Sample>(any(random)); });
  return samples;
}

/// An image of `count` pixels of random bytes with guard bytes behind it.
std::vector<std::uint8_t> RandomImage(std::size_t count) {
  std::vector<std::uint8_t> image = RandomSamples<std::uint8_t>(4 * count, 255);
  image.resize(image.size() + 16, kGuard);
  return image;
}

class SampleLanes : public testing::TestWithParam<std::size_t> {};

TEST_P(SampleLanes, Spread8WritesItsLaneAlone) {
  const std::size_t lane = GetParam();
  for (std::size_t count = 0; count <= kLongest; ++count) {
    const auto samples = RandomSamples<std::uint8_t>(count, 255);
    auto image = RandomImage(count);
    auto expected = image;
    for (std::size_t i = 0; i < count; ++i)
      expected[4 * i + lane] = samples[i];
    SpreadSamples8(samples.data(), count, image.data(), lane);
    ASSERT_EQ(image, expected) << count << " pixels";
  }
}

TEST_P(SampleLanes, Spread16StoresWordsAndDropsWhatIsPastTheEnd) {
  const std::size_t lane = GetParam();
  for (std::size_t count = 0; count <= kLongest; ++count) {
    const auto samples = RandomSamples<std::uint16_t>(count, 65535);
    auto image = RandomImage(count);
    auto expected = image;
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint32_t value = std::min(2u * samples[i], 65535u) / 257u;
      std::memcpy(&expected[4 * i + lane], &value, 4);
    }
    std::fill(expected.begin() + static_cast<std::ptrdiff_t>(4 * count), expected.end(), kGuard);
    SpreadSamples16(samples.data(), count, image.data(), lane);
    ASSERT_EQ(image, expected) << count << " pixels";
  }
}

TEST_P(SampleLanes, Spread16NarrowsEverySample) {
  const std::size_t lane = GetParam();
  std::vector<std::uint16_t> samples(65536);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = static_cast<std::uint16_t>(i);
  std::vector<std::uint8_t> image(4 * samples.size());
  SpreadSamples16(samples.data(), samples.size(), image.data(), lane);
  for (std::uint32_t s = 0; s < 65536; ++s) {
    ASSERT_EQ(image[4 * s + lane], std::min(2 * s, 65535u) / 257) << s;
  }
}

INSTANTIATE_TEST_SUITE_P(Host, SampleLanes, testing::Values(0, 1, 2, 3));

TEST(ClearOtherLanes, KeepsTheLanesOfTheMask) {
  for (const std::uint32_t kept : {0u, 0x00FF0000u, 0x00FFFF00u, 0xFFFFFFFFu}) {
    auto image = RandomImage(5);
    auto expected = image;
    for (std::size_t i = 0; i < 20; ++i) {
      if ((kept >> (8 * (i % 4)) & 0xFF) == 0) expected[i] = 0;
    }
    ClearOtherLanes(image.data(), 5, kept);
    EXPECT_EQ(image, expected) << std::hex << kept;
  }
}

}  // namespace
}  // namespace mixdecks
