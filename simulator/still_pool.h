// The stills of a running switcher: looked up at once, changed one at a time.
//
// Any thread may call. Looking up never waits for the disk. Slots and players are in range; the
// callers check what clients say.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/still_store.h"

namespace mixdecks::simulator {

/// What a change made different about a slot, for those who are to be told.
struct SlotChange {
  bool name = false;
  bool validity = false;
  bool anything = false;
};

class StillPool {
 public:
  explicit StillPool(std::unique_ptr<StillStore> store);

  std::uint32_t SlotCount() const noexcept { return slotCount_; }
  std::uint32_t PlayerCount() const noexcept { return playerCount_; }
  std::uint32_t Mode() const;
  std::optional<Still> Find(std::uint32_t slot) const;
  PoolContents Contents() const;
  /// Empty for an empty slot.
  std::vector<std::uint8_t> Frame(std::uint32_t slot) const;

  // Changes throw `PoolError` when they could not be kept or finished.
  /// The text of the last one; empty as long as there was none.
  std::string LastFailure() const;

  /// Stores a frame of mode `mode`, whose size it has.
  SlotChange Store(std::uint32_t slot, std::u16string_view name, std::uint32_t mode,
                   std::span<const std::uint8_t> frame);
  /// Renaming an empty slot changes nothing.
  SlotChange Rename(std::uint32_t slot, std::u16string_view name);
  SlotChange Clear(std::uint32_t slot);
  void Show(std::uint32_t player, std::uint32_t slot);
  void ChangeMode(std::uint32_t mode);

  /// Lets others have the store; no change comes afterwards.
  void Close() noexcept;

 private:
  void Change(const std::function<void(StillStore&)>& change);
  SlotChange ChangeSlot(std::uint32_t slot, const std::function<void(StillStore&)>& change);

  mutable std::mutex storeMutex_;  ///< before contentsMutex_
  std::unique_ptr<StillStore> store_;

  mutable std::mutex contentsMutex_;
  PoolContents contents_;  ///< what the store had after its last change
  std::string lastFailure_;
  const std::uint32_t slotCount_;
  const std::uint32_t playerCount_;
};

}  // namespace mixdecks::simulator
