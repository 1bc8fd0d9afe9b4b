// One client's connection to the switcher: what all its service objects share.
#pragma once

#include <atomic>
#include <cstdint>

#include "simulator/callback_list.h"
#include "transfer/service_contract.h"

namespace mixdecks::simulator {

/// Any thread may use any member.
struct Connection {
  /// Cleared once, when the switcher drops the connection: calls fail from then on.
  std::atomic<bool> alive = true;

  /// Objects that the client holds, of the interfaces that keep something for it.
  std::atomic<std::uint32_t> switcherObjects = 0;
  std::atomic<std::uint32_t> mediaPoolObjects = 0;
  std::atomic<std::uint32_t> stillsObjects = 0;

  CallbackList<ITMKSwitcherCallback> switcherCallbacks;
  CallbackList<ITMKSwitcherMediaPoolCallback> mediaPoolCallbacks;
  CallbackList<ITMKSwitcherStillsCallback> stillsCallbacks;

  /// The video mode that the client was told last; 0 before that.
  std::atomic<std::uint32_t> toldMode = 0;

  /// Whether anybody is there to upload for: the switcher, and a client that holds the stills.
  bool CanUpload() const noexcept { return alive && stillsObjects > 0; }
};

}  // namespace mixdecks::simulator
