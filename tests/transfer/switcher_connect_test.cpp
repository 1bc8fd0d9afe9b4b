// Connecting, disconnecting and closing, as the front end sees it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "platform/message_box.h"
#include "tests/transfer/fake_service.h"
#include "tests/transfer/front_end.h"
#include "tests/transfer/latch.h"
#include "tests/transfer/recorded_boxes.h"

namespace mixdecks {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kConnected[] = "connected, reason 0, stills 3, players 2";

class Connecting : public testing::Test {
 protected:
  FakeService service_;
};

TEST_F(Connecting, TellsTheResultAndThenEverySlot) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  EXPECT_THAT(frontEnd.Results(), ElementsAre(kConnected, "slot 0 in use: Lower third",
                                              "slot 1 free: ", "slot 2 in use: Lower third"));
  EXPECT_EQ(service_.LastAddress(), u"10.0.0.5");
}

TEST_F(Connecting, AsksTheServiceInOrder) {
  service_.mediaPlayers = 1;
  service_.slots.resize(1);
  FrontEnd frontEnd;
  frontEnd.Connect(1);
  frontEnd.Close();
  EXPECT_THAT(
      service_.Calls(),
      ElementsAre("CreateDiscovery", "ConnectTo", "QueryMediaPool", "GetStills", "GetCount",
                  "CreateIterator", "Next", "end of player", "Next", "end of players",
                  "AddCallback switcher", "AddCallback pool", "AddCallback stills", "IsValid 0",
                  "GetName 0", "RemoveCallback switcher", "end of switcher", "RemoveCallback pool",
                  "end of pool", "RemoveCallback stills", "end of stills", "end of discovery"));
}

TEST_F(Connecting, CountsPlayersUntilAnythingButZero) {
  for (const std::int32_t players : {0, 1, 2, 3, 4, 9}) {
    for (const HResult end : {1, kResultFail}) {
      FakeService service;
      service.mediaPlayers = players;
      service.endOfIteration = end;
      FrontEnd frontEnd;
      frontEnd.Connect(3);
      EXPECT_EQ(frontEnd.Results()[0],
                "connected, reason 0, stills 3, players " + std::to_string(players));
    }
  }
}

TEST_F(Connecting, CountsNoPlayerThatComesWithAnythingButZero) {
  service_.mediaPlayers = 4;
  service_.Fail(Call::kNext, 1, 3);
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  EXPECT_EQ(frontEnd.Results()[0], "connected, reason 0, stills 3, players 2");
}

struct FailingStep {
  Call call;
  const char* result;
};

class FailingConnect : public testing::TestWithParam<FailingStep> {};

TEST_P(FailingConnect, IsToldOnceAndLeavesNothing) {
  for (const bool givesNothing : {false, true}) {
    FakeService service;
    if (givesNothing && GetParam().call != Call::kGetCount) {
      service.GiveNothing(GetParam().call);
    } else {
      service.Fail(GetParam().call);
    }
    FrontEnd frontEnd;
    frontEnd.Connect(0);
    EXPECT_THAT(frontEnd.Results(), ElementsAre(GetParam().result));
    frontEnd.Close();
    EXPECT_EQ(service.Count(Call::kAddSwitcherCallback), 0);
    EXPECT_EQ(service.Count(Call::kIsValid), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Steps, FailingConnect,
    testing::Values(
        FailingStep{Call::kConnectTo, "not connected, reason 0, stills 0, players 0"},
        FailingStep{Call::kQueryMediaPool, "not connected, reason 0, stills 0, players 0"},
        FailingStep{Call::kGetStills, "not connected, reason 0, stills 0, players 0"},
        FailingStep{Call::kGetCount, "not connected, reason 0, stills 0, players 0"},
        // The slots were counted, yet there is nothing left to read them from.
        FailingStep{Call::kCreateIterator, "not connected, reason 0, stills 3, players 0"}));

TEST_F(Connecting, PassesTheReasonOn) {
  service_.reason = kReasonFirmware;
  service_.Fail(Call::kConnectTo, kResultFail, 1);
  FrontEnd frontEnd;
  frontEnd.Connect(0);
  EXPECT_THAT(frontEnd.Results(),
              ElementsAre("not connected, reason 1667656038, stills 0, players 0"));
  frontEnd.Connect(3);
  EXPECT_EQ(frontEnd.Results()[1], kConnected);
}

TEST_F(Connecting, LeavesOutASlotThatCannotBeRead) {
  service_.Fail(Call::kIsValid, kResultFail, 1);
  service_.Fail(Call::kGetName, kResultFail, 2);
  FrontEnd frontEnd;
  frontEnd.Connect(1);
  EXPECT_THAT(frontEnd.Results(), ElementsAre(kConnected, "slot 2 in use: Lower third"));
}

TEST_F(Connecting, DisconnectsFirstWhenConnected) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  service_.At(Call::kConnectTo, [&](int nth) {
    if (nth == 2) {
      EXPECT_THAT(service_.SwitcherCallbacks(), IsEmpty());
    }
  });
  frontEnd.Connect(3);
  EXPECT_EQ(frontEnd.Results()[4], kConnected);
  EXPECT_EQ(service_.Count(Call::kRemoveStillsCallback), 1);
  EXPECT_EQ(service_.StillsCallbacks().size(), 1U);
}

TEST_F(Connecting, DropsEverythingWhenTheSwitcherGoes) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  ITMKSwitcherCallback* callback = service_.SwitcherCallbacks().front();
  service_.SendSwitcherEvent(kEventDisconnected);
  EXPECT_EQ(frontEnd.TakeNext(), "disconnected");
  EXPECT_EQ(service_.LiveObjects(), 1);  // the discovery
  EXPECT_THAT(service_.SwitcherCallbacks(), IsEmpty());

  // A second event that was already on its way says the same and finds nothing to do.
  std::thread([=] { callback->Notify(kEventDisconnected); }).join();
  EXPECT_EQ(frontEnd.TakeNext(), "disconnected");
  frontEnd.Connect(3);
  EXPECT_EQ(frontEnd.Results()[6], kConnected);
}

