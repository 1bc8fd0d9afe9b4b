// Opening, connecting, exporting and closing over and over, with a switcher that does something
// wrong most of the time and a user who sometimes closes early. Meant for ThreadSanitizer, but
// every build runs it.
//
//   MIXDECKS_STRESS_SEED=7 MIXDECKS_STRESS_CYCLES=100 test_tools_stress

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <map>
#include <random>
#include <string>

#include "platform/message_box.h"
#include "plugin/export_main.h"
#include "simulator/service_registration.h"
#include "simulator/switcher_simulator.h"
#include "tools/export/export_operator.h"
#include "tools/export/front_end.h"
#include "tools/memory_host/memory_host.h"
#include "transfer/video_modes.h"

namespace mixdecks {
namespace {

using simulator::Action;
using simulator::Point;
using simulator::Scenario;
using simulator::ScriptStep;
using simulator::SwitcherSimulator;

unsigned Setting(const char* name, unsigned otherwise) {
  const char* const text = std::getenv(name);
  return text == nullptr ? otherwise : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

/// Where something happens. Early points are many on purpose: an export that gets past them costs
/// a conversion, which has tests of its own.
constexpr Point kEarly[] = {Point::kConnectTo, Point::kConnected,   Point::kQueryMediaPool,
                            Point::kGetStills, Point::kGetCount,    Point::kCreateIterator,
                            Point::kNext,      Point::kGetVideoMode};
constexpr Point kLate[] = {Point::kCreateFrame,    Point::kGetBytes,    Point::kQueryStillsLock,
                           Point::kLock,           Point::kUploadBegun, Point::kUploadHalfway,
                           Point::kUploadReceived, Point::kSetSource};
/// Points at which nothing fails, but a switcher can go away and a user can close.
constexpr Point kAnywhere[] = {Point::kAddCallback,    Point::kIsValid,      Point::kGetName,
                               Point::kSetPicture,     Point::kUnlock,       Point::kLockGranted,
                               Point::kLockedReturned, Point::kNotifyStills, Point::kStillsNotified,
                               Point::kRemoveCallback};

class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  unsigned Below(unsigned bound) { return static_cast<unsigned>(engine_() % bound); }
  template <std::size_t kCount>
  Point Pick(const Point (&points)[kCount]) {
    return points[Below(kCount)];
  }

 private:
  std::mt19937 engine_;
};

/// What one cycle does, all of it drawn beforehand.
struct CyclePlan {
  Scenario scenario;
  bool closesEarly = false;
  Point closesAt{};
};

CyclePlan DrawPlan(Dice& dice) {
  CyclePlan plan;
  plan.scenario.mode = VideoModes().front().code;
  plan.scenario.slots = 1 + dice.Below(4);
  plan.scenario.players = dice.Below(3);
  ScriptStep step;
  const unsigned kind = dice.Below(16);
  if (kind < 8) {
    step.at = dice.Pick(kEarly);
    step.action = dice.Below(2) == 0 ? Action::kFail : Action::kDisconnect;
  } else if (kind < 10) {
    step.at = dice.Pick(kLate);
    step.action = dice.Below(2) == 0 ? Action::kFail : Action::kDisconnect;
  } else if (kind < 12) {
    step.at = dice.Pick(kAnywhere);
    step.action = Action::kDisconnect;
  } else if (kind < 15) {
    plan.closesEarly = true;
    plan.closesAt = dice.Below(4) == 0 ? dice.Pick(kAnywhere) : dice.Pick(kEarly);
    return plan;
  } else {
    return plan;  // nothing goes wrong
  }
  plan.scenario.script.push_back(step);
  return plan;
}

/// A document of the frame's own size, so that nothing has to be scaled.
HostDocument Document() {
  const VideoModeInfo& mode = VideoModes().front();
  const std::vector<std::uint8_t> rgba(std::size_t{4} * mode.width * mode.height, 77);
  return DocumentOfRgba8(rgba, static_cast<std::int32_t>(mode.width),
                         static_cast<std::int32_t>(mode.height), true);
}

/// Runs one cycle through the plug-in's entry. How it ended.
ExportEnd RunCycle(MemoryHost& host, const CyclePlan& plan) {
  SwitcherSimulator switcher(plan.scenario);
  const simulator::ScopedServiceRegistration registration(switcher);
  std::atomic<bool> closing = false;
  if (plan.closesEarly) {
    switcher.SetPointHook(plan.closesAt, [&closing](const auto&) { closing = true; });
  }
  ExportOperator exportOperator({.address = u"10.0.0.1", .name = u"stress", .mediaPlayer = -1},
                                {.timeout = std::chrono::minutes(1),
                                 .interrupted = [&closing] { return closing.load(); },
                                 .cutConnection = {}});
  {
    const SeatedOperator seat(exportOperator);
    EXPECT_EQ(host.Call(MixdecksExportMain, Selector::kStart), kHostResultDone);
  }
  switcher.Shutdown();
  EXPECT_EQ(switcher.LiveObjects(), 0u);
  for (const std::string& violation : switcher.Violations())
    ADD_FAILURE() << violation;
  return exportOperator.Outcome().end;
}

TEST(StressTest, OpensConnectsExportsAndClosesAgainAndAgain) {
  const unsigned seed = Setting("MIXDECKS_STRESS_SEED", std::random_device()());
  const unsigned cycles = Setting("MIXDECKS_STRESS_CYCLES", 2000);
  std::printf("To repeat: MIXDECKS_STRESS_SEED=%u MIXDECKS_STRESS_CYCLES=%u test_tools_stress\n",
              seed, cycles);
  // What goes wrong on purpose is told in message boxes.
  const MessageBoxPresenter former = SetMessageBoxPresenter([](auto...) {});
  Dice dice(seed);
  MemoryHost host(Document());
  std::map<ExportEnd, unsigned> ends;
  for (unsigned cycle = 0; cycle < cycles && !HasFailure(); ++cycle) {
    SCOPED_TRACE(cycle);
    const ExportEnd end = RunCycle(host, DrawPlan(dice));
    EXPECT_NE(end, ExportEnd::kTimedOut) << "the export hung";
    EXPECT_NE(end, ExportEnd::kNotBegun);
    ++ends[end];
  }
  for (const std::string& violation : host.Violations())
    ADD_FAILURE() << violation;
  EXPECT_EQ(host.OpenHandles(), 0u);
  SetMessageBoxPresenter(former);
  std::printf("%u exported, %u failed, %u not connected, %u disconnected, %u closed early\n",
              ends[ExportEnd::kExported], ends[ExportEnd::kFailed], ends[ExportEnd::kNotConnected],
              ends[ExportEnd::kDisconnected], ends[ExportEnd::kInterrupted]);
  if (cycles >= 1000) {
    for (const ExportEnd end : {ExportEnd::kExported, ExportEnd::kFailed, ExportEnd::kNotConnected,
                                ExportEnd::kDisconnected, ExportEnd::kInterrupted}) {
      EXPECT_GE(ends[end], cycles / 100) << "the dice are loaded";
    }
  }
}

}  // namespace
}  // namespace mixdecks
