// CRC-32 as ZIP and PNG use it, so that any tool can check a frame against `pool.json`.
#pragma once

#include <cstdint>
#include <span>

namespace mixdecks::simulator {

/// Extends the checksum of what came before, 0 for nothing, by `bytes`.
std::uint32_t Checksum(std::span<const std::uint8_t> bytes, std::uint32_t before = 0) noexcept;

}  // namespace mixdecks::simulator
