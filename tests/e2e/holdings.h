// What a process holds of the system: what would grow if an opening left something behind.
#pragma once

#include <cstdint>
#include <ostream>

namespace mixdecks::e2e {

struct Holdings {
  std::int64_t handles = 0;
  std::int64_t gdiObjects = 0;
  std::int64_t windows = 0;  ///< of this thread, the children of others not counted
  std::int64_t bytes = 0;    ///< of memory that no other process shares
};

Holdings operator-(const Holdings& left, const Holdings& right);
std::ostream& operator<<(std::ostream& output, const Holdings& holdings);

/// Counts by itself what Wine does not count: its totals of handles and GDI objects are always 0.
Holdings CurrentHoldings();

}  // namespace mixdecks::e2e
