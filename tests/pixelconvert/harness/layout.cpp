#include "tests/pixelconvert/harness/layout.h"

#include <algorithm>

namespace mixdecks::proof {
namespace {

constexpr std::int32_t kLargeGap = 84;

}  // namespace

std::int32_t StrideBytes(Stride stride, std::size_t rowBytes) {
  const auto tight = static_cast<std::int32_t>(rowBytes);
  const std::int32_t odd = (tight + 1) | 1;
  switch (stride) {
    case Stride::kTight:
      return tight;
    case Stride::kOdd:
      return odd;
    case Stride::kLarge:
      return tight + kLargeGap;
    case Stride::kNegative:
      return -tight;
    case Stride::kNegativeOdd:
      return -odd;
    case Stride::kZero:
      break;
  }
  return 0;
}

Extent ExtentOf(std::int32_t stride, std::size_t rowBytes, std::int32_t height) {
  const std::ptrdiff_t lastRow = std::ptrdiff_t{stride} * std::max(height - 1, 0);
  return {std::min<std::ptrdiff_t>(lastRow, 0),
          std::max<std::ptrdiff_t>(lastRow, 0) + static_cast<std::ptrdiff_t>(rowBytes)};
}

}  // namespace mixdecks::proof
