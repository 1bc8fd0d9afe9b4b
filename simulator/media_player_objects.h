// `ITMKSwitcherMediaPlayer` and the iterator that gives one player after another.
#pragma once

#include <atomic>

#include "simulator/connection_object.h"

namespace mixdecks::simulator {

class MediaPlayerObject final : public ConnectionObject<ITMKSwitcherMediaPlayer> {
 public:
  MediaPlayerObject(std::shared_ptr<Switcher> switcher, std::shared_ptr<Connection> connection,
                    std::uint32_t player)
      : ConnectionObject(std::move(switcher), std::move(connection)), player_(player) {}

  const char* InterfaceName() const noexcept override { return "ITMKSwitcherMediaPlayer"; }
  HResult SetSource(std::uint32_t type, std::uint32_t index) override;

  HResult Unused3() override { return Unused(3); }

 private:
  const std::uint32_t player_;
};

class MediaPlayerIteratorObject final : public ConnectionObject<ITMKSwitcherMediaPlayerIterator> {
 public:
  MediaPlayerIteratorObject(std::shared_ptr<Switcher> switcher,
                            std::shared_ptr<Connection> connection)
      : ConnectionObject(std::move(switcher), std::move(connection)) {}

  const char* InterfaceName() const noexcept override { return "ITMKSwitcherMediaPlayerIterator"; }
  HResult Next(ITMKSwitcherMediaPlayer** player) override;

 private:
  std::atomic<std::uint32_t> next_ = 0;
};

}  // namespace mixdecks::simulator
