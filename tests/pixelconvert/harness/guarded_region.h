// Memory between two pages that nobody may touch: a byte read or written outside faults at once.
#pragma once

#include "tests/pixelconvert/harness/address_range.h"

namespace mixdecks::proof {

class GuardedRegion {
 public:
  /// At least `bytes` accessible bytes; throws std::bad_alloc.
  explicit GuardedRegion(std::size_t bytes)
      : size_((bytes + kGuard - 1) / kGuard * kGuard), range_(size_ + 2 * kGuard) {
    range_.Open(kGuard, size_);
  }

  /// The first byte behind the lower guard.
  std::uint8_t* Begin() const { return range_.Begin() + kGuard; }
  /// The first byte of the upper guard.
  std::uint8_t* End() const { return Begin() + size_; }
  std::size_t Size() const { return size_; }

 private:
  static constexpr std::size_t kGuard = AddressRange::kGranule;

  std::size_t size_;
  AddressRange range_;
};

}  // namespace mixdecks::proof
