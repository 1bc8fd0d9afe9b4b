#include "tools/export/pool_change.h"

#include "simulator/file_operations.h"
#include "tools/pool_failure.h"

namespace mixdecks {
namespace {

namespace fs = std::filesystem;

template <typename Value>
Value At(const std::vector<Value>& values, std::size_t index) {
  return index < values.size() ? values[index] : Value();
}

}  // namespace

PoolSnapshot TakeSnapshot(const fs::path& pool) {
  PoolSnapshot snapshot;
  std::error_code ignored;
  if (!fs::exists(pool / "pool.json", ignored)) return snapshot;
  try {
    snapshot.contents = simulator::LoadPool(pool);
  } catch (const simulator::PoolError& error) {
    throw PoolFailure(pool, error.what());
  }
  for (std::uint32_t slot = 0; slot < snapshot.contents.slots.size(); ++slot) {
    const bool used = snapshot.contents.slots[slot].has_value();
    snapshot.written.push_back(
        used ? simulator::LastWriteCount(pool / simulator::FrameFileName(slot)) : 0);
  }
  return snapshot;
}

std::optional<std::uint32_t> FindNewStill(const PoolSnapshot& before, const PoolSnapshot& after) {
  for (std::uint32_t slot = 0; slot < after.contents.slots.size(); ++slot) {
    const auto& still = after.contents.slots[slot];
    if (!still) continue;
    const bool same =
        At(before.contents.slots, slot) == still && At(before.written, slot) == after.written[slot];
    if (!same) return slot;
  }
  return std::nullopt;
}

std::optional<std::int32_t> FindNewlyShowing(const PoolSnapshot& before, const PoolSnapshot& after,
                                             std::uint32_t slot) {
  for (std::size_t player = 0; player < after.contents.players.size(); ++player) {
    const auto& shown = after.contents.players[player];
    if (shown == slot && At(before.contents.players, player) != shown) {
      return static_cast<std::int32_t>(player);
    }
  }
  return std::nullopt;
}

}  // namespace mixdecks
