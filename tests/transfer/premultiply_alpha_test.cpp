#include "transfer/premultiply_alpha.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "transfer/service_contract.h"

namespace mixdecks {
namespace {

constexpr std::uint32_t kWrongFormat = FourCharacterCode("2vuy");

// The reference: one sample at a time, in the order of operations that receivers expect.

std::uint32_t Cut(double value, std::uint32_t highest) {
  auto sample = static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
  if (sample < 64) sample = 64;
  if (sample > highest) sample = highest;
  return sample;
}

std::uint32_t ReferenceLuma(std::uint32_t sample, double a) {
  double y = (sample - 64.0) / 876;
  y = y * a;
  y = y * 876;
  y = y + 64;
  y = y + 0.5;
  return Cut(y, 940);
}

std::uint32_t ReferenceChroma(std::uint32_t sample, double a) {
  double c = (sample - 64.0) / 896;
  c = c - 0.5;
  c = c * a;
  c = c + 0.5;
  c = c * 896;
  c = c + 64;
  c = c + 0.5;
  return Cut(c, 960);
}

std::uint32_t Word(std::uint32_t alpha, std::uint32_t chroma, std::uint32_t luma) {
  return alpha << 20 | chroma << 10 | luma;
}

struct Pair {
  std::uint32_t first, second;
  friend bool operator==(const Pair&, const Pair&) = default;
};

Pair ReferencePair(Pair words) {
  const double a1 = ((words.first >> 20) - 64.0) / 876;
  const double a2 = ((words.second >> 20) - 64.0) / 876;
  const auto premultiply = [a1](std::uint32_t word, double lumaAlpha) {
    return Word(word >> 20, ReferenceChroma(word >> 10 & 1023, a1),
                ReferenceLuma(word & 1023, lumaAlpha));
  };
  return {premultiply(words.first, a1), premultiply(words.second, a2)};
}

void Append(std::vector<std::uint8_t>& image, std::uint32_t word) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    image.push_back(static_cast<std::uint8_t>(word >> shift));
  }
}

std::uint32_t WordAt(const std::vector<std::uint8_t>& image, std::size_t pixel) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; ++i)
    word = word << 8 | image[pixel * 4 + i];
  return word;
}

std::vector<std::uint8_t> ImageOf(const std::vector<Pair>& pairs) {
  std::vector<std::uint8_t> image;
  image.reserve(pairs.size() * 8);
  for (const Pair& pair : pairs) {
    Append(image, pair.first);
    Append(image, pair.second);
  }
  return image;
}

void ExpectReference(const std::vector<Pair>& pairs) {
  std::vector<std::uint8_t> image = ImageOf(pairs);
  const auto width = static_cast<std::int32_t>(pairs.size()) * 2;
  ASSERT_EQ(PremultiplyAlpha(image.data(), width, 1, kFrameFormatYuva, true), TransferError::kNone);
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const Pair expected = ReferencePair(pairs[i]);
    const Pair found{WordAt(image, 2 * i), WordAt(image, 2 * i + 1)};
    ASSERT_EQ(found, expected) << std::hex << "from " << pairs[i].first << ' ' << pairs[i].second
                               << " came " << found.first << ' ' << found.second << ", not "
                               << expected.first << ' ' << expected.second;
  }
}

// Twelve bits of alpha, the two above the sample's ten included, with every luma and chroma; each
// alpha stands in the first pixel and in the second.
TEST(PremultiplyAlpha, EqualsTheReferenceForEveryAlphaAndSample) {
  std::vector<Pair> pairs(1024);
  for (std::uint32_t alpha = 0; alpha < 4096; ++alpha) {
    for (std::uint32_t sample = 0; sample < 1024; ++sample) {
      pairs[sample] = {Word(alpha, sample, sample),
                       Word(4095 - alpha, 1023 - sample, 1023 - sample)};
    }
    ExpectReference(pairs);
    if (HasFatalFailure()) return;
  }
}

