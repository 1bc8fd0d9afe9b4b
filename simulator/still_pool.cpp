#include "simulator/still_pool.h"

#include <string>
#include <utility>

#include "simulator/checksum.h"
#include "simulator/frame_picture.h"
#include "transfer/video_modes.h"

namespace mixdecks::simulator {
namespace {

SlotChange Difference(const std::optional<Still>& before, const std::optional<Still>& after) {
  const std::u16string nameBefore = before ? before->name : u"";
  const std::u16string nameAfter = after ? after->name : u"";
  return {.name = nameBefore != nameAfter,
          .validity = before.has_value() != after.has_value(),
          .anything = before != after};
}

Still DescribeStill(std::u16string_view name, std::uint32_t mode,
                    std::span<const std::uint8_t> frame) {
  const VideoModeInfo& info = *FindVideoMode(mode);
  Still still;
  still.name = name;
  still.mode = mode;
  still.width = info.width;
  still.height = info.height;
  still.alpha = JudgeAlpha(frame);
  still.checksum = Checksum(frame);
  return still;
}

}  // namespace

StillPool::StillPool(std::unique_ptr<StillStore> store)
    : store_(std::move(store)),
      contents_(store_->Contents()),
      slotCount_(static_cast<std::uint32_t>(contents_.slots.size())),
      playerCount_(static_cast<std::uint32_t>(contents_.players.size())) {}

std::uint32_t StillPool::Mode() const {
  const std::lock_guard lock(contentsMutex_);
  return contents_.mode;
}

std::optional<Still> StillPool::Find(std::uint32_t slot) const {
  const std::lock_guard lock(contentsMutex_);
  return contents_.slots[slot];
}

PoolContents StillPool::Contents() const {
  const std::lock_guard lock(contentsMutex_);
  return contents_;
}

std::string StillPool::LastFailure() const {
  const std::lock_guard lock(contentsMutex_);
  return lastFailure_;
}

std::vector<std::uint8_t> StillPool::Frame(std::uint32_t slot) const {
  const std::lock_guard lock(storeMutex_);
  if (!store_->Contents().slots[slot]) return {};
  return store_->Frame(slot);
}

SlotChange StillPool::Store(std::uint32_t slot, std::u16string_view name, std::uint32_t mode,
                            std::span<const std::uint8_t> frame) {
  const Still still = DescribeStill(name, mode, frame);
  SlotChange change =
      ChangeSlot(slot, [&](StillStore& store) { store.StoreStill(slot, still, frame); });
  change.anything = true;  // an upload counts, also of the same picture
  return change;
}

SlotChange StillPool::Rename(std::uint32_t slot, std::u16string_view name) {
  return ChangeSlot(slot, [&](StillStore& store) {
    if (!store.Contents().slots[slot]) return;
    store.Change([&](PoolContents& contents) { contents.slots[slot]->name = name; });
  });
}

SlotChange StillPool::Clear(std::uint32_t slot) {
  return ChangeSlot(slot, [&](StillStore& store) {
    if (store.Contents().slots[slot]) store.ClearStill(slot);
  });
}

void StillPool::Show(std::uint32_t player, std::uint32_t slot) {
  Change([&](StillStore& store) {
    store.Change([&](PoolContents& contents) { contents.players[player] = slot; });
  });
}

void StillPool::ChangeMode(std::uint32_t mode) {
  Change([&](StillStore& store) {
    store.Change([&](PoolContents& contents) { contents.mode = mode; });
  });
}

void StillPool::Close() noexcept {
  const std::lock_guard lock(storeMutex_);
  store_->Close();
}

void StillPool::Change(const std::function<void(StillStore&)>& change) {
  const std::lock_guard lock(storeMutex_);
  // What a failed change left is taken over too: it may have failed after it counted.
  const auto takeOver = [this] {
    const std::lock_guard contentsLock(contentsMutex_);
    contents_ = store_->Contents();
  };
  try {
    change(*store_);
  } catch (const PoolError& error) {
    takeOver();
    const std::lock_guard contentsLock(contentsMutex_);
    lastFailure_ = error.what();
    throw;
  } catch (...) {
    takeOver();
    throw;
  }
  takeOver();
}

SlotChange StillPool::ChangeSlot(std::uint32_t slot,
                                 const std::function<void(StillStore&)>& change) {
  std::optional<Still> before;
  std::optional<Still> after;
  Change([&](StillStore& store) {
    before = store.Contents().slots[slot];
    change(store);
    after = store.Contents().slots[slot];
  });
  return Difference(before, after);
}

}  // namespace mixdecks::simulator
