// The simulator is strict: each thing a client can do against the rules is recorded.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "platform/text.h"
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

class ViolationTest : public testing::Test {
 protected:
  static Scenario Small() {
    Scenario scenario;
    scenario.mode = kSmallMode;
    scenario.slots = 4;
    return scenario;
  }

  void SetUp() override { ASSERT_EQ(client.Connect(), kResultOk); }

  /// Takes the lock for slot 1 without doing anything with it.
  void TakeLock() {
    ASSERT_EQ(client.RequestLock(1), kResultOk);
    client.callbacks.log.Await("locked");
    simulator.WaitUntilIdle();
  }
  void GiveLockBack() { EXPECT_EQ(client.stills->Unlock(client.callbacks.Lock()), kResultOk); }

  std::vector<std::string> Violations() {
    client.Close();
    simulator.Shutdown();
    return simulator.Violations();
  }

  SwitcherSimulator simulator{Small()};
  TestClient client{simulator};
};

TEST_F(ViolationTest, NoneByDefault) {
  EXPECT_THAT(Violations(), IsEmpty());
}

TEST_F(ViolationTest, SetPictureWithoutLock) {
  ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  EXPECT_EQ(client.SetPicture(1, u""), static_cast<HResult>(0x80070005));
  EXPECT_THAT(Violations(), ElementsAre("SetPicture: called without the lock"));
}

