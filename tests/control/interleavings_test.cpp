// ExportControl in every order in which front end, worker and service threads can meet.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/control/exploration.h"
#include "tests/control/export_control_bench.h"

namespace mixdecks::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The event pair of the hand-over, by the order of creation.
constexpr int kHandoverPair = 2;

// How often a thread is stopped that could go on. A third thread multiplies the orders.
constexpr int kThreeThreads = MIXDECKS_INTERRUPTIONS;
constexpr int kTwoThreads = kThreeThreads + 1;

/// A bench whose front end waits in the exploration, and whose every step lets others come in.
struct ExploredBench : ExportControlBench {
  ExploredBench() {
    onWake = [this] {
      ++posted;
      SchedulingPoint();
    };
  }
  /// Waits for the next wake-up, or for `orElse`; answers it if it came.
  bool Answer(const std::function<bool()>& orElse = [] { return false; }) {
    WaitUntil([&] { return posted > taken || orElse(); });
    if (posted == taken) return false;
    ++taken;
    RunOne();
    return true;
  }
  void CloseAndCheck() {
    EXPECT_EQ(Close(), 0);
    EXPECT_EQ(sides, 0);
    EXPECT_FALSE(EndedSignalled(kHandoverPair));
  }

  int posted = 0;
  int taken = 0;
};

/// A service thread that runs `body` and is joined when the switcher side ends.
struct ServiceThread {
  explicit ServiceThread(std::function<void()> what) : body(std::move(what)) {
    StartWaitThread(
        thread, 0,
        [](void* self) {
          static_cast<ServiceThread*>(self)->body();
          return 0;
        },
        this);
  }
  void Join() { JoinWaitThread(thread, nullptr); }
  std::function<void()> body;
  WaitThread thread;
};

void ExpectAllEndWell(int interruptions, const std::function<void()>& scenario) {
  const ExplorationResult result = Explore(interruptions, scenario);
  EXPECT_THAT(result.failure, IsEmpty());
  ::testing::Test::RecordProperty("orders", static_cast<int>(result.orders));
}

/// What was told must be the beginning of what was posted.
void ExpectBeginningOf(const std::vector<std::string>& posted,
                       const std::vector<std::string>& told) {
  ASSERT_LE(told.size(), posted.size());
  EXPECT_TRUE(std::equal(told.begin(), told.end(), posted.begin()));
}

class ClosingAfter : public ::testing::TestWithParam<int> {};

// The front end answers some results and then closes, wherever the worker is.
TEST_P(ClosingAfter, AnsweredResults) {
  ExpectAllEndWell(kTwoThreads, [] {
    ExploredBench bench;
    bench.Open();
    bench.control->PostDisconnected();
    bench.control->PostExportFinished(true);
    bench.control->PostExportFinished(false);
    for (int i = 0; i < GetParam(); ++i)
      bench.Answer();
    bench.CloseAndCheck();
    const auto told = bench.journal.Lines();
    EXPECT_EQ(told.size(), static_cast<std::size_t>(GetParam()));
    ExpectBeginningOf({"disconnected", "export finished yes", "export finished no"}, told);
  });
}

// The same with a service that posts meanwhile, to the end of the switcher side.
TEST_P(ClosingAfter, ResultsOfAService) {
  ExpectAllEndWell(kThreeThreads, [] {
    ExploredBench bench;
    bench.Open();
    ServiceThread service([control = bench.control] {
      control->PostDisconnected();
      control->PostExportFinished(true);
    });
    bench.onDestroySide = [&service](ExportControl&) { service.Join(); };
    for (int i = 0; i < std::min(GetParam(), 2); ++i)
      bench.Answer();
    bench.CloseAndCheck();
    ExpectBeginningOf({"disconnected", "export finished yes"}, bench.journal.Lines());
  });
}

INSTANTIATE_TEST_SUITE_P(Answers, ClosingAfter, ::testing::Range(0, 4));

TEST(Interleavings, ClosingBelowAHandler) {
  ExpectAllEndWell(kTwoThreads, [] {
    ExploredBench bench;
    bench.Open();
    ExportControl* control = bench.control;
    bench.handler.onCall = [&] {
      SchedulingPoint();
      EXPECT_EQ(bench.Close(), 1);
      SchedulingPoint();
      control->RunPendingUICommand(&bench.handler);
    };
    bench.control->PostMessageBox(u"Error", u"It broke.");
    bench.control->PostDisconnected();
    bench.Answer();
    EXPECT_EQ(bench.sides, 0);
    EXPECT_FALSE(EndedSignalled(kHandoverPair));
    EXPECT_THAT(bench.journal.Lines(), ElementsAre("box", "box Error: It broke."));
  });
}

TEST(Interleavings, WakeUpsBelowAHandler) {
  ExpectAllEndWell(kTwoThreads, [] {
    ExploredBench bench;
    bench.Open();
    bench.control->PostMessageBox(u"Error", u"It broke.");
    bench.control->PostDisconnected();
    bench.handler.onCall = [&] {
      SchedulingPoint();
      bench.RunOne();
    };
    bench.Answer();
    bench.Answer();
    bench.CloseAndCheck();
    EXPECT_THAT(bench.journal.Lines(), ElementsAre("box", "box Error: It broke.", "disconnected"));
  });
}