TEST_F(Connecting, IgnoresOtherEvents) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  service_.SendSwitcherEvent(FourCharacterCode("pwr1"));
  service_.SendStillsEvent(FourCharacterCode("lokb"), 0);
  service_.SendStillsEvent(0, 1);
  frontEnd.Control().PostDisconnected();
  EXPECT_EQ(frontEnd.TakeNext(), "disconnected");
  EXPECT_EQ(frontEnd.Results().size(), 5U);
}

TEST_F(Connecting, ReadsASlotAnewWhenItChanges) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  service_.slots[1] = {true, u"Opener"};
  service_.SendStillsEvent(kEventNameChanged, 1);
  EXPECT_EQ(frontEnd.TakeNext(), "slot 1 in use: Opener");
  service_.slots[1].valid = false;
  service_.SendStillsEvent(kEventValidityChanged, 1);
  EXPECT_EQ(frontEnd.TakeNext(), "slot 1 free: Opener");
}

TEST_F(Connecting, StopsReadingSlotsWhenTheSwitcherGoes) {
  service_.At(Call::kGetName, [&](int nth) {
    if (nth == 2) service_.SendSwitcherEvent(kEventDisconnected);
  });
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  EXPECT_THAT(frontEnd.Results(), ElementsAre(kConnected, "slot 0 in use: Lower third",
                                              "disconnected", "slot 1 free: "));
  frontEnd.Close();
  EXPECT_EQ(service_.Count(Call::kIsValid), 2);
}

TEST_F(Connecting, KeepsAChangedSlotReadableWhileTheSwitcherGoes) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  service_.At(Call::kIsValid, [&](int nth) {
    if (nth == 4) service_.SendSwitcherEvent(kEventDisconnected);
  });
  service_.SendStillsEvent(kEventNameChanged, 2);
  frontEnd.TakeUntil(6);
  EXPECT_EQ(frontEnd.Results()[4], "disconnected");
  EXPECT_EQ(frontEnd.Results()[5], "slot 2 in use: Lower third");
}

TEST_F(Connecting, IgnoresAChangedSlotOfASwitcherThatWent) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  ITMKSwitcherStillsCallback* callback = service_.StillsCallbacks().front();
  service_.SendSwitcherEvent(kEventDisconnected);
  std::thread([=] { callback->Notify(kEventNameChanged, nullptr, 2); }).join();
  EXPECT_EQ(frontEnd.TakeNext(), "disconnected");
  frontEnd.Close();
  EXPECT_EQ(service_.Count(Call::kIsValid), 3);
}

TEST_F(Connecting, KeepsTheLaterOfTwoThatRunAtOnce) {
  Latch letFirstGo(1);
  service_.At(Call::kConnectTo, [&](int nth) {
    if (nth == 1) letFirstGo.Wait();
  });
  FrontEnd frontEnd;
  frontEnd.Control().Connect(u"10.0.0.1");
  service_.WaitFor(Call::kConnectTo);
  frontEnd.Connect(3);
  ASSERT_EQ(service_.StillsCallbacks().size(), 1U);

  letFirstGo.CountDown();
  frontEnd.TakeUntil(8);
  EXPECT_EQ(frontEnd.Results()[4], kConnected);
  // The second's objects were given up, callbacks first, when the first stored its own.
  EXPECT_EQ(service_.SwitcherCallbacks().size(), 1U);
  EXPECT_EQ(service_.MediaPoolCallbacks().size(), 1U);
  EXPECT_EQ(service_.StillsCallbacks().size(), 1U);
  EXPECT_EQ(service_.LiveObjects(), 4);
}

