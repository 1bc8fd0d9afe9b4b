// Documents small enough to compare byte by byte, and one reading of such a document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/channel_reader.h"
#include "tools/memory_host/memory_host.h"

namespace mixdecks {

inline constexpr std::int32_t kWidth = 7;  // odd, and the image no whole number of vectors
inline constexpr std::int32_t kHeight = 5;
inline constexpr std::size_t kPixels = kWidth * kHeight;

/// Random samples of a document's size, different for each seed; of 16 bits in the full scale.
std::vector<std::uint8_t> Samples8(std::uint32_t seed);
std::vector<std::uint16_t> Samples16(std::uint32_t seed);
HostChannel Channel8(std::uint32_t seed);
HostChannel Channel16(std::uint32_t seed);

/// RGB documents without alpha: red, green and blue have the seeds 1, 2 and 3.
HostDocument Document8();
HostDocument Document16();

/// Reads a document the way an export does, over a fresh heap, and keeps what came of it. Fails the
/// test when the heap does not get everything back.
struct Reading {
  explicit Reading(MemoryHost& host);
  /// The same for a host that is needed only once, and must get back what it lent.
  explicit Reading(MemoryHost&& host);

  /// The samples in one byte of every pixel.
  std::vector<std::uint8_t> Lane(std::size_t lane) const;

  HResult result = 1;
  bool hasAlpha = false;
  bool imageAllocated = false;
  std::vector<std::uint8_t> pixels{};
};

/// Fails the test unless the host has its suite back and nothing to complain of.
void ExpectBalance(const MemoryHost& host);

}  // namespace mixdecks