TEST(Interleavings, NothingIsLostOrToldTwice) {
  ExpectAllEndWell(kThreeThreads, [] {
    ExploredBench bench;
    bench.onConnect = [](ExportControl& control) { control.PostConnectResult(true, 0, 0, 0); };
    bench.Open();
    ServiceThread service([control = bench.control] { control->PostDisconnected(); });
    bench.control->Connect(u"a");
    bench.Answer();
    bench.Answer();
    service.Join();
    bench.CloseAndCheck();
    auto told = bench.journal.Lines();
    std::sort(told.begin(), told.end());
    EXPECT_THAT(told, ElementsAre("connect a", "connect returns",
                                  "connected yes reason 0 stills 0 players 0", "disconnected"));
  });
}

TEST(Interleavings, ClosingWaitsForADispatch) {
  ExpectAllEndWell(kTwoThreads, [] {
    ExploredBench bench;
    bool connecting = false;
    bench.onConnect = [&](ExportControl&) {
      connecting = true;
      SchedulingPoint();
      SchedulingPoint();
      connecting = false;
    };
    bench.Open();
    bench.control->Connect(u"a");
    bench.control->SetHostRecord(nullptr);
    EXPECT_FALSE(connecting);
    bench.control->SetListener(nullptr);
    EXPECT_FALSE(connecting);
    EXPECT_EQ(std::exchange(bench.control, nullptr)->Release(), 0);
  });
}

TEST(Interleavings, AnotherListenerWaitsForADispatch) {
  ExpectAllEndWell(kTwoThreads, [] {
    ExploredBench bench;
    bool connecting = false;
    bench.onConnect = [&](ExportControl&) {
      connecting = true;
      SchedulingPoint();
      connecting = false;
    };
    bench.Open();
    bench.control->Connect(u"a");
    bench.control->SetListener(&bench.listener);
    EXPECT_FALSE(connecting);
    bench.CloseAndCheck();
  });
}

TEST(Interleavings, NothingHappensBeforeBothAreSet) {
  ExpectAllEndWell(1, [] {
    ExploredBench bench;
    bench.Create();
    bench.control->Connect(u"no listener");
    WaitUntilIdle();
    bench.control->SetListener(&bench.listener);
    bench.control->Connect(u"no record");
    bench.control->PostDisconnected();
    WaitUntilIdle();
    bench.control->SetHostRecord(&bench.record);
    bench.control->Connect(u"both");
    WaitUntilIdle();
    bench.CloseAndCheck();
    EXPECT_THAT(bench.journal.Lines(), ElementsAre("connect both", "connect returns"));
    EXPECT_EQ(bench.posted, 0);
  });
}

TEST(Interleavings, CommandsDrainWithoutAListener) {
  ExpectAllEndWell(1, [] {
    ExploredBench bench;
    bench.Open();
    bench.control->SetListener(nullptr);
    bench.control->Connect(u"a");
    bench.control->Export(u"still", 0, false, -1);
    bench.control->PostMessageBox(u"Error", u"It broke.");
    WaitUntilIdle();
    bench.CloseAndCheck();
    EXPECT_THAT(bench.journal.Lines(), IsEmpty());
    EXPECT_EQ(bench.posted, 0);
  });
}

TEST(Interleavings, AFactoryThatThrowsLeavesNothing) {
  ExpectAllEndWell(kTwoThreads, [] {
    ExploredBench bench;
    bench.onCreate = [](ExportControl&) {
      SchedulingPoint();
      throw 1;
    };
    EXPECT_THROW(bench.Create(), int);
  });
}

// What is posted before the front end listens has no effect.
TEST(Interleavings, ASwitcherSideMayPostWhileItIsMade) {
  ExpectAllEndWell(kTwoThreads, [] {
    ExploredBench bench;
    bench.onCreate = [](ExportControl& control) {
      control.PostDisconnected();
      SchedulingPoint();
      control.PostExportFinished(true);
    };
    bench.Create();
    WaitUntilIdle();
    bench.control->SetListener(&bench.listener);
    bench.control->SetHostRecord(&bench.record);
    WaitUntilIdle();
    EXPECT_EQ(bench.posted, 0);
    bench.CloseAndCheck();
  });
}

class FailingCreation : public ::testing::TestWithParam<int> {};

// queueMutex, queueEvent, the worker, controlMutex, handoverMutex, handoverEvent.
TEST_P(FailingCreation, GivesNullAndLeavesNothing) {
  ExpectAllEndWell(kTwoThreads, [] {
    ExploredBench bench;
    FailCreation(GetParam());
    bench.Create();
    EXPECT_EQ(bench.control, nullptr);
    EXPECT_EQ(bench.sides, 0);
    EXPECT_EQ(bench.sideCreatedOn != std::thread::id(), GetParam() > 4) << "made too early";
  });
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingCreation, ::testing::Range(1, 7));

TEST(Interleavings, CreationHasNoMoreStepsThanFail) {
  ExpectAllEndWell(1, [] {
    ExploredBench bench;
    FailCreation(7);
    bench.Open();
    ASSERT_NE(bench.control, nullptr);
    bench.CloseAndCheck();
  });
}

}  // namespace
}  // namespace mixdecks::testing
