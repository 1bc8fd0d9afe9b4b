// The service as a well-behaved client meets it: connecting, uploading, being told.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "platform/text.h"
#include "simulator/unicode.h"
#include "tests/simulator/sample_frames.h"
#include "tests/simulator/test_client.h"

namespace mixdecks::simulator {
namespace {

using test::Gate;
using test::GreyFrame;
using test::kSmallMode;
using test::TestClient;
using testing::ElementsAre;
using testing::IsEmpty;

Scenario Small() {
  Scenario scenario;
  scenario.mode = kSmallMode;
  scenario.refuseDelay = std::chrono::milliseconds(0);
  return scenario;
}

class ServiceTest : public testing::Test {
 protected:
  /// Every test ends without a violation.
  void TearDown() override {
    simulator.Shutdown();
    EXPECT_THAT(simulator.Violations(), IsEmpty());
    EXPECT_EQ(simulator.LiveObjects(), 0u);
  }

  SwitcherSimulator simulator{Small()};
};

TEST_F(ServiceTest, IsThereByDefaultWithTwentySlotsAndFourPlayers) {
  SwitcherSimulator plain;
  {
    TestClient client(plain);
    ASSERT_EQ(client.Connect(), kResultOk);
    EXPECT_EQ(client.reason, 0u);
    std::uint32_t count = 0;
    EXPECT_EQ(client.stills->GetCount(&count), kResultOk);
    EXPECT_EQ(count, 20u);
    EXPECT_EQ(client.CountPlayers(count), kResultOk);
    EXPECT_EQ(count, 4u);
    std::uint32_t mode = 0;
    EXPECT_EQ(client.switcher->GetVideoMode(&mode), kResultOk);
    EXPECT_EQ(mode, FourCharacterCode("10i9"));
    std::int32_t valid = 7;
    std::u16string name = u"x";
    EXPECT_EQ(client.stills->IsValid(19, &valid), kResultOk);
    EXPECT_EQ(valid, 0);
    EXPECT_EQ(client.SlotName(19, name), kResultOk);
    EXPECT_EQ(name, u"");
  }
  plain.Shutdown();
  EXPECT_THAT(plain.Violations(), IsEmpty());
}

TEST_F(ServiceTest, StoresAnUploadAndTellsOfIt) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  const auto frame = GreyFrame(kSmallMode, 300);
  EXPECT_EQ(client.Upload(3, u"Lower third", frame), "cmpt");
  EXPECT_THAT(client.callbacks.log.All(),
              ElementsAre("locked", "vlid 3", "name 3", "pool", "cmpt 3"));
  EXPECT_EQ(simulator.Frame(3), frame);
  std::int32_t valid = 0;
  std::u16string name;
  EXPECT_EQ(client.stills->IsValid(3, &valid), kResultOk);
  EXPECT_NE(valid, 0);
  EXPECT_EQ(client.SlotName(3, name), kResultOk);
  EXPECT_EQ(name, u"Lower third");
}

TEST_F(ServiceTest, ReplacesAStill) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  EXPECT_EQ(client.Upload(3, u"One", GreyFrame(kSmallMode, 100)), "cmpt");
  EXPECT_EQ(client.Upload(3, u"One", GreyFrame(kSmallMode, 200)), "cmpt");
  EXPECT_EQ(simulator.Frame(3), GreyFrame(kSmallMode, 200));
  EXPECT_THAT(client.callbacks.log.All(), ElementsAre("locked", "vlid 3", "name 3", "pool",
                                                      "cmpt 3", "locked", "pool", "cmpt 3"));
}

TEST_F(ServiceTest, TakesNamesOfEveryKind) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  const std::u16string names[] = {u"", u"\U0001F3A5 \"A/B\\C\" <d>&'", std::u16string(255, u'n'),
                                  std::u16string(u"zero\0unit", 9)};
  for (const std::u16string& expected : names) {
    EXPECT_EQ(client.Upload(0, expected, GreyFrame(kSmallMode, 100)), "cmpt");
    std::u16string name;
    EXPECT_EQ(client.SlotName(0, name), kResultOk);
    EXPECT_EQ(name, expected);
  }
}

