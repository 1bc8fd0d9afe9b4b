#include "tests/control/exploration.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "tests/control/explored_run.h"

namespace mixdecks::testing {

ExplorationResult Explore(int interruptions, std::function<void()> scenario) {
  ExplorationResult result;
  Decisions decisions;
  do {
    auto run = std::make_unique<ExploredRun>(decisions, interruptions);
    run->Run(scenario);
    ++result.orders;
    result.failure = run->Failure();
    if (result.failure.empty() && ::testing::Test::HasFailure()) result.failure = "see above";
    if (!result.failure.empty()) result.failure += " (decisions " + decisions.Describe() + ")";
    // Threads that stand still go on looking at their run.
    if (run->StandsStill()) static_cast<void>(run.release());
  } while (result.failure.empty() && decisions.Next());
  return result;
}

void SchedulingPoint() {
  ExploredRun::Current().Pause([] { return true; });
}

void WaitUntil(std::function<bool()> condition) {
  ExploredRun::Current().Pause(std::move(condition));
}

void WaitUntilIdle() {
  ExploredRun::Current().PauseUntilIdle();
}

void FailCreation(int number) {
  ExploredRun::Current().FailCreation(number);
}

bool EndedSignalled(int pair) {
  return ExploredRun::Current().endedSignalled.count(pair) != 0;
}

}  // namespace mixdecks::testing
