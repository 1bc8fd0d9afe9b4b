// Keeps count of arrivals at points, calls hooks and finds the steps that are due.
#pragma once

#include <array>
#include <cstdint>
#include <mutex>
#include <vector>

#include "simulator/points.h"
#include "simulator/scenario.h"

namespace mixdecks::simulator {

/// Any thread may call. Hooks run with no lock held.
class Script {
 public:
  explicit Script(std::vector<ScriptStep> steps);

  void SetHook(Point point, PointHook hook);

  /// Counts an arrival, calls the point's hook, and returns the steps that fall due with it, in
  /// the order of the script.
  std::vector<ScriptStep> Arrive(Point point, std::uint32_t number, std::uint32_t event);

 private:
  struct CountedStep {
    ScriptStep step;
    std::uint32_t arrivals = 0;  ///< of those that fit the step
  };

  static bool FallsDue(CountedStep& counted, const PointVisit& visit);

  std::mutex mutex_;
  std::vector<CountedStep> steps_;
  std::array<PointHook, kPointCount> hooks_;
  std::array<std::uint32_t, kPointCount> arrivals_{};
};

}  // namespace mixdecks::simulator