TEST_F(ServiceTest, PacksPaddedRows) {
  Scenario scenario = Small();
  scenario.rowPadding = 48;
  SwitcherSimulator padded(scenario);
  {
    TestClient client(padded);
    ASSERT_EQ(client.Connect(), kResultOk);
    EXPECT_EQ(client.Upload(1, u"Padded", GreyFrame(kSmallMode, 200)), "cmpt");
  }
  padded.Shutdown();
  EXPECT_EQ(padded.Frame(1), GreyFrame(kSmallMode, 200));
  EXPECT_THAT(padded.Violations(), IsEmpty());
}

TEST_F(ServiceTest, CallsBackOnThreadsOfItsOwn) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  std::thread::id lockThread;
  simulator.SetPointHook(Point::kLockGranted,
                         [&](const PointVisit&) { lockThread = std::this_thread::get_id(); });
  std::thread::id notifyThread;
  simulator.SetPointHook(Point::kNotifyStills,
                         [&](const PointVisit&) { notifyThread = std::this_thread::get_id(); });
  EXPECT_EQ(client.Upload(0, u"", GreyFrame(kSmallMode, 100)), "cmpt");
  EXPECT_NE(lockThread, std::thread::id());
  EXPECT_NE(lockThread, std::this_thread::get_id());
  EXPECT_NE(notifyThread, std::this_thread::get_id());
  EXPECT_NE(notifyThread, std::thread::id());
}

TEST_F(ServiceTest, ShowsAStillOnAPlayer) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  EXPECT_EQ(client.ShowOnPlayer(2, 5), kResultOk);
  EXPECT_EQ(simulator.Contents().players[2], 5u);
  EXPECT_EQ(simulator.Contents().players[0], std::nullopt);
  EXPECT_EQ(client.ShowOnPlayer(4, 5), 1) << "the iterator ends with a success that is not 0";
}

TEST_F(ServiceTest, RefusesAddressesOfOthers) {
  Scenario scenario = Small();
  scenario.addresses = {u"10.0.0.7"};
  SwitcherSimulator one(scenario);
  TestClient client(one);
  EXPECT_EQ(client.Connect(u"10.0.0.8"), kResultFail);
  EXPECT_EQ(client.reason, 0u);
  EXPECT_EQ(client.Connect(u"10.0.0.7"), kResultOk);
}

TEST_F(ServiceTest, AnswersEveryDottedAddress) {
  TestClient client(simulator);
  for (const char16_t* address : {u"0.0.0.0", u"255.255.255.254", u"192.168.010.1"}) {
    EXPECT_EQ(client.ConnectWithoutCallbacks(address), kResultOk) << ToUtf8(address);
  }
  for (const char16_t* address : {u"", u"switcher", u"1.2.3", u"1.2.3.", u"1.2.3.4.", u"1.2.3.256",
                                  u"1..3.4", u"1.2.3.4x", u".1.2.3", u"1.2.3.1000"}) {
    EXPECT_EQ(client.ConnectWithoutCallbacks(address), kResultFail) << ToUtf8(address);
  }
}

TEST_F(ServiceTest, GivesSeveralClientsOneModel) {
  TestClient first(simulator);
  TestClient second(simulator);
  ASSERT_EQ(first.Connect(u"10.0.0.1"), kResultOk);
  ASSERT_EQ(second.Connect(u"10.0.0.2"), kResultOk);
  EXPECT_NE(first.discovery.Get(), second.discovery.Get());
  EXPECT_EQ(first.Upload(6, u"Ours", GreyFrame(kSmallMode, 100)), "cmpt");
  second.callbacks.log.Await("name 6");
  EXPECT_FALSE(second.callbacks.log.Has("cmpt 6")) << "the end is the uploader's";
  std::u16string name;
  EXPECT_EQ(second.SlotName(6, name), kResultOk);
  EXPECT_EQ(name, u"Ours");
  simulator.WaitUntilIdle();
}

TEST_F(ServiceTest, LocksOutASecondClientUntilTheFirstIsDone) {
  TestClient first(simulator);
  TestClient second(simulator);
  ASSERT_EQ(first.Connect(), kResultOk);
  ASSERT_EQ(second.Connect(), kResultOk);
  ASSERT_EQ(first.RequestLock(0), kResultOk);
  first.callbacks.log.Await("locked");
  ASSERT_EQ(second.RequestLock(0), kResultOk);
  simulator.WaitUntilIdle();
  EXPECT_FALSE(second.callbacks.log.Has("locked"));
  EXPECT_EQ(first.stills->Unlock(first.callbacks.Lock()), kResultOk);
  second.callbacks.log.Await("locked");
  EXPECT_EQ(second.stills->Unlock(second.callbacks.Lock()), kResultOk);
  simulator.WaitUntilIdle();
}

