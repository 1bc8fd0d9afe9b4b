// What the simulator tells beside its pool while it is the switcher service that is registered: the
// plug-in itself only learns that there is no service.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/pool_neighbours.h"

namespace mixdecks {

/// Reports that came since this was made, in UTF-8. One made before it counts as none.
class SimulatorReports {
 public:
  explicit SimulatorReports(const std::filesystem::path& pool);

  /// Why the simulator could not serve; empty if it could, or is not what is registered.
  std::string Failure() const;
  /// What the plug-in did against the switcher's rules; complete when its dialog has closed.
  std::vector<std::string> Violations() const;

 private:
  simulator::PoolNeighbours files_;
  std::uint64_t formerFailure_;
  std::uint64_t formerViolations_;
};

}  // namespace mixdecks
