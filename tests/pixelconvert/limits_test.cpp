// Calls at the edge of the contract: nothing to do, rows far apart, threads side by side.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <span>
#include <string_view>
#include <thread>

#include "tests/pixelconvert/harness/fault_trap.h"
#include "tests/pixelconvert/proof_plan.h"

namespace mixdecks::proof {
namespace {

// A converter that is missing is the other tests' finding.
std::vector<Conversion> ExistingConversions() {
  std::vector<Conversion> existing = AllConversions();
  std::erase_if(existing, [](const Conversion& c) { return c.converter == nullptr; });
  return existing;
}

// Any access to these addresses faults.
class Untouchable : public testing::Test {
 protected:
  void ExpectTouchesNothing(const Conversion& conversion, std::uint32_t width,
                            std::int32_t height) {
    std::uint8_t* const middle = range_.Begin() + AddressRange::kGranule;
    const auto fault =
        RunTrapped([&] { conversion.converter(width, height, middle, 4096, middle, 4096); });
    EXPECT_FALSE(fault.has_value())
        << Describe(conversion) << ", width " << width << ", height " << height;
  }

 private:
  AddressRange range_{2 * AddressRange::kGranule};
};

TEST_F(Untouchable, HeightBelowOne) {
  for (const Conversion& conversion : ExistingConversions()) {
    for (const std::int32_t height : {0, -1, -2, -1080, std::numeric_limits<std::int32_t>::min()}) {
      for (const std::uint32_t width : {96u, 97u, 1280u, 1920u}) {
        ExpectTouchesNothing(conversion, width, height);
      }
    }
  }
}

TEST_F(Untouchable, WidthOfZeroAmongRgb) {
  for (const Conversion& conversion : ExistingConversions()) {
    if (reference::SmallestLegalWidth(conversion.source->code, conversion.destination->code) != 0) {
      continue;
    }
    for (const std::int32_t height : {-1, 0, 1, 1080}) {
      ExpectTouchesNothing(conversion, 0, height);
    }
  }
}

TEST(NothingAtAll, MayStandNowhere) {
  for (const Conversion& conversion : ExistingConversions())
    conversion.converter(0, 1080, nullptr, 8192, nullptr, 8192);
}

// The bytes of three destination rows of 64 that a call of a named pair left as they were.
std::vector<std::size_t> BytesLeftBy(std::string_view source, std::string_view destination,
                                     std::uint32_t width) {
  constexpr std::uint8_t untouched = 0x5A;
  constexpr std::size_t stride = 64;
  const std::vector<std::uint8_t> from(3 * stride, 0xFF);
  std::vector<std::uint8_t> to(3 * stride, untouched);
  GetPixelConverter(FindPixelFormat(source)->code, FindPixelFormat(destination)->code, kRec601)(
      width, 3, to.data(), stride, from.data(), stride);
  std::vector<std::size_t> left;
  for (std::size_t i = 0; i < stride; ++i) {
    const std::uint8_t inRows[] = {to[i], to[stride + i], to[2 * stride + i]};
    if (std::ranges::count(inRows, untouched) == 3) left.push_back(i);
  }
  return left;
}

std::vector<std::size_t> BytesFrom(std::size_t first) {
  std::vector<std::size_t> bytes(64 - first);
  std::iota(bytes.begin(), bytes.end(), first);
  return bytes;
}

TEST(RowEnds, SevenPixelsLeaveTheRestOfTheStride) {
  EXPECT_EQ(BytesLeftBy("BGRA", "RGBA", 7), BytesFrom(28));
  EXPECT_EQ(BytesLeftBy("32", "BGRA", 7), BytesFrom(28));
}

TEST(RowEnds, PixelsBelowABlockAreWrittenAlone) {
  for (const std::uint32_t width : {1u, 2u, 3u})
    EXPECT_EQ(BytesLeftBy("BGRA", "RGBA", width), BytesFrom(4 * width));
}

TEST(RowEnds, APixelOfThreeBytesLeavesTheRestOfItsBlock) {
  EXPECT_EQ(BytesLeftBy("RGBA", "RGB3", 1), BytesFrom(3));
}

// Three rows so far apart that the third lies behind what 32 bits can count.
class FarRows {
 public:
  static constexpr std::int32_t kStride = 0x7FFF0000;
  static constexpr std::size_t kRoom = 65536;

  FarRows() {
    for (std::size_t row = 0; row < 3; ++row)
      range_.Open(row * kStride, kRoom);
  }

  std::uint8_t* Row(std::size_t row) { return range_.Begin() + row * kStride; }

 private:
  AddressRange range_{2 * std::size_t{kStride} + kRoom};
};

TEST(FarRows, OffsetsBeyond32BitsWorkBothWays) {
  constexpr std::uint32_t kWidth = 101;
  FarRows far;
  std::vector<std::uint8_t> near(3 * 1024);
  for (const Conversion& conversion : ExistingConversions()) {
    const Plan plan = ThePlan();
    const Picture picture = PicturesOf(conversion, kWidth, plan)[0];
    for (const bool farSource : {true, false}) {
      for (const bool upward : {true, false}) {
        const auto row = [&](std::size_t i) { return far.Row(upward ? i : 2 - i); };
        const std::int32_t stride = upward ? FarRows::kStride : -FarRows::kStride;
        for (std::size_t i = 0; i < 3; ++i) {
          std::ranges::copy(picture.source[i], farSource ? row(i) : &near[i * 1024]);
        }
        if (farSource) {
          conversion.converter(kWidth, 3, near.data(), 1024, row(0), stride);
        } else {
          conversion.converter(kWidth, 3, row(0), stride, near.data(), 1024);
        }
        for (std::size_t i = 0; i < 3; ++i) {
          const std::uint8_t* result = farSource ? &near[i * 1024] : row(i);
          EXPECT_TRUE(std::ranges::equal(picture.expected[i],
                                         std::span(result, picture.expected[i].size())))
              << Describe(conversion) << ", row " << i << (farSource ? ", source" : ", destination")
              << (upward ? " upward" : " downward");
        }
      }
    }
  }
}

TEST(Threads, ConvertersRunSideBySide) {
  const std::vector<Conversion> conversions = ExistingConversions();
  const auto work = [&conversions](bool& wrong) {
    const Plan plan = ThePlan();
    for (const Conversion& conversion : conversions) {
      const Picture picture = PicturesOf(conversion, 101, plan)[0];
      std::vector<std::uint8_t> result(picture.expected[0].size());
      conversion.converter(101, 1, result.data(), 0, picture.source[0].data(), 0);
      wrong = wrong || result != picture.expected[0];
    }
  };
  std::array<bool, 4> wrong = {};
  std::vector<std::thread> threads;
  for (bool& flag : wrong)
    threads.emplace_back(work, std::ref(flag));
  for (std::thread& thread : threads)
    thread.join();
  for (const bool flag : wrong)
    EXPECT_FALSE(flag);
}

}  // namespace
}  // namespace mixdecks::proof
