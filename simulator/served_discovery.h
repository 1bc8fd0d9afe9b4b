// Discovery objects for clients that only ask for a class: the simulator behind them is made for
// the first one and ends with the last.
//
// That is what a library needs that a host loads and unloads as it likes: while nobody connects,
// no thread of it runs and its pool is free for others.
#pragma once

#include <functional>
#include <memory>

#include "platform/result.h"
#include "simulator/switcher_simulator.h"
#include "transfer/service_contract.h"

namespace mixdecks::simulator {

/// Makes the simulator; may throw, and then nothing is created.
using SimulatorMaker = std::function<std::unique_ptr<SwitcherSimulator>()>;

/// Creates an object of the simulator that serves now, or of one that `make` makes. The caller
/// releases it, after all service objects it got through it. Any thread but the simulator's.
HResult CreateServedDiscovery(const SimulatorMaker& make, ITMKSwitcherDiscovery** discovery);

/// Whether a simulator serves now.
bool IsServing();

}  // namespace mixdecks::simulator
