// Finds the still that came into a pool which another process, or another library, writes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "simulator/pool.h"

namespace mixdecks {

/// A pool at one moment.
struct PoolSnapshot {
  simulator::PoolContents contents;
  /// When the frame of each slot was written, 0 for an empty slot.
  std::vector<std::uint64_t> written;
};

/// A folder without a pool gives an empty one. Throws `UserError` when the pool is damaged.
PoolSnapshot TakeSnapshot(const std::filesystem::path& pool);

/// The first slot, from 0, with a still that it did not hold before, be it with equal contents.
std::optional<std::uint32_t> FindNewStill(const PoolSnapshot& before, const PoolSnapshot& after);

/// The first media player, from 0, that came to show `slot`.
std::optional<std::int32_t> FindNewlyShowing(const PoolSnapshot& before, const PoolSnapshot& after,
                                             std::uint32_t slot);

}  // namespace mixdecks