TEST_F(ServiceTest, PassesTheLockOnWhenItsHolderLeavesDuringTheUpload) {
  TestClient second(simulator);
  ASSERT_EQ(second.Connect(), kResultOk);
  Gate gate;
  {
    TestClient first(simulator);
    ASSERT_EQ(first.Connect(), kResultOk);
    ASSERT_EQ(first.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
    first.callbacks.onLocked = [&] { first.SetPicture(0, u"Left behind"); };
    simulator.SetPointHook(Point::kUploadHalfway, [&](const PointVisit&) { gate.Pass(); });
    ASSERT_EQ(first.RequestLock(0), kResultOk);
    first.callbacks.log.Await("locked");
    ASSERT_EQ(second.RequestLock(0), kResultOk);
  }
  second.callbacks.log.Await("locked");
  gate.Open();
  simulator.WaitUntilIdle();
  EXPECT_EQ(simulator.Contents().slots[0], std::nullopt) << "it took its upload with it";
  EXPECT_EQ(second.stills->Unlock(second.callbacks.Lock()), kResultOk);
}

TEST_F(ServiceTest, TellsNobodyOfALockWhoStoppedListening) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  Gate atGrant, removed;
  simulator.SetPointHook(Point::kLockGranted, [&](const PointVisit&) {
    atGrant.Open();
    removed.Pass();
  });
  ASSERT_EQ(client.RequestLock(0), kResultOk);
  atGrant.Pass();
  client.RemoveCallbacks();
  removed.Open();
  simulator.WaitUntilIdle();
  EXPECT_THAT(client.callbacks.log.All(), IsEmpty());
}

TEST_F(ServiceTest, ForgetsTheRequestOfWhoLeft) {
  TestClient holder(simulator), leaver(simulator);
  ASSERT_EQ(holder.Connect(), kResultOk);
  ASSERT_EQ(leaver.ConnectWithoutCallbacks(u"10.0.0.1"), kResultOk);
  ASSERT_EQ(holder.RequestLock(0), kResultOk);
  holder.callbacks.log.Await("locked");
  ASSERT_EQ(leaver.RequestLock(1), kResultOk);
  leaver.stills.Reset();
  EXPECT_EQ(holder.stills->Unlock(holder.callbacks.Lock()), kResultOk);
  simulator.WaitUntilIdle();
  EXPECT_THAT(leaver.callbacks.log.All(), IsEmpty());
}

TEST_F(ServiceTest, RemovesACallbackWhileItIsBeingCalled) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  Gate inside, goOn;
  client.callbacks.onDisconnected = [&] {
    inside.Open();
    goOn.Pass();
  };
  simulator.Disconnect();
  inside.Pass();
  client.RemoveCallbacks();  // would hang here if it waited for the callback
  goOn.Open();
  client.callbacks.log.Await("sedi");
  simulator.WaitUntilIdle();
}

TEST_F(ServiceTest, BeginsNoCallbackAfterItsRemoval) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  Gate about, removed;
  const auto hold = [&](const PointVisit&) {
    about.Open();
    removed.Pass();
  };
  simulator.SetPointHook(Point::kNotifySwitcher, hold);
  simulator.Disconnect();
  about.Pass();
  client.RemoveCallbacks();
  removed.Open();
  simulator.WaitUntilIdle();
  EXPECT_THAT(client.callbacks.log.All(), IsEmpty());
}

TEST_F(ServiceTest, TellsAnUploadOnlyToThoseStillListening) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  Gate about, removed;
  simulator.SetPointHook(Point::kNotifyStills, [&](const PointVisit&) {
    about.Open();
    removed.Pass();
  });
  simulator.StoreStill(4, u"Elsewhere", GreyFrame(kSmallMode, 100));
  about.Pass();
  client.RemoveCallbacks();
  removed.Open();
  simulator.WaitUntilIdle();
  EXPECT_THAT(client.callbacks.log.All(), IsEmpty());
}

