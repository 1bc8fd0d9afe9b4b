#include "simulator/checksum.h"

#include <array>
#include <cstddef>

namespace mixdecks::simulator {
namespace {

/// Four bytes a step: a table for each byte of a word.
constexpr auto kTables = [] {
  std::array<std::array<std::uint32_t, 256>, 4> tables{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t remainder = byte;
    for (int bit = 0; bit < 8; ++bit) {
      remainder = remainder >> 1 ^ (remainder & 1 ? 0xEDB88320u : 0u);
    }
    tables[0][byte] = remainder;
  }
  for (std::size_t row = 1; row < tables.size(); ++row) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const std::uint32_t before = tables[row - 1][byte];
      tables[row][byte] = before >> 8 ^ tables[0][before & 0xFF];
    }
  }
  return tables;
}();

}  // namespace

std::uint32_t Checksum(std::span<const std::uint8_t> bytes, std::uint32_t before) noexcept {
  std::uint32_t sum = ~before;
  for (; bytes.size() >= 4; bytes = bytes.subspan(4)) {
    sum = kTables[3][(sum ^ bytes[0]) & 0xFF] ^ kTables[2][(sum >> 8 ^ bytes[1]) & 0xFF] ^
          kTables[1][(sum >> 16 ^ bytes[2]) & 0xFF] ^ kTables[0][sum >> 24 ^ bytes[3]];
  }
  for (const std::uint8_t byte : bytes)
    sum = sum >> 8 ^ kTables[0][(sum ^ byte) & 0xFF];
  return ~sum;
}

}  // namespace mixdecks::simulator
