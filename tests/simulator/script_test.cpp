// Every fault that a scenario can script, as a client meets it.
#include "simulator/script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "platform/text.h"
#include "tests/simulator/sample_frames.h"
#include "tests/simulator/test_client.h"

namespace mixdecks::simulator {
namespace {

using test::GreyFrame;
using test::kSmallMode;
using test::TestClient;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kAlways = ScriptStep::kAlways;

Scenario With(std::vector<ScriptStep> script) {
  Scenario scenario;
  scenario.mode = kSmallMode;
  scenario.slots = 4;
  scenario.refuseDelay = std::chrono::milliseconds(0);
  scenario.script = std::move(script);
  return scenario;
}

ScriptStep FailAt(Point point) {
  return {.at = point, .action = Action::kFail};
}
ScriptStep DisconnectAt(Point point) {
  return {.at = point, .action = Action::kDisconnect};
}

/// Runs what a client does, closes down, and expects no violation.
void Play(Scenario scenario, const std::function<void(SwitcherSimulator&, TestClient&)>& doings) {
  SwitcherSimulator simulator(std::move(scenario));
  {
    TestClient client(simulator);
    doings(simulator, client);
    simulator.WaitUntilIdle();
  }
  simulator.Shutdown();
  EXPECT_THAT(simulator.Violations(), IsEmpty());
}

TEST(Script, CountsArrivalsAndCallsHooks) {
  Script script(
      {{.at = Point::kGetName, .action = Action::kFail, .number = 2, .call = 2, .times = 2}});
  std::vector<std::uint32_t> counts;
  script.SetHook(Point::kGetName, [&](const PointVisit& visit) { counts.push_back(visit.count); });
  EXPECT_TRUE(script.Arrive(Point::kGetName, 1, 0).empty());
  EXPECT_TRUE(script.Arrive(Point::kGetName, 2, 0).empty()) << "the first of slot 2";
  EXPECT_EQ(script.Arrive(Point::kGetName, 2, 0).size(), 1u);
  EXPECT_TRUE(script.Arrive(Point::kIsValid, 2, 0).empty());
  EXPECT_EQ(script.Arrive(Point::kGetName, 2, 0).size(), 1u);
  EXPECT_TRUE(script.Arrive(Point::kGetName, 2, 0).empty()) << "two times only";
  EXPECT_THAT(counts, ElementsAre(1, 2, 3, 4, 5));
  script.SetHook(Point::kGetName, nullptr);
  script.Arrive(Point::kGetName, 2, 0);
  EXPECT_EQ(counts.size(), 5u);
}

TEST(Script, TakesAStepAlwaysFromACallOn) {
  Script script({{.at = Point::kGetCount, .action = Action::kFail, .call = 3, .times = kAlways}});
  for (int arrival = 1; arrival <= 6; ++arrival) {
    EXPECT_EQ(script.Arrive(Point::kGetCount, 0, 0).size(), arrival < 3 ? 0u : 1u) << arrival;
  }
}

TEST(Script, TakesAStepAtItsEventAlone) {
  Script script({{.at = Point::kNotifyStills,
                  .action = Action::kDisconnect,
                  .event = kEventTransferCompleted}});
  EXPECT_TRUE(script.Arrive(Point::kNotifyStills, 1, kEventValidityChanged).empty());
  EXPECT_EQ(script.Arrive(Point::kNotifyStills, 1, kEventTransferCompleted).size(), 1u);
}

TEST(Script, FailsConnectingWithAReasonAndThenConnects) {
  ScriptStep step = FailAt(Point::kConnectTo);
  step.reason = kReasonFirmware;
  step.times = 2;
  Play(With({step}), [](SwitcherSimulator&, TestClient& client) {
    EXPECT_EQ(client.Connect(), kResultFail);
    EXPECT_EQ(client.reason, kReasonFirmware);
    EXPECT_EQ(client.Connect(), kResultFail);
    EXPECT_EQ(client.Connect(), kResultOk);
    EXPECT_EQ(client.reason, 0u);
  });
}

TEST(Script, FailsConnectingAtTheLastMoment) {
  Play(With({FailAt(Point::kConnected)}), [](SwitcherSimulator&, TestClient& client) {
    EXPECT_EQ(client.Connect(), kResultFail);
    EXPECT_FALSE(client.switcher);
    EXPECT_EQ(client.Connect(), kResultOk);
  });
}

struct CallCase {
  Point point;
  std::function<HResult(TestClient&)> call;
};

/// Calls on a connection without callbacks, each of which succeeds unless a script says otherwise.
std::vector<CallCase> Calls() {
  return {
      {Point::kQueryMediaPool,
       [](TestClient& client) {
         ServicePointer<ITMKSwitcherMediaPool> found;
         return QueryService(*client.switcher.Get(), kSwitcherMediaPoolId, found);
       }},
      {Point::kGetStills,
       [](TestClient& client) {
         ServicePointer<ITMKSwitcherStills> found;
         return client.mediaPool->GetStills(found.Receive());
       }},
      {Point::kGetCount,
       [](TestClient& client) {
         std::uint32_t count = 0;
         return client.stills->GetCount(&count);
       }},
      {Point::kCreateIterator,
       [](TestClient& client) {
         std::uint32_t count = 0;
         return client.CountPlayers(count);
       }},
      {Point::kIsValid,
       [](TestClient& client) {
         std::int32_t valid = 0;
         return client.stills->IsValid(2, &valid);
       }},
      {Point::kGetName,
       [](TestClient& client) {
         std::u16string name;
         return client.SlotName(2, name);
       }},
      {Point::kGetVideoMode,
       [](TestClient& client) {
         std::uint32_t mode = 0;
         return client.switcher->GetVideoMode(&mode);
       }},
      {Point::kCreateFrame,
       [](TestClient& client) {
         ServicePointer<ITMKSwitcherFrame> frame;
         return client.mediaPool->CreateFrame(kFrameFormatYuva, 720, 486, frame.Receive());
       }},
      {Point::kQueryStillsLock,
       [](TestClient& client) {
         ServicePointer<ITMKSwitcherStillsLock> lock;
         return QueryService(*client.stills.Get(), kSwitcherStillsLockId, lock);
       }},
      {Point::kSetSource, [](TestClient& client) { return client.ShowOnPlayer(0, 0); }},
  };
}

TEST(Script, FailsEveryCallOnce) {
  for (const CallCase& one : Calls()) {
    SCOPED_TRACE(InfoOf(one.point).name);
    ScriptStep step = FailAt(one.point);
    // Connecting has called these once already.
    if (one.point == Point::kQueryMediaPool || one.point == Point::kGetStills) step.call = 2;
    Play(With({step}), [&](SwitcherSimulator&, TestClient& client) {
      ASSERT_EQ(client.Connect(), kResultOk);
      EXPECT_EQ(one.call(client), kResultFail);
      EXPECT_EQ(one.call(client), kResultOk);
    });
  }
}

TEST(Script, DisconnectsAtEveryCallWhichFailsThen) {
  for (const CallCase& one : Calls()) {
    SCOPED_TRACE(InfoOf(one.point).name);
    ScriptStep step = DisconnectAt(one.point);
    if (one.point == Point::kQueryMediaPool || one.point == Point::kGetStills) step.call = 2;
    Play(With({step}), [&](SwitcherSimulator&, TestClient& client) {
      ASSERT_EQ(client.Connect(), kResultOk);
      EXPECT_EQ(one.call(client), kResultFail);
      EXPECT_EQ(one.call(client), kResultFail) << "it stays away";
      client.callbacks.log.Await("sedi");
    });
  }
}

TEST(Script, DisconnectsWhileConnecting) {
  for (const Point point : {Point::kConnectTo, Point::kConnected}) {
    SCOPED_TRACE(InfoOf(point).name);
    Play(With({DisconnectAt(point)}), [](SwitcherSimulator&, TestClient& client) {
      EXPECT_EQ(client.Connect(), kResultFail);
      EXPECT_EQ(client.Connect(), kResultOk);
    });
  }
}

TEST(Script, DisconnectsInTheMiddleOfTheEnumeration) {
  ScriptStep step = DisconnectAt(Point::kGetName);
  step.number = 2;
  Play(With({step}), [](SwitcherSimulator&, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    std::u16string name;
    EXPECT_EQ(client.SlotName(0, name), kResultOk);
    EXPECT_EQ(client.SlotName(1, name), kResultOk);
    EXPECT_EQ(client.SlotName(2, name), kResultFail);
    EXPECT_EQ(client.SlotName(3, name), kResultFail);
  });
}

TEST(Script, EndsTheIteratorEarly) {
  ScriptStep step = FailAt(Point::kNext);
  step.number = 2;
  Play(With({step}), [](SwitcherSimulator&, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    std::uint32_t count = 0;
    EXPECT_EQ(client.CountPlayers(count), kResultOk);
    EXPECT_EQ(count, 2u);
  });
}

TEST(Script, FailsGetBytes) {
  Play(With({FailAt(Point::kGetBytes)}), [](SwitcherSimulator&, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    EXPECT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultFail);
    EXPECT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  });
}

TEST(Script, FailsTheSecondReadingOfTheMode) {
  ScriptStep step = FailAt(Point::kGetVideoMode);
  step.call = 2;
  Play(With({step}), [](SwitcherSimulator&, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    std::uint32_t mode = 0;
    EXPECT_EQ(client.switcher->GetVideoMode(&mode), kResultOk);
    EXPECT_EQ(client.switcher->GetVideoMode(&mode), kResultFail);
    EXPECT_EQ(client.switcher->GetVideoMode(&mode), kResultOk);
  });
}

TEST(Script, RefusesTheLock) {
  Play(With({FailAt(Point::kLock)}), [](SwitcherSimulator& simulator, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    EXPECT_EQ(client.RequestLock(1), kResultFail);
    simulator.WaitUntilIdle();
    EXPECT_THAT(client.callbacks.log.All(), IsEmpty());
    EXPECT_EQ(client.Upload(1, u"Then", GreyFrame(kSmallMode, 100)), "cmpt");
  });
}

TEST(Script, DropsARequestForTheLock) {
  for (const Point point : {Point::kLock, Point::kLockGranted}) {
    SCOPED_TRACE(InfoOf(point).name);
    Play(With({DisconnectAt(point)}), [](SwitcherSimulator& simulator, TestClient& client) {
      ASSERT_EQ(client.Connect(), kResultOk);
      client.RequestLock(1);
      client.callbacks.log.Await("sedi");
      simulator.WaitUntilIdle();
      EXPECT_FALSE(client.callbacks.log.Has("locked"));
    });
  }
}

TEST(Script, RefusesThePictureAndExpectsNoLockBack) {
  Play(With({FailAt(Point::kSetPicture)}), [](SwitcherSimulator& simulator, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
    client.callbacks.onLocked = [&] { EXPECT_EQ(client.SetPicture(1, u""), kResultFail); };
    ASSERT_EQ(client.RequestLock(1), kResultOk);
    client.callbacks.log.Await("locked");
    simulator.WaitUntilIdle();
  });
}

struct UploadCase {
  Action action;
  const char* event;
};

TEST(Script, EndsAnUploadAtEveryStage) {
  for (const Point point : {Point::kUploadBegun, Point::kUploadHalfway, Point::kUploadReceived}) {
    for (const UploadCase& one :
         {UploadCase{Action::kFail, "fail"}, UploadCase{Action::kCancel, "cncl"}}) {
      SCOPED_TRACE(std::string(InfoOf(point).name) + " " + one.event);
      Play(With({{.at = point, .action = one.action, .number = 1}}),
           [&](SwitcherSimulator& simulator, TestClient& client) {
             ASSERT_EQ(client.Connect(), kResultOk);
             EXPECT_EQ(client.Upload(1, u"Not", GreyFrame(kSmallMode, 100)), one.event);
             EXPECT_EQ(simulator.Contents().slots[1], std::nullopt);
             EXPECT_EQ(client.Upload(1, u"Again", GreyFrame(kSmallMode, 100)), "cmpt");
           });
    }
  }
}

TEST(Script, DisconnectsAtEveryStageOfAnUpload) {
  for (const Point point :
       {Point::kSetPicture, Point::kUploadBegun, Point::kUploadHalfway, Point::kUploadReceived}) {
    SCOPED_TRACE(InfoOf(point).name);
    Play(With({DisconnectAt(point)}), [](SwitcherSimulator& simulator, TestClient& client) {
      ASSERT_EQ(client.Connect(), kResultOk);
      ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
      client.callbacks.onLocked = [&] { client.SetPicture(1, u"Lost"); };
      ASSERT_EQ(client.RequestLock(1), kResultOk);
      client.callbacks.log.Await("sedi");
      client.callbacks.log.Await("locked");
      simulator.WaitUntilIdle();
      EXPECT_EQ(simulator.Contents().slots[1], std::nullopt);
      for (const char* end : {"cmpt 1", "cncl 1", "fail 1"}) {
        EXPECT_FALSE(client.callbacks.log.Has(end)) << end;
      }
    });
  }
}

TEST(Script, DisconnectsWhenTheEndIsAboutToBeTold) {
  ScriptStep step = DisconnectAt(Point::kNotifyStills);
  step.event = kEventTransferCompleted;
  Play(With({step}), [](SwitcherSimulator& simulator, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
    client.callbacks.onLocked = [&] { client.SetPicture(1, u"Arrived"); };
    ASSERT_EQ(client.RequestLock(1), kResultOk);
    client.callbacks.log.Await("sedi");
    simulator.WaitUntilIdle();
    EXPECT_FALSE(client.callbacks.log.Has("cmpt 1"));
    EXPECT_TRUE(simulator.Contents().slots[1].has_value()) << "though the still is there";
  });
}

TEST(Script, RenamesClearsAndChangesTheMode) {
  Play(
      With(
          {{.at = Point::kUploadBegun,
            .action = Action::kRename,
            .call = 2,
            .target = 1,
            .name = u"Theirs"},
           {.at = Point::kUploadBegun, .action = Action::kClear, .call = 3, .target = 1},
           {.at = Point::kGetCount, .action = Action::kChangeMode, .mode = test::kOtherSmallMode}}),
      [](SwitcherSimulator& simulator, TestClient& client) {
        ASSERT_EQ(client.Connect(), kResultOk);
        EXPECT_EQ(client.Upload(1, u"Ours", GreyFrame(kSmallMode, 100)), "cmpt");
        EXPECT_EQ(client.Upload(0, u"", GreyFrame(kSmallMode, 100)), "cmpt");
        EXPECT_EQ(simulator.Contents().slots[1]->name, u"Theirs");
        EXPECT_EQ(client.Upload(0, u"", GreyFrame(kSmallMode, 100)), "cmpt");
        EXPECT_EQ(simulator.Contents().slots[1], std::nullopt);
        std::uint32_t value = 0;
        EXPECT_EQ(client.stills->GetCount(&value), kResultOk);
        EXPECT_EQ(client.switcher->GetVideoMode(&value), kResultOk);
        EXPECT_EQ(value, test::kOtherSmallMode);
      });
}

TEST(Script, ReportsAModeThatNobodyKnows) {
  Scenario scenario = With({});
  scenario.reportedMode = FourCharacterCode("what");
  Play(scenario, [](SwitcherSimulator&, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    std::uint32_t mode = 0;
    EXPECT_EQ(client.switcher->GetVideoMode(&mode), kResultOk);
    EXPECT_EQ(mode, FourCharacterCode("what"));
    // What such a code leads to is refused without blame.
    ServicePointer<ITMKSwitcherFrame> frame;
    EXPECT_EQ(client.mediaPool->CreateFrame(kFrameFormatYuva, 1920, 1080, frame.Receive()),
              static_cast<HResult>(0x80070057));
    EXPECT_FALSE(frame);
  });
}

TEST(Script, HonoursCleaningUpWhateverItSays) {
  ScriptStep steps[] = {FailAt(Point::kAddCallback), FailAt(Point::kRemoveCallback),
                        FailAt(Point::kUnlock)};
  for (ScriptStep& step : steps)
    step.times = kAlways;
  Play(With({steps[0], steps[1], steps[2]}), [](SwitcherSimulator&, TestClient& client) {
    ASSERT_EQ(client.Connect(), kResultOk);
    EXPECT_EQ(client.Upload(1, u"", GreyFrame(kSmallMode, 100)), "cmpt");
  });
}

TEST(Script, MakesThreadsWait) {
  constexpr std::chrono::milliseconds kTime{30};
  Play(With({{.at = Point::kGetCount, .action = Action::kWait, .wait = kTime}}),
       [&](SwitcherSimulator&, TestClient& client) {
         ASSERT_EQ(client.Connect(), kResultOk);
         const auto start = std::chrono::steady_clock::now();
         std::uint32_t count = 0;
         EXPECT_EQ(client.stills->GetCount(&count), kResultOk);
         EXPECT_GE(std::chrono::steady_clock::now() - start, kTime);
       });
}

}  // namespace
}  // namespace mixdecks::simulator
