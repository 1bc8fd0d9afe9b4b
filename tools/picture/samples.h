// Samples as picture files hold them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace mixdecks {

/// Pairs of bytes, the more significant one first, as numbers.
inline std::vector<std::uint16_t> BigEndianSamples(std::span<const std::uint8_t> bytes) {
  std::vector<std::uint16_t> samples(bytes.size() / 2);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i] = static_cast<std::uint16_t>(bytes[2 * i] << 8 | bytes[2 * i + 1]);
  }
  return samples;
}

}  // namespace mixdecks
