// A small generator that gives the same numbers everywhere.
#pragma once

#include <cstdint>

namespace mixdecks::proof {

/// SplitMix64: every seed is a good one, and neighbours are unrelated.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15u;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

  /// 0 to `bound` - 1.
  std::uint32_t Below(std::uint32_t bound) {
    return static_cast<std::uint32_t>((Next() >> 32) * bound >> 32);
  }

 private:
  std::uint64_t state_;
};

}  // namespace mixdecks::proof