TEST_F(ServiceTest, DisconnectsEveryClientAndTakesThemBack) {
  TestClient first(simulator);
  TestClient second(simulator);
  ASSERT_EQ(first.Connect(), kResultOk);
  ASSERT_EQ(second.Connect(), kResultOk);
  simulator.Disconnect();
  first.callbacks.log.Await("sedi");
  second.callbacks.log.Await("sedi");
  std::uint32_t count = 0;
  EXPECT_EQ(first.stills->GetCount(&count), kResultFail);
  first.RemoveCallbacks();
  EXPECT_EQ(first.Connect(), kResultOk);
  EXPECT_EQ(first.stills->GetCount(&count), kResultOk);
  simulator.WaitUntilIdle();
  EXPECT_THAT(first.callbacks.log.All(), ElementsAre("sedi"));
}

TEST_F(ServiceTest, TellsALateListenerThatTheSwitcherIsGone) {
  TestClient client(simulator);
  ASSERT_EQ(client.ConnectWithoutCallbacks(u"10.0.0.1"), kResultOk);
  simulator.Disconnect();
  simulator.WaitUntilIdle();
  client.AddCallbacks();
  client.callbacks.log.Await("sedi");
  simulator.WaitUntilIdle();
  EXPECT_THAT(client.callbacks.log.All(), ElementsAre("sedi"));
}

TEST_F(ServiceTest, TellsEachListenerOfADisconnectionOnce) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  Gate about, goOn;
  simulator.SetPointHook(Point::kNotifySwitcher, [&](const PointVisit& visit) {
    if (visit.count > 1) return;
    about.Open();
    goOn.Pass();
  });
  simulator.Disconnect();
  about.Pass();
  // One who registers now is told by a thread of its own, which tells the other one as well.
  test::LoggingCallbacks late;
  ASSERT_EQ(client.switcher->AddCallback(late.Switcher()), kResultOk);
  late.log.Await("sedi");
  client.callbacks.log.Await("sedi");
  goOn.Open();
  simulator.WaitUntilIdle();
  EXPECT_THAT(client.callbacks.log.All(), ElementsAre("sedi"));
  EXPECT_THAT(late.log.All(), ElementsAre("sedi"));
  EXPECT_EQ(client.switcher->RemoveCallback(late.Switcher()), kResultOk);
}

TEST_F(ServiceTest, NeverTellsTheEndOfAnUploadAfterADisconnection) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  client.callbacks.onLocked = [&] { EXPECT_EQ(client.SetPicture(0, u"Lost"), kResultOk); };
  simulator.SetPointHook(Point::kUploadHalfway, [&](const PointVisit&) { simulator.Disconnect(); });
  ASSERT_EQ(client.RequestLock(0), kResultOk);
  client.callbacks.log.Await("sedi");
  simulator.WaitUntilIdle();
  EXPECT_FALSE(client.callbacks.log.Has("cmpt 0"));
  EXPECT_FALSE(client.callbacks.log.Has("fail 0"));
  EXPECT_EQ(client.stills->Unlock(client.callbacks.Lock()), kResultFail) << "it lost the lock";
  EXPECT_EQ(simulator.Contents().slots[0], std::nullopt);
}

TEST_F(ServiceTest, TellsWhatAnotherStationDoes) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  simulator.RenameStill(4, u"Nothing there");
  simulator.WaitUntilIdle();
  EXPECT_FALSE(client.callbacks.log.Has("name 4"));
  simulator.StoreStill(4, u"Theirs", GreyFrame(kSmallMode, 100));
  simulator.WaitUntilIdle();
  simulator.RenameStill(4, u"Renamed");
  simulator.WaitUntilIdle();
  simulator.RenameStill(4, u"Renamed");
  simulator.WaitUntilIdle();
  simulator.ClearStill(4);
  simulator.WaitUntilIdle();
  EXPECT_THAT(client.callbacks.log.All(), ElementsAre("vlid 4", "name 4", "pool", "name 4", "pool",
                                                      "vlid 4", "name 4", "pool"));
  EXPECT_TRUE(simulator.Frame(4).empty());
}

