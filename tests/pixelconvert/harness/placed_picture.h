// A picture's rows at their addresses, and the memory around them that is watched.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mixdecks::proof {

struct PlacedPicture {
  std::uint8_t* firstRow = nullptr;
  std::int32_t stride = 0;
  std::size_t rowBytes = 0;
  std::int32_t height = 0;
  std::uint8_t* windowBegin = nullptr;
  std::uint8_t* windowEnd = nullptr;

  std::ptrdiff_t WindowBytes() const { return windowEnd - windowBegin; }

  /// Where a row begins in the window.
  std::ptrdiff_t OffsetOfRow(std::size_t row) const {
    return firstRow - windowBegin + std::ptrdiff_t{stride} * static_cast<std::ptrdiff_t>(row);
  }
};

}  // namespace mixdecks::proof
