// CRC-32 as ZIP and PNG use it, so that any tool can check a frame against `pool.json`.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace mixdecks::simulator {

/// Slicing by four: a table row for each byte of a word.
inline constexpr auto kChecksumTables = [] {
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

/// Extends the checksum of what came before, 0 for nothing, by `bytes`.
constexpr std::uint32_t Checksum(std::span<const std::uint8_t> bytes, std::uint32_t before = 0) {
  const auto& table = kChecksumTables;
  std::uint32_t sum = ~before;
  for (; bytes.size() >= 4; bytes = bytes.subspan(4)) {
    sum = table[3][(sum ^ bytes[0]) & 0xFF] ^ table[2][(sum >> 8 ^ bytes[1]) & 0xFF] ^
          table[1][(sum >> 16 ^ bytes[2]) & 0xFF] ^ table[0][sum >> 24 ^ bytes[3]];
  }
  for (const std::uint8_t byte : bytes)
    sum = sum >> 8 ^ table[0][(sum ^ byte) & 0xFF];
  return ~sum;
}

}  // namespace mixdecks::simulator
