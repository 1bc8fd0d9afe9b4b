// Pictures to convert: source rows with chosen content.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "tests/pixelconvert/harness/random.h"
#include "tests/pixelconvert/reference/formats.h"

namespace mixdecks::proof {

enum class Content {
  kRandom,    ///< every bit at random, unused ones too
  kExtremes,  ///< samples at and beside the ends and landmarks of their range
  kRamps,     ///< every sample rises by its own step
  kSolid,     ///< one colour, saturated and asymmetric
};

struct NamedContent {
  Content content;
  std::string_view name;
};

inline constexpr std::array<NamedContent, 4> kContents = {{
    {Content::kRandom, "random"},
    {Content::kExtremes, "extremes"},
    {Content::kRamps, "ramps"},
    {Content::kSolid, "solid"},
}};

/// A source row of exactly the bytes that the width occupies, padding included.
std::vector<std::uint8_t> MakeRow(const reference::Format& format, std::size_t width,
                                  Content content, Random& random);

/// The value of one sample: pixel, component (R, G, B, A or Y, Cb, Cr, A) and depth in bits.
using Samples = std::function<int(std::size_t pixel, int component, int bits)>;

/// A source row made of these samples. Chroma is asked for at even pixels; unused bits are zero.
std::vector<std::uint8_t> MakeRow(const reference::Format& format, std::size_t width,
                                  const Samples& samples);

}  // namespace mixdecks::proof
