// Discovery objects for clients that only ask for a class: the simulator behind them is made for
// the first one and ends with the last.
//
// That is what a library needs that a host loads and unloads as it likes: while nobody connects,
// no thread of it runs and its pool is free for others.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "platform/result.h"
#include "simulator/switcher_simulator.h"
#include "transfer/service_contract.h"

namespace mixdecks::simulator {

/// Who switches the simulator on, and hears of its end.
struct SimulatorOwner {
  /// Makes the simulator; may throw, and then nothing is created.
  std::function<std::unique_ptr<SwitcherSimulator>()> make;
  /// Told what clients of the simulator it made did against the rules, if they did. That is when
  /// its last discovery object goes; with other objects still held, when those turn out to be
  /// released or leaked: at `IsServing`, when the next one is made, or when the process or library
  /// ends. Must not throw, nor create an object.
  std::function<void(std::span<const std::string> violations)> reportViolations;
};

/// Creates an object of the simulator that serves now, or of one that `owner` makes. The caller
/// releases it. With the last one the simulator shuts down; objects that clients got through it
/// stay callable, and fail. Any thread but the simulator's.
HResult CreateServedDiscovery(const SimulatorOwner& owner, ITMKSwitcherDiscovery** discovery);

/// Whether a simulator serves now, or clients hold objects of one that did.
bool IsServing();

}  // namespace mixdecks::simulator
