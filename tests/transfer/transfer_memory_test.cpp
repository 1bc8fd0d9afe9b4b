// Memory that runs out at any step, how much a still needs at its peak, and images that are larger
// than 32-bit sizes can tell.
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
#include "transfer/scale_image.h"
#include "transfer/still_preparation.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

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

TEST(LargeImages, AreScaledWhole) {
  if (kSanitized) GTEST_SKIP() << "2.4 GB of pixels are too much for a sanitizer's bookkeeping";
  constexpr std::int32_t kLargeWidth = 30000;
  constexpr std::int32_t kLargeHeight = 20000;
  // Pages that nobody writes cost nothing: only the last rows get a colour.
  const HeapBlock image(ImageBytes(kLargeWidth, kLargeHeight));
  if (!image) GTEST_SKIP() << "this machine does not give 2.4 GB";
  const std::size_t lastRows = ImageBytes(kLargeWidth, 200);
  std::memset(image.Data() + ImageBytes(kLargeWidth, kLargeHeight) - lastRows, 200, lastRows);
  const HeapBlock frame(kFrameBytes);
  StartImageScaler();
  ASSERT_TRUE(
      ScaleImage(image.Data(), kLargeWidth, kLargeHeight, false, frame.Data(), kWidth, kHeight));
  StopImageScaler();
  // It lands at 150, 0 with 1620 x 1080: the last 200 rows are the last 10.8 of them.
  const auto blueAt = [&](std::size_t x, std::size_t y) {
    return int{frame.Data()[(y * kWidth + x) * 4]};
  };
  EXPECT_NEAR(blueAt(960, 1078), 200, 2);
  EXPECT_NEAR(blueAt(152, 1074), 200, 2);
  EXPECT_NEAR(blueAt(960, 1060), 0, 2);
  EXPECT_NEAR(blueAt(149, 1078), 0, 0);
  EXPECT_NEAR(blueAt(1770, 1078), 0, 0);
}

}  // namespace
}  // namespace mixdecks
