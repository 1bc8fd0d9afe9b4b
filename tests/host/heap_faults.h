// A heap that the tests of this folder link instead of the product's: it counts, and it can refuse.
#pragma once

#include <cstddef>
#include <vector>

namespace mixdecks {

struct HeapFaults {
  int failAt = 0;  ///< the request to refuse, counted from 1; 0 for none
  /// Requests beyond this are refused: no test needs more, and some ask for gigabytes.
  std::size_t limit = std::size_t{64} << 20;
  int live = 0;                         ///< blocks allocated and not released
  std::vector<std::size_t> requests{};  ///< bytes of every request, granted or not
};

/// The state of the heap. Every test begins with a fresh one, may assign another, and fails when
/// it ends with blocks alive.
HeapFaults& Heap();

}  // namespace mixdecks