TEST(PremultiplyAlpha, EqualsTheReferenceForRandomWords) {
  constexpr std::uint32_t kSeed = 20240611;
  std::mt19937 random(kSeed);
  std::vector<Pair> pairs(200000);
  for (Pair& pair : pairs)
    pair = {static_cast<std::uint32_t>(random()), static_cast<std::uint32_t>(random())};
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  ExpectReference(pairs);
}

std::uint32_t Premultiplied(std::uint32_t first, std::uint32_t second, std::size_t which) {
  std::vector<std::uint8_t> image = ImageOf({{first, second}});
  PremultiplyAlpha(image.data(), 2, 1, kFrameFormatYuva, true);
  return WordAt(image, which);
}

TEST(PremultiplyAlpha, LeavesOpaquePixelsAndBlackensClearOnes) {
  EXPECT_EQ(Premultiplied(Word(940, 700, 500), Word(940, 300, 64), 0), Word(940, 700, 500));
  EXPECT_EQ(Premultiplied(Word(940, 700, 500), Word(940, 300, 64), 1), Word(940, 300, 64));
  EXPECT_EQ(Premultiplied(Word(64, 700, 500), Word(64, 300, 940), 0), Word(64, 512, 64));
  EXPECT_EQ(Premultiplied(Word(64, 700, 500), Word(64, 300, 940), 1), Word(64, 512, 64));
}

TEST(PremultiplyAlpha, WeighsChromaByTheFirstPixelAlone) {
  // The second pixel is clear, yet its chroma stays: the pair's weight is the first pixel's.
  EXPECT_EQ(Premultiplied(Word(940, 700, 500), Word(64, 300, 500), 1), Word(64, 300, 64));
}

TEST(PremultiplyAlpha, SendsNegativeResultsToTheUpperBound) {
  // Alpha 4095 is 4.6: luma 0 becomes -230 and chroma 0 less than that.
  EXPECT_EQ(Premultiplied(Word(4095, 0, 0), Word(64, 0, 0), 0), Word(4095, 960, 940));
}

TEST(PremultiplyAlpha, DoesNothingUnlessAsked) {
  const std::vector<std::uint8_t> before = ImageOf({{Word(500, 700, 500), Word(100, 300, 64)}});
  std::vector<std::uint8_t> image = before;
  EXPECT_EQ(PremultiplyAlpha(image.data(), 2, 1, kFrameFormatYuva, false), TransferError::kNone);
  EXPECT_EQ(PremultiplyAlpha(image.data(), 0, 1, kFrameFormatYuva, true), TransferError::kNone);
  EXPECT_EQ(PremultiplyAlpha(image.data(), 2, -1, kFrameFormatYuva, true), TransferError::kNone);
  EXPECT_EQ(image, before);
}

TEST(PremultiplyAlpha, RefusesAnotherFormat) {
  std::vector<std::uint8_t> image = ImageOf({{Word(500, 700, 500), Word(100, 300, 64)}});
  const std::vector<std::uint8_t> before = image;
  EXPECT_EQ(PremultiplyAlpha(image.data(), 2, 1, kWrongFormat, true), TransferError::kUnknown);
  EXPECT_EQ(PremultiplyAlpha(image.data(), 2, 1, kWrongFormat, false), TransferError::kUnknown);
  EXPECT_EQ(image, before);
}

TEST(PremultiplyAlpha, StaysInsideAnOddNumberOfPixels) {
  const Pair last{Word(500, 700, 500), 0};
  std::vector<std::uint8_t> image = ImageOf({{Word(500, 700, 500), Word(100, 300, 64)}});
  Append(image, last.first);
  PremultiplyAlpha(image.data(), 3, 1, kFrameFormatYuva, true);  // a sanitizer sees a byte more
  EXPECT_EQ(WordAt(image, 2), ReferencePair(last).first);
}

}  // namespace
}  // namespace mixdecks
