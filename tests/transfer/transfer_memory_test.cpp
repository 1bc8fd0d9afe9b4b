// Memory that runs out at any step, and how much a still needs at its peak.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <iostream>
#include <string>

#include "tests/transfer/fake_service.h"
#include "tests/transfer/front_end.h"
#include "tests/transfer/tracked_heap.h"
#include "transfer/image_scaler.h"
#include "transfer/image_size.h"
#include "transfer/still_preparation.h"

namespace mixdecks {
namespace {

constexpr std::int32_t kWidth = 1920;
constexpr std::int32_t kHeight = 1080;
constexpr std::size_t kFrameBytes = std::size_t{kWidth} * kHeight * 4;
/// Rows and weights of the resampler, and the start records of threads.
constexpr std::size_t kSmallChange = std::size_t{4} << 20;

StillImage ClearImage(std::int32_t width, std::int32_t height, bool hasAlpha) {
  StillImage image{HeapBlock(ImageBytes(width, height)), width, height, hasAlpha};
  std::memset(image.pixels.Data(), 0, ImageBytes(width, height));
  return image;
}

class TransferMemory : public testing::Test {
 protected:
  TransferMemory() {
    connection_.switcher = ServicePointer<ITMKSwitcher>::Adopt(CreateFakeSwitcher(service_));
    QueryService(*connection_.switcher.Get(), kSwitcherMediaPoolId, connection_.mediaPool);
    StartImageScaler();
  }
  ~TransferMemory() override { StopImageScaler(); }

  std::size_t PeakOfStill(std::int32_t width, std::int32_t height, bool hasAlpha) {
    const std::size_t before = HeapBytesHeld();
    RestartHeap();
    StillImage image = ClearImage(width, height, hasAlpha);
    ServicePointer<ITMKSwitcherFrame> frame;
    EXPECT_EQ(PrepareFrame(connection_, std::move(image), true, frame), TransferError::kNone);
    const std::size_t peak = HeapBytesAtPeak() - before;
    std::cout << width << " x " << height << (hasAlpha ? " with" : " without") << " alpha: image "
              << ImageBytes(width, height) << ", frame " << kFrameBytes << ", peak " << peak
              << " bytes\n";
    return peak;
  }

  FakeService service_;
  SwitcherConnection connection_;
};

TEST_F(TransferMemory, RunningOutIsAnErrorAtEveryStep) {
  for (const bool hasAlpha : {false, true}) {
    const std::size_t before = HeapBytesHeld();
    TransferError error = TransferError::kNoMemory;
    int failAt = 0;
    while (error != TransferError::kNone) {
      RestartHeap();
      StillImage image = ClearImage(300, 200, hasAlpha);
      RestartHeap(++failAt);
      ServicePointer<ITMKSwitcherFrame> frame;
      error = PrepareFrame(connection_, std::move(image), true, frame);
      EXPECT_EQ(HeapBytesHeld(), before) << "request " << failAt;
      if (failAt == 1) {
        EXPECT_EQ(error, TransferError::kNoMemory) << "the scaled image";
      }
      if (error == TransferError::kNone) {
        EXPECT_EQ(HeapRequests(), failAt - 1);
      }
      ASSERT_LT(failAt, 20);
    }
    EXPECT_GT(failAt, hasAlpha ? 3 : 2);
  }
  RestartHeap();
}

TEST_F(TransferMemory, RunningOutWhileConvertingIsTold) {
  StillImage image = ClearImage(kWidth, kHeight, true);
  RestartHeap(1);
  ServicePointer<ITMKSwitcherFrame> frame;
  EXPECT_EQ(PrepareFrame(connection_, std::move(image), true, frame), TransferError::kNoMemory);
  RestartHeap();
}

TEST_F(TransferMemory, PeaksAtImageScaledImageAndFrame) {
  const std::size_t image = ImageBytes(4000, 3000);
  EXPECT_LE(PeakOfStill(4000, 3000, false), image + kFrameBytes + kSmallChange);
  EXPECT_LE(PeakOfStill(4000, 3000, true), image + 2 * kFrameBytes + kSmallChange);
  EXPECT_LE(PeakOfStill(kWidth, kHeight, true), 2 * kFrameBytes);
}

TEST(TransferWithoutMemory, TellsAThreadThatCannotBeStarted) {
  FakeService service;
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  RestartHeap(1);
  frontEnd.Control().Connect(u"10.0.0.5");
  frontEnd.TakeUntil(6);
  RestartHeap();
  EXPECT_EQ(frontEnd.Results()[4], "Error: An unknown error has occured.");
  EXPECT_EQ(frontEnd.Results()[5], "not connected, reason 0, stills 0, players 0");
  EXPECT_TRUE(service.StillsCallbacks().empty());
  frontEnd.Connect(3);
  EXPECT_EQ(frontEnd.Results()[6], "connected, reason 0, stills 3, players 2");
}

TEST(TransferWithoutMemory, TellsTheUserAndGoesOn) {
  FakeService service;
  StartImageScaler();
  {
    FrontEnd frontEnd;
    frontEnd.Connect(3);
    frontEnd.Open({100, 50, false, std::vector<std::uint8_t>(100 * 50 * 4)});
    RestartHeap(2);  // the first request is the document's
    frontEnd.Export();
    frontEnd.TakeUntil(6);
    RestartHeap();
    EXPECT_EQ(frontEnd.Results()[4],
              "Error: There is not enough memory available to run ORVA Switcher Media Pool");
    EXPECT_EQ(frontEnd.Results()[5], "not exported");
    frontEnd.Export();
    service.WaitFor(Call::kLock);
    service.GrantLock();
    service.SendStillsEvent(kEventTransferCompleted, 1);
    EXPECT_EQ(frontEnd.TakeNext(), "exported");
  }
  StopImageScaler();
  EXPECT_EQ(HeapBytesHeld(), 0U);
}

}  // namespace
}  // namespace mixdecks
