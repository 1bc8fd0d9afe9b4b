// The steps of the reading on their own: status values, and what the host is asked.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "host/channel_reader.h"
#include "tests/host/document_reading.h"
#include "tests/host/heap_faults.h"
#include "tools/memory_host/memory_host.h"

namespace mixdecks {
namespace {

class ReadSteps : public testing::Test {
 protected:
  std::int32_t ReadInto(MemoryHost& host, std::int32_t width = kWidth,
                        std::int32_t height = kHeight) {
    const void* suite = nullptr;
    host.BasicSuite().acquireSuite(kChannelPortsSuiteName, kChannelPortsSuiteVersion, &suite);
    const std::int32_t status =
        ReadChannelInto(host.Suite(), *host.Record().document->mergedComposite, Lane::kRed,
                        pixels_.data(), width, height);
    host.BasicSuite().releaseSuite(kChannelPortsSuiteName, kChannelPortsSuiteVersion);
    return status;
  }

  std::vector<std::uint8_t> pixels_ = std::vector<std::uint8_t>(4 * kPixels, 0x77);
};

TEST_F(ReadSteps, SuccessIs0) {
  MemoryHost host(Document8());
  EXPECT_EQ(ReadInto(host), 0);
  EXPECT_EQ(pixels_[2], Samples8(1)[0]);
  EXPECT_EQ(pixels_[3], 0x77);
}

TEST_F(ReadSteps, NoMemoryIs1) {
  MemoryHost host(Document8());
  Heap().failAt = 1;
  EXPECT_EQ(ReadInto(host), 1);
}

TEST_F(ReadSteps, AHostThatWillNotAnswerIs2) {
  for (const HostCall call : {HostCall::kCountLevels, HostCall::kGetDepth, HostCall::kGetBounds}) {
    MemoryHost host(Document8());
    host.Fail(call, 1, -5);
    EXPECT_EQ(ReadInto(host), 2) << HostCallName(call);
  }
}

TEST_F(ReadSteps, WhatDoesNotFitIs3) {
  {
    MemoryHost host(Document8());
    EXPECT_EQ(ReadInto(host, kWidth + 1), 3);
    EXPECT_EQ(ReadInto(host, kWidth, kHeight - 1), 3);
    EXPECT_EQ(host.Calls(HostCall::kReadPixels), 0);
  }
  HostDocument document = Document8();
  document.composite[0].depth = 32;
  document.composite[0].samples.clear();
  MemoryHost host(std::move(document));
  EXPECT_EQ(ReadInto(host), 3);
  EXPECT_EQ(host.Calls(HostCall::kReadPixels), 1) << "the depth is judged after the reading";
}

TEST_F(ReadSteps, WhatTheHostsReadGivesIsTheStatus) {
  for (const std::int32_t error : {1, 3, 77, -1, -108, INT32_MIN}) {
    MemoryHost host(Document8());
    host.Fail(HostCall::kReadPixels, 1, error);
    EXPECT_EQ(ReadInto(host), error);
  }
  EXPECT_EQ(pixels_, std::vector<std::uint8_t>(4 * kPixels, 0x77));
}

TEST_F(ReadSteps, TheHostIsAskedInOrderWithALevelOfFullSize) {
  MemoryHost host(Document16());
  static std::vector<std::int64_t> seen;
  static ChannelPortsSuite real;
  seen.clear();
  real = host.Suite();
  host.Suite().readPixels = [](void* port, std::int32_t level, HostRect32* bounds,
                               PixelDescription* pixels) {
    seen = {level,           bounds->top,        bounds->left,      bounds->bottom, bounds->right,
            pixels->rowBits, pixels->columnBits, pixels->bitOffset, pixels->depth};
    return real.readPixels(port, level, bounds, pixels);
  };
  EXPECT_EQ(ReadInto(host), 0);
  EXPECT_EQ(seen, (std::vector<std::int64_t>{0, 0, 0, kHeight, kWidth, 16 * kWidth, 16, 0, 16}));
  EXPECT_TRUE(host.Violations().empty());
}

// The host's tables, reached by positions and offsets alone.
TEST(ChannelReaderLayout, CallsPositions0And1And2And9) {
  static std::vector<int> called;
  static int portTag = 0;
  called.clear();
  void* table[10];
  const auto unexpected = [] { called.push_back(-1); };
  std::ranges::fill(table, reinterpret_cast<void*>(static_cast<void (*)()>(unexpected)));
  const auto put = [&table](std::size_t position, auto function) {
    table[position] = reinterpret_cast<void*>(function);
  };
  put(
      0, +[](void* port, std::int32_t* count) -> std::int32_t {
        called.push_back(port == &portTag ? 0 : -2);
        *count = 1;
        return 0;
      });
  put(
      1, +[](void* port, std::int32_t level, std::int32_t* depth) -> std::int32_t {
        called.push_back(port == &portTag && level == 0 ? 1 : -2);
        *depth = 8;
        return 0;
      });
  put(
      2, +[](void* port, std::int32_t level, HostRect32* bounds) -> std::int32_t {
        called.push_back(port == &portTag && level == 0 ? 2 : -2);
        const std::int32_t topLeftBottomRight[4] = {0, 0, 1, 2};
        std::memcpy(bounds, topLeftBottomRight, sizeof(topLeftBottomRight));
        return 0;
      });
  put(
      9,
      +[](void* port, std::int32_t level, HostRect32* bounds,
          PixelDescription* pixels) -> std::int32_t {
        const auto* const record = reinterpret_cast<const std::byte*>(pixels);
        std::int32_t edges[4];
        std::memcpy(edges, bounds, sizeof(edges));
        called.push_back(port == &portTag && level == 0 && edges[3] == 2 ? 9 : -2);
        std::int32_t numbers[4];
        std::memcpy(numbers, record + 8, sizeof(numbers));
        EXPECT_EQ(numbers[0], 16);  // bits of a row
        EXPECT_EQ(numbers[1], 8);   // bits from sample to sample
        EXPECT_EQ(numbers[2], 0);   // bits before the first
        EXPECT_EQ(numbers[3], 8);   // bits of a sample
        void* data = nullptr;
        std::memcpy(&data, record, sizeof(data));
        std::memcpy(data, "\x11\x22", 2);
        return 0;
      });

  alignas(8) std::array<std::byte, 24> channel{};
  void* const port = &portTag;
  std::memcpy(channel.data() + 16, &port, 8);
  alignas(8) std::array<std::byte, 856> document{};
  const void* const first = channel.data();
  std::memcpy(document.data() + 840, &first, 8);

  std::array<std::uint8_t, 8> image{};
  bool hasAlpha = false;
  EXPECT_EQ(ReadAlphaChannel(*reinterpret_cast<const ChannelPortsSuite*>(table),
                             *reinterpret_cast<const DocumentDescription*>(document.data()),
                             image.data(), 2, 1, hasAlpha),
            0);
  EXPECT_TRUE(hasAlpha);
  EXPECT_EQ(called, (std::vector<int>{0, 1, 2, 9}));
  EXPECT_EQ(image, (std::array<std::uint8_t, 8>{0, 0, 0, 0x11, 0, 0, 0, 0x22}));
}

}  // namespace
}  // namespace mixdecks
