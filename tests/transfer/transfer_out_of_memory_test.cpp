// No memory for a text or a record, wherever the switcher side needs one: what the user is told,
// and that the next attempt works.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/control/failing_memory.h"
#include "tests/transfer/failing_text.h"
#include "tests/transfer/fake_service.h"
#include "tests/transfer/front_end.h"
#include "transfer/switcher_transfer.h"

namespace mixdecks::testing {
namespace {

using ::testing::ElementsAre;

constexpr std::int32_t kWidth = 720;
constexpr std::int32_t kHeight = 486;
constexpr std::size_t kImageBytes = std::size_t{kWidth} * kHeight * 4;
constexpr char kConnected[] = "connected, reason 0, stills 1, players 2";

/// A switcher side that the test drives itself, so that faults hit the thread they are meant for.
class TransferOutOfMemory : public ::testing::Test {
 protected:
  TransferOutOfMemory() {
    service_.videoMode = FourCharacterCode("ntsc");
    service_.slots.resize(1);
    transfer_ = CreateSwitcherTransfer(nullptr, frontEnd_->Control());
  }
  ~TransferOutOfMemory() override {
    transfer_.reset();
    frontEnd_.reset();
    EXPECT_EQ(TextsHeld(), 0);
    EXPECT_EQ(heapBlocks, 0);
  }

  void Connect() {
    const std::size_t told = Told().size();
    ASSERT_EQ(transfer_->Connect(u"10.0.0.5"), kResultOk);
    frontEnd_->TakeUntil(told + 2);
    EXPECT_EQ(Told()[told], kConnected);
  }
  HResult Export() {
    StillExport still;
    still.name = u"Title";
    still.image = HeapBlock(kImageBytes);
    still.width = kWidth;
    still.height = kHeight;
    std::memset(still.image.Bytes(), 0, kImageBytes);
    return transfer_->Export(std::move(still));
  }
  const std::vector<std::string>& Told() const { return frontEnd_->Results(); }

  FakeService service_;
  std::unique_ptr<FrontEnd> frontEnd_ = std::make_unique<FrontEnd>();
  std::unique_ptr<SwitcherSide> transfer_;
};

TEST_F(TransferOutOfMemory, EndsACreationWithNothing) {
  const int objects = service_.LiveObjects();
  const FailNew fail(1);
  EXPECT_EQ(CreateSwitcherTransfer(nullptr, frontEnd_->Control()), nullptr);
  EXPECT_EQ(service_.LiveObjects(), objects);
}

// What the closing waits by cannot be made: then nothing is begun.
TEST_F(TransferOutOfMemory, ForAnEventMeansNoService) {
  const int discoveries = service_.Count(Call::kCreateDiscovery);
  blocksAsked = 0;
  failingBlock = 1;
  EXPECT_THROW(CreateSwitcherTransfer(nullptr, frontEnd_->Control()), int);
  failingBlock = 0;
  EXPECT_EQ(service_.Count(Call::kCreateDiscovery), discoveries);
}

TEST_F(TransferOutOfMemory, ForAnAddressIsAConnectThatFailed) {
  {
    const FailText fail(1);
    EXPECT_EQ(transfer_->Connect(u"10.0.0.5"), kResultFail);
  }
  frontEnd_->TakeUntil(2);
  EXPECT_THAT(Told(), ElementsAre("Error: An unknown error has occured.",
                                  "not connected, reason 0, stills 0, players 0"));
  EXPECT_EQ(service_.Count(Call::kConnectTo), 0);
  Connect();
}

// The connect needs a record and its place among the others; both can fail.
TEST_F(TransferOutOfMemory, ForAConnectsRecordsIsAConnectThatFailed) {
  int failing = 1;
  for (;; ++failing) {
    const FailNew fail(failing);
    if (Succeeded(transfer_->Connect(u"10.0.0.5"))) break;
    EXPECT_EQ(service_.Count(Call::kConnectTo), 0);
  }
  EXPECT_EQ(failing, 3);
  frontEnd_->TakeUntil(2);
  EXPECT_EQ(Told().front(), kConnected) << "there was no memory to tell the failures either";
}

TEST_F(TransferOutOfMemory, ForAStillsNameIsToldAndTheNextOneWorks) {
  Connect();
  {
    const FailText fail(1);
    EXPECT_EQ(Export(), kResultFail);
  }
  frontEnd_->TakeUntil(4);
  EXPECT_EQ(Told()[2],
            "Error: There is not enough memory available to run ORVA Switcher Media Pool");
  EXPECT_EQ(Told()[3], "not exported");
  EXPECT_EQ(service_.Count(Call::kLock), 0);

  EXPECT_EQ(Export(), kResultOk);
  service_.GrantLock();
  service_.SendStillsEvent(kEventTransferCompleted, 0);
  EXPECT_EQ(frontEnd_->TakeNext(), "exported");
}

TEST_F(TransferOutOfMemory, ForAMessageLeavesTheEndOfTheExport) {
  Connect();
  service_.Fail(Call::kGetVideoMode);
  for (const int text : {1, 2}) {  // caption and message
    const FailText fail(text);
    EXPECT_EQ(Export(), kResultFail);
    EXPECT_EQ(frontEnd_->TakeNext(), "not exported");
  }
}

TEST_F(TransferOutOfMemory, ForAChangedSlotLosesThatChangeAlone) {
  Connect();
  ITMKSwitcherStillsCallback* callback = service_.StillsCallbacks().front();
  {
    const FailText fail(2);  // the first is the service's
    EXPECT_EQ(callback->Notify(kEventNameChanged, nullptr, 0), kResultOk);
  }
  service_.slots[0].name = u"Opener";
  EXPECT_EQ(callback->Notify(kEventNameChanged, nullptr, 0), kResultOk);
  EXPECT_EQ(frontEnd_->TakeNext(), "slot 0 in use: Opener");
}

}  // namespace
}  // namespace mixdecks::testing
