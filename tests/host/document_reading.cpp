#include "tests/host/document_reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/host/heap_faults.h"

namespace mixdecks {
namespace {

template <typename Sample>
std::vector<Sample> RandomSamples(std::uint32_t seed) {
  std::mt19937 random(seed);
  std::vector<Sample> samples(kPixels);
  std::ranges::generate(samples, [&] { return static_cast<Sample>(random()); });
  return samples;
}

}  // namespace

std::vector<std::uint8_t> Samples8(std::uint32_t seed) {
  return RandomSamples<std::uint8_t>(seed);
}

std::vector<std::uint16_t> Samples16(std::uint32_t seed) {
  return RandomSamples<std::uint16_t>(seed);
}

HostChannel Channel8(std::uint32_t seed) {
  return ChannelOfSamples8(Samples8(seed), kWidth, kHeight);
}

HostChannel Channel16(std::uint32_t seed) {
  return ChannelOfSamples16(Samples16(seed), kWidth, kHeight);
}

HostDocument Document8() {
  HostDocument document{.width = kWidth, .height = kHeight};
  document.composite = {Channel8(1), Channel8(2), Channel8(3)};
  return document;
}

HostDocument Document16() {
  HostDocument document{.width = kWidth, .height = kHeight, .depth = 16};
  document.composite = {Channel16(1), Channel16(2), Channel16(3)};
  return document;
}

Reading::Reading(MemoryHost& host) {
  Heap() = {};
  HeapBlock image;
  result = ReadChannelDocument(&host.Record(), image, hasAlpha);
  imageAllocated = static_cast<bool>(image);
  if (imageAllocated) {
    const auto width = static_cast<std::size_t>(host.Record().imageWidth);
    const auto height = static_cast<std::size_t>(host.Record().imageHeight);
    pixels.assign(image.Data(), image.Data() + 4 * width * height);
  }
  image.Reset();
  EXPECT_EQ(Heap().live, 0);
}

Reading::Reading(MemoryHost&& host) : Reading(host) {
  ExpectBalance(host);
}

std::vector<std::uint8_t> Reading::Lane(std::size_t lane) const {
  std::vector<std::uint8_t> samples;
  for (std::size_t i = lane; i < pixels.size(); i += 4)
    samples.push_back(pixels[i]);
  return samples;
}

void ExpectBalance(const MemoryHost& host) {
  EXPECT_EQ(host.SuiteReferences(), 0);
  EXPECT_EQ(host.Calls(HostCall::kAcquireSuite), host.Calls(HostCall::kReleaseSuite));
  for (const std::string& violation : host.Violations())
    ADD_FAILURE() << violation;
}

}  // namespace mixdecks
