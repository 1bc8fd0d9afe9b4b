// All 2^24 colours of eight bits through one pair of each family, and all values of each sample
// through every pair.
//
// A row holds every value of one sample twice, in an even and an odd pixel, the other two samples
// being the row's own. Neighbours then differ by one step at most, which the chroma filter rounds
// away: every colour comes to the matrix as it stands.
#include <gtest/gtest.h>

#include "tests/pixelconvert/proof_plan.h"

namespace mixdecks::proof {
namespace {

struct Family {
  const char* name;
  const char* source;
  const char* destination;
};

constexpr Family kFamilies[] = {
    {"Swizzle", "BGRA", "RGBA"},
    {"WideningToVideoRange", "BGRA", "r210"},
    {"WideningToFullRange", "BGRA", "R10L"},
    {"PackedBytes", "RGB3", "R10b"},
    {"TwelveBits", "BGRA", "R12L"},
    {"RgbTo2vuy", "BGRA", "2vuy"},
    {"PackedBytesTo2vuy", "RGB3", "2vuy"},
    {"RgbToV210", "BGRA", "v210"},
    {"RgbToAy10", "BGRA", "ay10"},
    {"2vuyToEightBits", "2vuy", "BGRA"},
    {"2vuyToFullRange", "2vuy", "R210"},
    {"2vuyToVideoRange", "2vuy", "r210"},
    {"2vuyToV210", "2vuy", "v210"},
};

constexpr std::uint32_t kWidth = 512;
constexpr std::uint32_t kRowsOfPicture = 64;
constexpr std::uint32_t kRows = 65536;

// In a small run a picture now and then, by a step that is prime to the number of pictures.
constexpr std::uint32_t kSmallStep = 37;

class Exhaustive : public testing::TestWithParam<Family> {};

// The sample that runs is the one stored first in the filter's sense: blue, or luma.
std::vector<std::uint8_t> MakeColourRow(const reference::Format& format, std::uint32_t number) {
  const bool yuv = format.kind == reference::Kind::kYuv;
  const int runningComponent = yuv ? 0 : 2;
  return MakeRow(format, kWidth, [&](std::size_t pixel, int component, int) {
    if (component == 3) return 0;
    if (component == runningComponent) return static_cast<int>(pixel / 2);
    const bool firstOfTwo = component == (yuv ? 1 : 0);
    return static_cast<int>(firstOfTwo ? number & 255 : number >> 8);
  });
}

TEST_P(Exhaustive, EveryColour) {
  const std::uint32_t step = ThePlan().effort == Effort::kSmall ? kSmallStep : 1;
  const reference::Format& source = reference::FormatNamed(GetParam().source);
  const reference::Format& destination = reference::FormatNamed(GetParam().destination);
  const reference::Cell cell = reference::CellOf(source.code, destination.code);
  Validator validator;
  for (ColourSpaceIndex space = 0; space < (cell.usesColourSpace ? 2 : 1); ++space) {
    const Conversion conversion = {&source, &destination, space,
                                   GetPixelConverter(source.code, destination.code, space)};
    for (std::uint32_t first = 0; first < kRows; first += kRowsOfPicture * step) {
      Rows rows;
      for (std::uint32_t row = 0; row < kRowsOfPicture; ++row) {
        rows.push_back(MakeColourRow(source, first + row));
      }
      const Picture picture = MakePicture(conversion, kWidth, std::move(rows));
      const std::string finding = validator.Check(conversion, picture, kLayouts[0]);
      ASSERT_EQ(finding, "") << Describe(conversion) << ", rows from " << first;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, Exhaustive, testing::ValuesIn(kFamilies),
                         [](const testing::TestParamInfo<Family>& family) {
                           return std::string(family.param.name);
                         });

// One sample runs through all its values in every pair, beside the others at both ends and in the
// middle of their range.
TEST(AllSampleValues, OfEveryPair) {
  constexpr std::array<int, 3> kEighths = {0, 4, 8};
  Validator validator;
  for (const Conversion& conversion : AllConversions()) {
    const std::uint32_t width = 2u << reference::DepthOf(*conversion.source);
    Rows rows;
    for (int running = 0; running < 3; ++running) {
      for (const int second : kEighths) {
        for (const int third : kEighths) {
          rows.push_back(
              MakeRow(*conversion.source, width, [&](std::size_t pixel, int component, int bits) {
                const int highest = (1 << bits) - 1;
                if (component == 3) return static_cast<int>(pixel / 2) & highest;
                if (component == running) return static_cast<int>(pixel / 2) & highest;
                return highest * (component == (running + 1) % 3 ? second : third) / 8;
              }));
        }
      }
    }
    const Picture picture = MakePicture(conversion, width, std::move(rows));
    EXPECT_EQ(validator.Check(conversion, picture, kLayouts[0]), "") << Describe(conversion);
  }
}

}  // namespace
}  // namespace mixdecks::proof
