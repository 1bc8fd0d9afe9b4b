// Closing while a result is on its way to the front end's thread, or below the handler of one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <thread>
#include <utility>

#include "tests/control/open_control.h"

namespace mixdecks::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Closing : public OpenControl {};

TEST_F(Closing, LetsAWaitingWorkerGo) {
  bench_.control->PostDisconnected();
  bench_.control->PostDisconnected();
  wakes_.Take();
  EXPECT_EQ(bench_.Close(), 0);
  EXPECT_THAT(bench_.journal.Lines(), IsEmpty());
}

TEST_F(Closing, StartsWithEitherOfTheTwo) {
  bench_.control->PostDisconnected();
  wakes_.Take();
  bench_.control->SetListener(nullptr);
  bench_.RunOne();
  EXPECT_THAT(bench_.journal.Lines(), IsEmpty());
}

TEST_F(Closing, NeedsNoMoreThanTheRelease) {
  bench_.control->PostDisconnected();
  wakes_.Take();
  EXPECT_EQ(std::exchange(bench_.control, nullptr)->Release(), 0);
  EXPECT_THAT(bench_.journal.Lines(), IsEmpty());
}

TEST_F(Closing, LeavesALateWakeUpNothingToDo) {
  bench_.control->PostDisconnected();
  wakes_.Take();
  bench_.control->SetHostRecord(nullptr);
  bench_.RunOne();
  bench_.control->PostExportFinished(true);
  bench_.control->SetListener(nullptr);
  bench_.RunOne();
  EXPECT_THAT(bench_.journal.Lines(), IsEmpty());
  EXPECT_EQ(wakes_.Posted(), 1);
}

TEST_F(Closing, BelowAHandlerWaitsForItsReturn) {
  bench_.control->PostMessageBox(u"Error", u"It broke.");
  bench_.control->PostDisconnected();
  ExportControl* control = bench_.control;
  bench_.handler.onCall = [&] {
    EXPECT_EQ(bench_.Close(), 1);
    EXPECT_EQ(bench_.sides, 1);
    control->RunPendingUICommand(&bench_.handler);
  };
  wakes_.Take();
  control->RunPendingUICommand(&bench_.handler);
  EXPECT_EQ(bench_.sides, 0);
  EXPECT_EQ(bench_.sideDestroyedOn, std::this_thread::get_id());
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("box", "box Error: It broke."));
}

TEST_F(Closing, BelowAHandlerMayStopShortOfTheRelease) {
  bench_.control->PostMessageBox(u"Error", u"It broke.");
  bench_.control->PostDisconnected();
  bench_.handler.onCall = [&] { bench_.control->SetHostRecord(nullptr); };
  wakes_.Take();
  bench_.RunOne();
  bench_.RunOne();
  EXPECT_EQ(bench_.Close(), 0);
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("box", "box Error: It broke."));
}

TEST_F(Closing, BelowAHandlerThatThrowsStillEnds) {
  bench_.control->PostDisconnected();
  ExportControl* control = bench_.control;
  bench_.handler.onCall = [&] {
    bench_.Close();
    throw 2;
  };
  wakes_.Take();
  EXPECT_THROW(control->RunPendingUICommand(&bench_.handler), int);
  EXPECT_EQ(bench_.sides, 0);
}

TEST_F(Closing, WakeUpsBelowAHandlerRunNothingTwice) {
  bench_.control->PostMessageBox(u"Error", u"It broke.");
  bench_.control->PostDisconnected();
  bench_.handler.onCall = [&] {
    bench_.RunOne();
    bench_.RunOne();
    EXPECT_EQ(wakes_.Posted(), 1);
  };
  wakes_.Take();
  bench_.RunOne();
  bench_.handler.onCall = nullptr;
  wakes_.Take();
  bench_.RunOne();
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("box", "box Error: It broke.", "disconnected"));
}

/// One opening: somebody posts, the front end answers some of it and closes when it likes.
void OpenAndClose(std::minstd_rand& random, bool closeInHandler) {
  WakeCounter wakes;
  ExportControlBench bench;
  bench.onWake = [&] { wakes.Post(); };
  bench.onConnect = [](ExportControl& control) {
    control.PostConnectResult(true, 0, 2, 1);
    control.PostStillInfo(0, true, u"still");
  };
  bench.Open();
  ASSERT_NE(bench.control, nullptr);
  ExportControl& control = *bench.control;
  std::thread service([&control] {
    control.PostStillInfo(1, true, u"other");
    control.PostMessageBox(u"Error", u"It broke.");
  });
  bench.onDestroySide = [&service](ExportControl&) { service.join(); };

  if (closeInHandler) {
    bench.handler.onCall = [&bench] {
      if (bench.control != nullptr) bench.Close();
    };
  }
  bench.control->Connect(u"10.0.0.1");
  for (auto turns = random() % 40; turns != 0 && bench.control != nullptr; --turns) {
    if (wakes.TryTake()) {
      bench.RunOne();
    } else {
      std::this_thread::yield();
    }
  }
  if (bench.control != nullptr) {
    EXPECT_EQ(bench.Close(), 0);
  }
  EXPECT_EQ(bench.sides, 0);
}

TEST(RapidOpenings, AllEnd) {
  const int given = GTEST_FLAG_GET(random_seed);
  const auto seed = given != 0 ? static_cast<unsigned>(given) : std::random_device{}() % 99999 + 1;
  SCOPED_TRACE("repeat with test_control --gtest_filter=RapidOpenings.* --gtest_random_seed=" +
               std::to_string(seed));
  std::minstd_rand random(seed);
  for (int opening = 0; opening < MIXDECKS_OPENINGS && !::testing::Test::HasFailure(); ++opening) {
    OpenAndClose(random, opening % 4 == 0);
  }
}

}  // namespace
}  // namespace mixdecks::testing