TEST_F(ViolationTest, SetPictureUnderTheLockOfAnotherClient) {
  TestClient other(simulator);
  ASSERT_EQ(other.Connect(), kResultOk);
  TakeLock();
  ASSERT_EQ(other.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  EXPECT_LT(other.SetPicture(1, u""), 0);
  EXPECT_LT(other.stills->Unlock(client.callbacks.Lock()), 0);
  GiveLockBack();
  other.Close();
  EXPECT_THAT(Violations(), ElementsAre("SetPicture: called without the lock",
                                        "Unlock: called without the lock"));
}

TEST_F(ViolationTest, SetPictureIntoAnotherSlot) {
  ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  TakeLock();
  EXPECT_LT(client.SetPicture(2, u""), 0);
  EXPECT_LT(client.SetPicture(4, u""), 0);
  GiveLockBack();
  EXPECT_THAT(Violations(), ElementsAre("SetPicture: the lock is for another slot than 2",
                                        "SetPicture: slot index 4 of 4 slots"));
}

TEST_F(ViolationTest, SetPictureTwiceAndUnlockDuringTheUpload) {
  ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  Gate goOn;
  simulator.SetPointHook(Point::kUploadHalfway, [&](const PointVisit&) { goOn.Pass(); });
  ASSERT_EQ(client.RequestLock(1), kResultOk);
  client.callbacks.log.Await("locked");
  EXPECT_EQ(client.SetPicture(1, u""), kResultOk);
  EXPECT_LT(client.SetPicture(1, u""), 0);
  GiveLockBack();
  goOn.Open();
  simulator.WaitUntilIdle();
  EXPECT_THAT(Violations(), ElementsAre("SetPicture: called during the upload",
                                        "Unlock: called during the upload"));
}

TEST_F(ViolationTest, SetPictureWithAForeignFrame) {
  TakeLock();
  EXPECT_LT(client.SetPicture(1, u""), 0) << "null";
  SwitcherSimulator others(Small());
  TestClient othersClient(others);
  ASSERT_EQ(othersClient.Connect(), kResultOk);
  ASSERT_EQ(othersClient.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  client.frame = othersClient.frame.Share();
  EXPECT_LT(client.SetPicture(1, u""), 0);
  GiveLockBack();
  EXPECT_THAT(Violations(),
              ElementsAre("SetPicture: called with what is no frame of this switcher",
                          "SetPicture: called with what is no frame of this switcher"));
}

TEST_F(ViolationTest, AFrameThatWasNotWritten) {
  ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  void* bytes = nullptr;
  ASSERT_EQ(client.frame->GetBytes(&bytes), kResultOk);
  const auto rowBytes = static_cast<std::size_t>(client.frame->GetRowBytes());
  std::memset(static_cast<std::uint8_t*>(bytes) + 9 * rowBytes, 0xA5, rowBytes);
  client.callbacks.onStills = [&](std::uint32_t event, std::uint32_t) {
    if (event == kEventTransferCompleted) GiveLockBack();
  };
  client.callbacks.onLocked = [&] { EXPECT_EQ(client.SetPicture(1, u""), kResultOk); };
  ASSERT_EQ(client.RequestLock(1), kResultOk);
  client.callbacks.log.Await("cmpt 1");
  simulator.WaitUntilIdle();
  EXPECT_THAT(Violations(), ElementsAre("SetPicture: row 9 was not written"));
}

TEST_F(ViolationTest, UnlockWithoutLock) {
  EXPECT_EQ(client.stills->Unlock(client.callbacks.Lock()), kResultFail);
  EXPECT_THAT(Violations(), ElementsAre("Unlock: called without the lock"));
}

TEST_F(ViolationTest, UnlockWithAnotherCallback) {
  TakeLock();
  test::LoggingCallbacks others;
  EXPECT_EQ(client.stills->Unlock(others.Lock()), kResultFail);
  GiveLockBack();
  EXPECT_THAT(Violations(), ElementsAre("Unlock: called without the lock"));
}

TEST_F(ViolationTest, LockTwice) {
  TakeLock();
  EXPECT_LT(client.RequestLock(1), 0);
  GiveLockBack();
  EXPECT_THAT(Violations(), ElementsAre("Lock: called by who has the lock or waits for it"));
}

TEST_F(ViolationTest, LockTwiceWhileWaitingForIt) {
  TestClient holder(simulator);
  ASSERT_EQ(holder.Connect(), kResultOk);
  ASSERT_EQ(holder.RequestLock(0), kResultOk);
  holder.callbacks.log.Await("locked");
  EXPECT_EQ(client.RequestLock(1), kResultOk);
  EXPECT_LT(client.RequestLock(2), 0);
  EXPECT_EQ(holder.stills->Unlock(holder.callbacks.Lock()), kResultOk);
  client.callbacks.log.Await("locked");
  GiveLockBack();
  holder.Close();
  EXPECT_THAT(Violations(), ElementsAre("Lock: called by who has the lock or waits for it"));
}

TEST_F(ViolationTest, LockOfNoSlot) {
  EXPECT_LT(client.RequestLock(4), 0);
  EXPECT_LT(client.RequestLock(0xFFFFFFFF), 0);
  EXPECT_THAT(Violations(), ElementsAre("Lock: slot index 4 of 4 slots",
                                        "Lock: slot index 4294967295 of 4 slots"));
}

TEST_F(ViolationTest, ALockThatIsNotGivenBack) {
  TakeLock();
  EXPECT_THAT(Violations(), ElementsAre("Lock: the lock was not given back"));
}

TEST_F(ViolationTest, ALockThatIsNotGivenBackAfterTheUpload) {
  ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  client.callbacks.onLocked = [&] { EXPECT_EQ(client.SetPicture(1, u""), kResultOk); };
  ASSERT_EQ(client.RequestLock(1), kResultOk);
  client.callbacks.log.Await("cmpt 1");
  simulator.WaitUntilIdle();
  EXPECT_THAT(Violations(), ElementsAre("Lock: the lock was not given back"));
}

TEST_F(ViolationTest, ALockThatAConnectedClientKeeps) {
  TakeLock();
  simulator.Shutdown();
  EXPECT_THAT(simulator.Violations(), testing::Contains("Lock: the lock was not given back"));
  client.Close();
}

TEST_F(ViolationTest, ALockThatWentWithTheConnectionIsNone) {
  TakeLock();
  simulator.Disconnect();
  simulator.WaitUntilIdle();
  EXPECT_THAT(Violations(), IsEmpty());
}

TEST_F(ViolationTest, FramesOfWrongFormatAndSize) {
  ServicePointer<ITMKSwitcherFrame> frame;
  EXPECT_LT(client.mediaPool->CreateFrame(FourCharacterCode("BGRA"), 720, 486, frame.Receive()), 0);
  EXPECT_LT(client.mediaPool->CreateFrame(kFrameFormatYuva, 1920, 1080, frame.Receive()), 0);
  std::uint32_t mode = 0;
  ASSERT_EQ(client.switcher->GetVideoMode(&mode), kResultOk);
  EXPECT_LT(client.mediaPool->CreateFrame(kFrameFormatYuva, 720, 576, frame.Receive()), 0);
  EXPECT_THAT(Violations(),
              ElementsAre("CreateFrame: the format is BGRA, only yuva is taken",
                          "CreateFrame: a frame of 1920 x 1080 in mode ntsc, which takes 720 x 486",
                          "CreateFrame: a frame of 720 x 576 in mode ntsc, which takes 720 x 486"));
}

TEST_F(ViolationTest, AFrameForAModeThatChangedMeanwhileIsNone) {
  std::uint32_t mode = 0;
  ASSERT_EQ(client.switcher->GetVideoMode(&mode), kResultOk);
  simulator.ChangeVideoMode(test::kOtherSmallMode);
  ServicePointer<ITMKSwitcherFrame> frame;
  EXPECT_LT(client.mediaPool->CreateFrame(kFrameFormatYuva, 720, 486, frame.Receive()), 0);
  EXPECT_THAT(Violations(), IsEmpty());
}

TEST_F(ViolationTest, CallbacksAddedTwiceOrRemovedUnknown) {
  EXPECT_LT(client.switcher->AddCallback(client.callbacks.Switcher()), 0);
  EXPECT_LT(client.mediaPool->AddCallback(nullptr), 0);
  client.RemoveCallbacks();
  EXPECT_LT(client.stills->RemoveCallback(client.callbacks.Stills()), 0);
  EXPECT_THAT(Violations(), ElementsAre("AddCallback: the callback is registered already",
                                        "AddCallback: called with a null pointer",
                                        "RemoveCallback: the callback is not registered"));
}

TEST_F(ViolationTest, CallbacksLeftRegistered) {
  client.ForgetCallbacks();
  client.switcher.Reset();
  client.mediaPool.Reset();
  client.stills.Reset();
  client.discovery.Reset();
  simulator.StoreStill(0, u"", GreyFrame(kSmallMode, 100));
  simulator.Shutdown();
  EXPECT_THAT(client.callbacks.log.All(), IsEmpty()) << "they are called no more";
  EXPECT_THAT(simulator.Violations(),
              ElementsAre("ITMKSwitcher: a callback was left registered",
                          "ITMKSwitcherMediaPool: a callback was left registered",
                          "ITMKSwitcherStills: a callback was left registered"));
}

TEST_F(ViolationTest, ReferencesLeaked) {
  client.stills->AddRef();
  ITMKSwitcherStills* leaked = client.stills.Get();
  EXPECT_THAT(Violations(), ElementsAre("ITMKSwitcherStills: 1 reference was not released"));
  EXPECT_EQ(simulator.LiveObjects(), 1u);
  EXPECT_EQ(leaked->Release(), 0u);
}

TEST_F(ViolationTest, UseAfterTheLastRelease) {
  ITMKSwitcherStills* stills = client.stills.Get();
  client.RemoveCallbacks();
  client.stills.Reset();
  std::uint32_t count = 0;
  EXPECT_LT(stills->GetCount(&count), 0);
  EXPECT_EQ(stills->AddRef(), 0u);
  EXPECT_EQ(stills->Release(), 0u);
  void* found = nullptr;
  EXPECT_LT(stills->QueryInterface(kUnknownId, &found), 0);
  EXPECT_THAT(Violations(),
              ElementsAre("GetCount: called on ITMKSwitcherStills after its last Release",
                          "AddRef: called on ITMKSwitcherStills after its last Release",
                          "Release: called on ITMKSwitcherStills after its last Release",
                          "QueryInterface: called on ITMKSwitcherStills after its last Release"));
}

TEST_F(ViolationTest, UseOfAFrameAfterItsLastRelease) {
  ASSERT_EQ(client.MakeFrame(GreyFrame(kSmallMode, 100)), kResultOk);
  ITMKSwitcherFrame* frame = client.frame.Get();
  client.frame.Reset();
  void* bytes = nullptr;
  EXPECT_LT(frame->GetBytes(&bytes), 0);
  EXPECT_EQ(frame->GetHeight(), 0);
  EXPECT_EQ(frame->GetRowBytes(), 0);
  TakeLock();
  EXPECT_LT(client.stills->SetPicture(1, nullptr, frame), 0);
  GiveLockBack();
  EXPECT_THAT(Violations(),
              ElementsAre("GetBytes: called on ITMKSwitcherFrame after its last Release",
                          "GetHeight: called on ITMKSwitcherFrame after its last Release",
                          "GetRowBytes: called on ITMKSwitcherFrame after its last Release",
                          "SetPicture: called with what is no frame of this switcher"));
}

TEST_F(ViolationTest, SlotsAndSourcesThatDoNotExist) {
  std::int32_t valid = 0;
  std::u16string name;
  EXPECT_LT(client.stills->IsValid(4, &valid), 0);
  EXPECT_LT(client.SlotName(4, name), 0);
  EXPECT_LT(client.ShowOnPlayer(0, 4), 0);
  EXPECT_LT(client.ShowOnPlayer(0, 1, FourCharacterCode("clip")), 0);
  EXPECT_EQ(simulator.Contents().players[0], std::nullopt);
  EXPECT_THAT(Violations(),
              ElementsAre("IsValid: slot index 4 of 4 slots", "GetName: slot index 4 of 4 slots",
                          "SetSource: there is no slot of index 4",
                          "SetSource: the type is clip, only smps is known"));
}

TEST_F(ViolationTest, NullPointers) {
  EXPECT_LT(client.stills->GetCount(nullptr), 0);
  EXPECT_LT(client.switcher->GetVideoMode(nullptr), 0);
  EXPECT_LT(client.discovery->ConnectTo(nullptr, nullptr, nullptr), 0);
  EXPECT_LT(client.stills->QueryInterface(kUnknownId, nullptr), 0);
  EXPECT_THAT(Violations(), ElementsAre("GetCount: called with a null pointer",
                                        "GetVideoMode: called with a null pointer",
                                        "ConnectTo: called with a null pointer",
                                        "QueryInterface: called with a null pointer"));
}

TEST_F(ViolationTest, OperationsInNoUse) {
  EXPECT_LT(client.switcher->Unused7(), 0);
  EXPECT_LT(client.stills->Unused12(), 0);
  EXPECT_THAT(Violations(),
              ElementsAre("ITMKSwitcher: slot 7 was called, which is in no use",
                          "ITMKSwitcherStills: slot 12 was called, which is in no use"));
}

TEST_F(ViolationTest, AnIteratorOfSomethingElse) {
  void* found = nullptr;
  EXPECT_LT(client.switcher->CreateIterator(kSwitcherMediaPoolId, &found), 0);
  EXPECT_THAT(Violations(),
              ElementsAre("CreateIterator: called for another interface than the media players'"));
}

TEST_F(ViolationTest, CallbacksThatAnswerOtherThanNull) {
  client.callbacks.answer = 1;
  simulator.Disconnect();
  simulator.WaitUntilIdle();
  EXPECT_THAT(Violations(),
              ElementsAre("ITMKSwitcherCallback::Notify: answered 0x00000001, must be 0"));
}

TEST_F(ViolationTest, CallbacksOfAnUploadThatAnswerOtherThanNull) {
  client.callbacks.answer = kResultFail;
  EXPECT_EQ(client.Upload(1, u"", GreyFrame(kSmallMode, 100)), "cmpt");
  simulator.WaitUntilIdle();
  const std::string stills = "ITMKSwitcherStillsCallback::Notify: answered 0x80004005, must be 0";
  EXPECT_THAT(Violations(),
              testing::UnorderedElementsAre(
                  "ITMKSwitcherLockCallback::Locked: answered 0x80004005, must be 0",
                  "ITMKSwitcherMediaPoolCallback: answered 0x80004005, must be 0", stills, stills));
}

TEST_F(ViolationTest, TheReportHasAnEnd) {
  std::int32_t valid = 0;
  for (int i = 0; i < 1000; ++i)
    client.stills->IsValid(9, &valid);
  EXPECT_EQ(Violations().size(), 200u);
}

}  // namespace
}  // namespace mixdecks::simulator
