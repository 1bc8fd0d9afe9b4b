// Where a pool is kept: in a folder (`pool_store.h`), or in memory.
//
// One thread at a time may call; `StillPool` sees to that. Slots are in range.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "simulator/pool.h"

namespace mixdecks::simulator {

/// What equipment a pool is opened for. What is not given stays as the pool has it, or is the
/// default for a new pool.
struct PoolShape {
  std::optional<std::uint32_t> slots = std::nullopt;
  std::optional<std::uint32_t> players = std::nullopt;
  std::optional<std::uint32_t> mode = std::nullopt;
};

/// A new pool's contents.
PoolContents NewPool(const PoolShape& shape);

/// Contents in another shape: slots and players come and go at the end, stills keep the mode they
/// were made for. Throws `PoolError`, beginning with `subject`, when a still would lose its slot.
PoolContents Reshape(PoolContents contents, const PoolShape& shape,
                     const std::filesystem::path& subject);

class StillStore {
 public:
  virtual ~StillStore() = default;

  virtual const PoolContents& Contents() const noexcept = 0;
  /// The frame of a slot that holds a still. Throws `PoolError`.
  virtual std::vector<std::uint8_t> Frame(std::uint32_t slot) const = 0;

  // Each change throws `PoolError` when it could not be kept, or counts but could not be finished;
  // `Contents` tells which.
  virtual void StoreStill(std::uint32_t slot, const Still& still,
                          std::span<const std::uint8_t> frame) = 0;
  virtual void ClearStill(std::uint32_t slot) = 0;
  /// Any change that leaves slots and frames where they are: names, players, the mode.
  virtual void Change(const std::function<void(PoolContents&)>& change) = 0;

  /// Lets others have the store; no change comes afterwards.
  virtual void Close() noexcept = 0;
};

}  // namespace mixdecks::simulator
