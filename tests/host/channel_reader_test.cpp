// What comes out of documents that can be read.
#include "host/channel_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "tests/host/document_reading.h"
#include "tests/host/heap_faults.h"
#include "tools/memory_host/memory_host.h"

namespace mixdecks {
namespace {

/// A channel of 16 bits whose samples stand exactly as given, in the host's scale or beyond it.
HostChannel ChannelOfHostSamples(const std::vector<std::uint16_t>& samples, std::int32_t width,
                                 std::int32_t height) {
  HostChannel channel;
  channel.bounds = {0, 0, height, width};
  channel.depth = 16;
  channel.samples.resize(2 * samples.size());
  std::memcpy(channel.samples.data(), samples.data(), channel.samples.size());
  return channel;
}

const std::vector<std::uint8_t> kZeros(kPixels, 0);

TEST(ChannelReader, OpaqueDocumentFillsThreeLanes) {
  const Reading reading{MemoryHost(Document8())};
  EXPECT_EQ(reading.result, kResultOk);
  EXPECT_FALSE(reading.hasAlpha);
  EXPECT_EQ(reading.Lane(2), Samples8(1));
  EXPECT_EQ(reading.Lane(1), Samples8(2));
  EXPECT_EQ(reading.Lane(0), Samples8(3));
}

TEST(ChannelReader, HasAlphaIsLoweredForAnOpaqueDocument) {
  MemoryHost host(Document8());
  HeapBlock image;
  bool hasAlpha = true;
  EXPECT_EQ(ReadChannelDocument(&host.Record(), image, hasAlpha), kResultOk);
  EXPECT_FALSE(hasAlpha);
}

TEST(ChannelReader, TransparencyIsAlpha) {
  HostDocument document = Document8();
  document.transparency = Channel8(4);
  const Reading reading{MemoryHost(std::move(document))};
  EXPECT_EQ(reading.result, kResultOk);
  EXPECT_TRUE(reading.hasAlpha);
  EXPECT_EQ(reading.Lane(3), Samples8(4));
  EXPECT_EQ(reading.Lane(2), Samples8(1));
}

TEST(ChannelReader, OneExtraAlphaChannelGoesBeforeTransparency) {
  HostDocument document = Document8();
  document.transparency = Channel8(4);
  document.extraAlpha = {Channel8(5)};
  const Reading reading{MemoryHost(std::move(document))};
  EXPECT_EQ(reading.result, kResultOk);
  EXPECT_TRUE(reading.hasAlpha);
  EXPECT_EQ(reading.Lane(3), Samples8(5));
}

TEST(ChannelReader, AFourthCompositeChannelIsNotRead) {
  HostDocument document = Document8();
  document.composite.push_back(Channel8(9));
  MemoryHost host(std::move(document));
  const Reading reading(host);
  EXPECT_EQ(reading.result, kResultOk);
  EXPECT_EQ(host.Calls(HostCall::kReadPixels), 3);
}

TEST(ChannelReader, TheImageAndOneChannelAreAllThatIsAllocated) {
  MemoryHost host(Document16());
  const Reading reading(host);
  EXPECT_EQ(Heap().requests,
            (std::vector<std::size_t>{4 * kPixels, 2 * kPixels, 2 * kPixels, 2 * kPixels}));
}

// The words of 32 bits that 16-bit samples are stored in.

TEST(ChannelReader, AnOpaqueDocumentOf16BitsComesOutBlue) {
  HostDocument document = Document16();
  const Reading reading{MemoryHost(document)};
  EXPECT_EQ(reading.result, kResultOk);
  EXPECT_FALSE(reading.hasAlpha);
  const std::vector<std::uint16_t> full = Samples16(3);
  for (std::size_t i = 0; i < kPixels; ++i) {
    const std::uint32_t blue = std::min(2u * HostSample16(full[i]), 65535u) / 257;
    EXPECT_EQ(reading.pixels[4 * i], blue);
  }
  for (const std::size_t lane : {1u, 2u, 3u})
    EXPECT_EQ(reading.Lane(lane), kZeros);
}

TEST(ChannelReader, ADocumentOf16BitsWithAlphaIsBlackButForTheFirstBlue) {
  HostDocument document = Document16();
  document.transparency = Channel16(4);
  const Reading reading{MemoryHost(document)};
  EXPECT_TRUE(reading.hasAlpha);
  const std::vector<std::uint16_t> blue = Samples16(3);
  const std::vector<std::uint16_t> alpha = Samples16(4);
  const auto narrow = [](std::uint16_t full) {
    return static_cast<std::uint8_t>(std::min(2u * HostSample16(full), 65535u) / 257);
  };
  std::vector<std::uint8_t> expected(4 * kPixels, 0);
  expected[0] = narrow(blue[0]);
  for (std::size_t i = 0; i < kPixels; ++i)
    expected[4 * i + 3] = narrow(alpha[i]);
  EXPECT_EQ(reading.pixels, expected);
}

TEST(ChannelReader, AlphaOf16BitsBlackensADocumentOf8Bits) {
  HostDocument document = Document8();
  document.transparency = Channel16(4);
  const Reading reading{MemoryHost(std::move(document))};
  const std::array<std::uint8_t, 3> first{Samples8(3)[0], Samples8(2)[0], Samples8(1)[0]};
  EXPECT_TRUE(std::equal(first.begin(), first.end(), reading.pixels.begin()));
  for (const std::size_t lane : {0u, 1u, 2u}) {
    const std::vector<std::uint8_t> samples = reading.Lane(lane);
    EXPECT_EQ(std::count(samples.begin() + 1, samples.end(), 0), std::ptrdiff_t{kPixels - 1});
  }
}

TEST(ChannelReader, TheScaleOf16BitsEndsAt32768) {
  const std::vector<std::uint16_t> samples{0, 16384, 32767, 32768, 65535, 128, 129};
  HostDocument document{.width = 7, .height = 1, .depth = 16};
  document.composite.assign(3, ChannelOfHostSamples(samples, 7, 1));
  const Reading reading{MemoryHost(std::move(document))};
  EXPECT_EQ(reading.Lane(0), (std::vector<std::uint8_t>{0, 127, 254, 255, 255, 0, 1}));
}

// Lists that end early leave zeros, and say nothing of alpha.

class ShortList : public testing::TestWithParam<std::size_t> {};

TEST_P(ShortList, ExportsZerosForTheMissingLanes) {
  HostDocument document = Document8();
  document.composite.resize(GetParam());
  document.transparency = Channel8(4);
  const Reading reading{MemoryHost(std::move(document))};
  EXPECT_EQ(reading.result, kResultOk);
  EXPECT_EQ(reading.Lane(2), Samples8(1));
  EXPECT_EQ(reading.Lane(1), GetParam() == 2 ? Samples8(2) : kZeros);
  EXPECT_EQ(reading.Lane(0), kZeros);
  EXPECT_EQ(reading.Lane(3), kZeros);
}

TEST_P(ShortList, Of16BitsKeepsTheChannelReadLast) {
  HostDocument document = Document16();
  document.composite.resize(GetParam());
  const std::size_t lastLane = 3 - GetParam();
  const Reading reading{MemoryHost(std::move(document))};
  EXPECT_EQ(reading.result, kResultOk);
  for (std::size_t lane = 0; lane < 4; ++lane) {
    EXPECT_EQ(reading.Lane(lane) == kZeros, lane != lastLane) << lane;
  }
}

TEST_P(ShortList, LeavesAlphaUnset) {
  HostDocument document = Document8();
  document.composite.resize(GetParam());
  document.transparency = Channel8(4);
  MemoryHost host(std::move(document));
  for (const bool before : {false, true}) {
    HeapBlock image;
    bool hasAlpha = before;
    EXPECT_EQ(ReadChannelDocument(&host.Record(), image, hasAlpha), kResultOk);
    EXPECT_EQ(hasAlpha, before);
  }
}

INSTANTIATE_TEST_SUITE_P(Host, ShortList, testing::Values(1, 2));

TEST(ChannelReader, ManyLevelsAreFine) {
  HostDocument document = Document8();
  document.composite[0].levels = 12;
  EXPECT_EQ(Reading{MemoryHost(std::move(document))}.result, kResultOk);
}

// Sizes.

TEST(ChannelReader, AnEmptyDocumentReadsAsNothing) {
  for (const auto& [width, height] : {std::pair{0, 0}, std::pair{0, 5}, std::pair{7, 0}}) {
    HostDocument document{.width = width, .height = height};
    HostChannel channel;
    channel.bounds = {0, 0, height, width};
    document.composite.assign(3, channel);
    document.transparency = channel;
    const Reading reading{MemoryHost(std::move(document))};
    EXPECT_EQ(reading.result, kResultOk) << width << " x " << height;
    EXPECT_TRUE(reading.hasAlpha);
  }
}

TEST(ChannelReader, OnePixel) {
  const std::array<std::uint8_t, 4> rgba{10, 20, 30, 40};
  const Reading reading{MemoryHost(DocumentOfRgba8(rgba, 1, 1, true))};
  EXPECT_EQ(reading.result, kResultOk);
  EXPECT_EQ(reading.pixels, (std::vector<std::uint8_t>{30, 20, 10, 40}));
}

TEST(ChannelReader, HugeDocumentsFailWithoutAskingForMoreThanANumberHolds) {
  struct Size {
    std::int32_t width, height;
  };
  for (const Size size : {Size{32767, 32767}, Size{30000, 20000}, Size{16384, 32767}}) {
    HostDocument document{.width = size.width, .height = size.height};
    HostChannel channel;
    channel.bounds = {0, 0, size.height, size.width};
    document.composite.assign(3, channel);
    MemoryHost host(std::move(document));
    Heap() = {};
    HeapBlock image;
    bool hasAlpha = false;
    EXPECT_EQ(ReadChannelDocument(&host.Record(), image, hasAlpha), kResultFail);
    EXPECT_FALSE(static_cast<bool>(image));
    for (const std::size_t bytes : Heap().requests)
      EXPECT_LE(bytes, std::size_t{INT32_MAX});
    EXPECT_EQ(host.Calls(HostCall::kCountLevels), 0);
    ExpectBalance(host);
  }
}

TEST(ChannelReader, NegativeSizesFail) {
  for (const auto& [width, height] : {std::pair{-1, 1}, std::pair{1, -1}, std::pair{-5, -5},
                                      std::pair{-32768, -32768}, std::pair{0, -1}}) {
    HostDocument document = Document8();
    for (HostChannel& channel : document.composite)
      channel.bounds = {0, 0, height, width};
    MemoryHost host(std::move(document));
    host.Record().imageWidth = static_cast<std::int16_t>(width);
    host.Record().imageHeight = static_cast<std::int16_t>(height);
    Heap() = {};
    HeapBlock image;
    bool hasAlpha = false;
    EXPECT_EQ(ReadChannelDocument(&host.Record(), image, hasAlpha), kResultFail);
    EXPECT_TRUE(Heap().requests.empty());
    ExpectBalance(host);
  }
}

}  // namespace
}  // namespace mixdecks
