// Where the COM server finds its pool and its scenario.
//
//   MIXDECKS_SIMULATOR_POOL       the pool's folder; without it "Mixdecks\switcher-pool" in the
//                                 user's local application data
//   MIXDECKS_SIMULATOR_SCENARIO   the scenario file; without it the file beside the pool that is
//                                 called like the pool with ".scenario.json" behind, if it exists
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "simulator/switcher_simulator.h"

namespace mixdecks::simulator {

/// Absolute. Throws `PoolError` when nothing says where it is.
std::filesystem::path SimulatorPool();
std::optional<std::filesystem::path> SimulatorScenario();

/// Opens the pool with the scenario, and removes former reports. Throws `PoolError` or
/// `ScenarioError`.
std::unique_ptr<SwitcherSimulator> MakeConfiguredSimulator();

/// Tells why no simulator could be made: to a debugger, and in a file beside the pool, since the
/// program that asked only learns that it failed.
void ReportFailure(std::string_view why) noexcept;
/// Likewise what the clients of a simulator did against the rules, when it has ended.
void ReportViolations(std::span<const std::string> violations) noexcept;

}  // namespace mixdecks::simulator
