// A pool that lives as long as its simulator.
#pragma once

#include "simulator/still_store.h"

namespace mixdecks::simulator {

class MemoryStore final : public StillStore {
 public:
  explicit MemoryStore(const PoolShape& shape)
      : contents_(NewPool(shape)), frames_(contents_.slots.size()) {}

  const PoolContents& Contents() const noexcept override { return contents_; }
  std::vector<std::uint8_t> Frame(std::uint32_t slot) const override { return frames_[slot]; }

  void StoreStill(std::uint32_t slot, const Still& still,
                  std::span<const std::uint8_t> frame) override {
    frames_[slot].assign(frame.begin(), frame.end());
    contents_.slots[slot] = still;
  }

  void ClearStill(std::uint32_t slot) override {
    contents_.slots[slot].reset();
    frames_[slot] = {};
  }

  void Change(const std::function<void(PoolContents&)>& change) override { change(contents_); }
  void Close() noexcept override {}

 private:
  PoolContents contents_;
  std::vector<std::vector<std::uint8_t>> frames_;
};

}  // namespace mixdecks::simulator