TEST_F(ServiceTest, FailsAnUploadWhoseModeIsGone) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  simulator.SetPointHook(Point::kUploadBegun, [&](const PointVisit&) {
    simulator.ChangeVideoMode(test::kOtherSmallMode);
  });
  EXPECT_EQ(client.Upload(0, u"Late", GreyFrame(kSmallMode, 100)), "fail");
  EXPECT_EQ(simulator.Contents().slots[0], std::nullopt);
}

TEST_F(ServiceTest, TakesTheTimeTheScenarioSays) {
  Scenario scenario = Small();
  scenario.connectDelay = scenario.lockDelay = std::chrono::milliseconds(30);
  scenario.uploadTime = std::chrono::milliseconds(40);
  SwitcherSimulator slow(scenario);
  TestClient client(slow);
  const auto start = std::chrono::steady_clock::now();
  ASSERT_EQ(client.Connect(), kResultOk);
  EXPECT_EQ(client.Upload(0, u"Slow", GreyFrame(kSmallMode, 100)), "cmpt");
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
}

TEST_F(ServiceTest, TakesItsTimeToGiveUp) {
  Scenario scenario = Small();
  scenario.addresses = {u"10.0.0.1"};
  scenario.refuseDelay = std::chrono::milliseconds(30);
  SwitcherSimulator slow(scenario);
  TestClient client(slow);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(client.Connect(u"10.0.0.2"), kResultFail);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
}

TEST_F(ServiceTest, InterruptsWhatTakesLongWhenItShutsDown) {
  Scenario scenario = Small();
  scenario.connectDelay = std::chrono::hours(1);
  for (int round = 0; round < 50; ++round) {
    SwitcherSimulator slow(scenario);
    Gate entered;
    slow.SetPointHook(Point::kConnectTo, [&](const PointVisit&) { entered.Open(); });
    HResult result = kResultOk;
    std::thread connecting([&] {
      TestClient client(slow);
      result = client.Connect();
    });
    entered.Pass();
    // Before, at and after the beginning of the delay: nothing outside shows which it is.
    for (int i = 0; i < round; ++i)
      std::this_thread::yield();
    slow.Shutdown();
    connecting.join();
    EXPECT_EQ(result, kResultFail);
  }
}

TEST_F(ServiceTest, FailsAfterItsShutdown) {
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  client.RemoveCallbacks();
  client.switcher.Reset();
  client.mediaPool.Reset();
  client.stills.Reset();
  ServicePointer<ITMKSwitcherDiscovery> kept = std::move(client.discovery);
  {
    SwitcherSimulator other;
    EXPECT_EQ(other.CreateDiscovery(client.discovery.Receive()), kResultOk);
  }
  const Text address(u"10.0.0.1");
  ServicePointer<ITMKSwitcher> switcher;
  std::uint32_t reason = 0;
  EXPECT_EQ(client.discovery->ConnectTo(address.Get(), switcher.Receive(), &reason), kResultFail)
      << "an object may outlive its simulator";
}

TEST(Service, MayBeAbsentOrNull) {
  Scenario scenario;
  scenario.service = ServicePresence::kAbsent;
  SwitcherSimulator absent(scenario);
  scenario.service = ServicePresence::kNull;
  SwitcherSimulator null(scenario);
  auto* object = reinterpret_cast<ITMKSwitcherDiscovery*>(1);
  EXPECT_EQ(absent.CreateDiscovery(&object), static_cast<HResult>(0x80040154));
  EXPECT_EQ(object, nullptr);
  object = reinterpret_cast<ITMKSwitcherDiscovery*>(1);
  EXPECT_EQ(null.CreateDiscovery(&object), kResultOk);
  EXPECT_EQ(object, nullptr);
}

TEST(Service, AnswersForItsOwnInterfacesOnly) {
  SwitcherSimulator simulator;
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  void* found = nullptr;
  EXPECT_EQ(client.discovery->QueryInterface(kSwitcherDiscoveryId, &found), kResultOk);
  EXPECT_EQ(found, client.discovery.Get());
  client.discovery->Release();
  EXPECT_EQ(client.stills->QueryInterface(kUnknownId, &found), kResultOk);
  EXPECT_EQ(found, client.stills.Get());
  client.stills->Release();
  EXPECT_EQ(client.stills->QueryInterface(kSwitcherMediaPoolId, &found),
            static_cast<HResult>(0x80004002));
  EXPECT_EQ(found, nullptr);
}

}  // namespace
}  // namespace mixdecks::simulator
