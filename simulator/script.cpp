#include "simulator/script.h"

#include <utility>

namespace mixdecks::simulator {

Script::Script(std::vector<ScriptStep> steps) {
  for (ScriptStep& step : steps)
    steps_.push_back({std::move(step)});
}

void Script::SetHook(Point point, PointHook hook) {
  // What the former hook holds may end here; it ends without the lock.
  const std::lock_guard lock(mutex_);
  std::swap(hooks_[static_cast<std::size_t>(point)], hook);
}

std::vector<ScriptStep> Script::Arrive(Point point, std::uint32_t number, std::uint32_t event) {
  const auto index = static_cast<std::size_t>(point);
  PointVisit visit{point, number, event, 0};
  std::vector<ScriptStep> due;
  PointHook hook;
  {
    const std::lock_guard lock(mutex_);
    visit.count = ++arrivals_[index];
    for (CountedStep& counted : steps_) {
      if (FallsDue(counted, visit)) due.push_back(counted.step);
    }
    hook = hooks_[index];
  }
  if (hook) hook(visit);
  return due;
}

bool Script::FallsDue(CountedStep& counted, const PointVisit& visit) {
  const ScriptStep& step = counted.step;
  const bool fits = step.at == visit.point && step.number.value_or(visit.number) == visit.number &&
                    step.event.value_or(visit.event) == visit.event;
  if (!fits) return false;
  const std::uint32_t arrival = ++counted.arrivals;
  if (arrival < step.call) return false;
  return step.times == ScriptStep::kAlways || arrival - step.call < step.times;
}

}  // namespace mixdecks::simulator