TEST_F(Connecting, ClosesOnlyWhenEveryAttemptHasEnded) {
  constexpr int kAttempts = 5;
  Latch begun(kAttempts);
  Latch letGo(1);
  service_.At(Call::kConnectTo, [&](int) {
    begun.CountDown();
    letGo.Wait();
  });
  FrontEnd frontEnd;
  for (int i = 0; i < kAttempts; ++i)
    frontEnd.Control().Connect(u"10.0.0.5");
  begun.Wait();
  std::thread helper([&] { letGo.CountDown(); });
  frontEnd.Close();
  helper.join();
  EXPECT_EQ(service_.LiveObjects(), 0);
  EXPECT_EQ(service_.Count(Call::kAddStillsCallback), kAttempts);
  EXPECT_EQ(service_.Count(Call::kRemoveStillsCallback), kAttempts);
}

TEST_F(Connecting, TriesAgainForAsLongAsItIsAsked) {
  service_.Fail(Call::kConnectTo);
  FrontEnd frontEnd;
  for (int i = 0; i < 200; ++i)
    frontEnd.Connect(0);
  EXPECT_EQ(service_.Count(Call::kConnectTo), 200);
}

TEST_F(Connecting, WaitsForACallbackThatIsInsideWhenItCloses) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  Latch inside(1);
  std::promise<void> closed;
  service_.At(Call::kIsValid, [&, hasClosed = closed.get_future().share()](int nth) {
    if (nth < 4) return;
    inside.CountDown();
    service_.WaitFor(Call::kRemoveStillsCallback);  // until the closing has taken the callback
    EXPECT_EQ(hasClosed.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout)
        << "it closed with a callback inside";
  });
  ITMKSwitcherStillsCallback* callback = service_.StillsCallbacks().front();
  std::thread serviceThread([=] { callback->Notify(kEventNameChanged, nullptr, 0); });
  inside.Wait();
  frontEnd.Close();
  closed.set_value();
  EXPECT_EQ(service_.Count(Call::kGetName), 4);  // the callback ran to its end first
  serviceThread.join();
}

TEST_F(Connecting, AnswersACallbackThatComesAfterItClosed) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  ITMKSwitcherCallback* switcher = service_.SwitcherCallbacks().front();
  ITMKSwitcherMediaPoolCallback* pool = service_.MediaPoolCallbacks().front();
  ITMKSwitcherStillsCallback* stills = service_.StillsCallbacks().front();
  frontEnd.Close();
  const std::vector<std::string> calls = service_.Calls();
  std::thread([=] {
    EXPECT_EQ(switcher->Notify(kEventDisconnected), kResultOk);
    EXPECT_EQ(pool->Ignored3(), kResultOk);
    EXPECT_EQ(stills->Notify(kEventTransferCompleted, nullptr, 0), kResultOk);
    EXPECT_EQ(stills->Notify(kEventNameChanged, nullptr, 0), kResultOk);
  }).join();
  EXPECT_EQ(service_.Calls(), calls);
}

TEST(MissingService, ThrowsWithoutABox) {
  RecordedBoxes boxes;
  {
    FakeService service;
    service.Unregister();
    EXPECT_THROW(FrontEnd(), int);
  }
  FakeService service;
  service.Fail(Call::kCreateDiscovery);
  EXPECT_THROW(FrontEnd(), int);
  EXPECT_THAT(boxes.Shown(), IsEmpty());
}

TEST(MissingService, ShowsABoxWhenNoObjectIsGiven) {
  RecordedBoxes boxes;
  FakeService service;
  service.GiveNothing(Call::kCreateDiscovery);
  int window = 0;
  PlatformRecord platform{&window};
  ExportRecord record{};
  record.platform = &platform;
  ExportGlobals globals{nullptr, &record};
  try {
    FrontEnd frontEnd(&globals);
    FAIL() << "it was created";
  } catch (int thrown) {
    EXPECT_EQ(thrown, 1);
  }
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Shown()[0].owner, &window);
  EXPECT_EQ(boxes.Shown()[0].text,
            "Your Mixdecks installation is missing some components, please try re-installing the "
            "Tollenmark ORVA Software.");
  EXPECT_EQ(boxes.Shown()[0].caption, "Corrupt Installation Detected");
  EXPECT_EQ(boxes.Shown()[0].flags, 16U);
}

TEST(MissingService, ShowsABoxWithoutAHostWindow) {
  RecordedBoxes boxes;
  FakeService service;
  service.GiveNothing(Call::kCreateDiscovery);
  ExportGlobals noRecord{nullptr, nullptr};
  ExportRecord record{};
  ExportGlobals noPlatform{nullptr, &record};
  for (ExportGlobals* globals : {static_cast<ExportGlobals*>(nullptr), &noRecord, &noPlatform}) {
    EXPECT_THROW(FrontEnd frontEnd(globals), int);
  }
  ASSERT_EQ(boxes.Shown().size(), 3U);
  for (const RecordedBox& box : boxes.Shown())
    EXPECT_EQ(box.owner, nullptr);
}

}  // namespace
}  // namespace mixdecks
