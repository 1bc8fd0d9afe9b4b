// The command queue at work: order, hand-over, exports, creation and release.

#include "control/export_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "tests/control/open_control.h"

namespace mixdecks::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ExportControls : public OpenControl {};

TEST_F(ExportControls, DeliverResultsInTheOrderOfPosting) {
  bench_.control->PostConnectResult(true, 0x636D7074, 20, 4);
  bench_.control->PostStillInfo(3, true, u"Lower third");
  bench_.control->PostStillInfo(4, false, u"");
  bench_.control->PostExportFinished(true);
  bench_.control->PostExportFinished(false);
  bench_.control->PostDisconnected();
  bench_.control->PostConnectResult(false, 0, 0, -1);
  Pump(7);
  EXPECT_THAT(bench_.journal.Lines(),
              ElementsAre("connected yes reason 1668116596 stills 20 players 4",
                          "still 3 in use yes Lower third", "still 4 in use no ",
                          "export finished yes", "export finished no", "disconnected",
                          "connected no reason 0 stills 0 players -1"));
}

TEST_F(ExportControls, DeliverOneResultAtATime) {
  for (int i = 0; i < 3; ++i)
    bench_.control->PostDisconnected();
  int calls = 0;
  bench_.handler.onCall = [&] { EXPECT_EQ(wakes_.Posted(), ++calls); };
  Pump(3);
  EXPECT_EQ(calls, 3);
}

TEST_F(ExportControls, CopyTextsWhenPosted) {
  char16_t caption[] = u"Error";
  char16_t message[] = u"It broke.";
  bench_.control->PostMessageBox(caption, message);
  caption[0] = message[0] = u'#';
  Pump(1);
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("box", "box Error: It broke."));
}

TEST_F(ExportControls, PassMissingTextsOn) {
  bench_.control->PostStillInfo(0, true, nullptr);
  bench_.control->PostMessageBox(nullptr, nullptr);
  Pump(2);
  EXPECT_THAT(bench_.journal.Lines(),
              ElementsAre("still 0 in use yes (null)", "box", "box (null): (null)"));
}

TEST_F(ExportControls, KeepAResultUntilThereIsAHandler) {
  bench_.control->PostDisconnected();
  bench_.control->PostExportFinished(true);
  wakes_.Take();
  bench_.control->RunPendingUICommand(nullptr);
  EXPECT_EQ(wakes_.Posted(), 1);
  bench_.RunOne();
  Pump(1);
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("disconnected", "export finished yes"));
}

// A signal that nobody waited for would end the next hand-over before its handler ran.
TEST_F(ExportControls, AreNotConfusedByAWakeUpWithoutAResult) {
  bench_.RunOne();
  bench_.RunOne();
  bench_.control->PostDisconnected();
  bench_.control->PostExportFinished(true);
  wakes_.Take();
  bench_.handler.onCall = [&] { EXPECT_EQ(wakes_.Posted(), 1); };
  bench_.RunOne();
  bench_.handler.onCall = nullptr;
  Pump(1);
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("disconnected", "export finished yes"));
}

TEST_F(ExportControls, GoOnWhenAHandlerThrows) {
  bench_.control->PostDisconnected();
  bench_.handler.onCall = [] { throw std::runtime_error("no memory for a box"); };
  wakes_.Take();
  EXPECT_THROW(bench_.RunOne(), std::runtime_error);
  bench_.handler.onCall = nullptr;
  bench_.control->PostExportFinished(true);
  Pump(1);
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("disconnected", "export finished yes"));
}

TEST_F(ExportControls, ConnectOneAfterTheOther) {
  bench_.onConnect = [](ExportControl& control) { control.PostExportFinished(true); };
  char16_t address[] = u"10.0.0.1";
  // Both are pushed while the worker waits for the handler.
  bench_.handler.onCall = [&] {
    bench_.handler.onCall = nullptr;
    bench_.control->Connect(address);
    address[7] = u'2';
    bench_.control->Connect(address);
  };
  bench_.control->PostDisconnected();
  Pump(3);
  EXPECT_THAT(bench_.journal.Lines(),
              ElementsAre("disconnected", "connect 10.0.0.1", "connect returns", "connect 10.0.0.2",
                          "connect returns", "export finished yes", "export finished yes"));
}

TEST_F(ExportControls, PushFromInsideAHandler) {
  bench_.control->PostDisconnected();
  bench_.onConnect = [](ExportControl& control) { control.PostConnectResult(true, 0, 1, 1); };
  bench_.handler.onCall = [&] {
    bench_.handler.onCall = nullptr;
    bench_.control->Connect(u"10.0.0.1");
  };
  Pump(2);
  EXPECT_THAT(bench_.journal.Lines(),
              ElementsAre("disconnected", "connect 10.0.0.1", "connect returns",
                          "connected yes reason 0 stills 1 players 1"));
}

class Exports : public ExportControls {
 protected:
  Exports() {
    bench_.record.imageWidth = 2;
    bench_.record.imageHeight = -3;
    bench_.record.imageRect = {1, 2, 3, 4};
    bench_.onRead = [this](HeapBlock& image, bool& hasAlpha) {
      readOn_ = std::this_thread::get_id();
      EXPECT_FALSE(hasAlpha);
      image = HeapBlock(kImageBytes);
      std::memset(image.Bytes(), 0x5A, kImageBytes);
      hasAlpha = true;
      return kResultOk;
    };
  }

  static constexpr std::size_t kImageBytes = 24;
  std::thread::id readOn_;
};

TEST_F(Exports, ReachTheSwitcherSideWhole) {
  bench_.onExport = [&](const StillExport& still) {
    EXPECT_EQ(still.slot, 7U);
    EXPECT_EQ(still.width, 2);
    EXPECT_EQ(still.height, -3);
    EXPECT_TRUE(still.hasAlpha);
    EXPECT_TRUE(still.premultiply);
    EXPECT_EQ(still.mediaPlayer, 3);
    ASSERT_TRUE(still.image);
    EXPECT_EQ(still.image.Data()[kImageBytes - 1], 0x5A);
    EXPECT_EQ(bench_.record.imageRect.right, 4) << "cleared before its time";
    EXPECT_NE(std::this_thread::get_id(), readOn_);
    bench_.control->PostExportFinished(true);
  };
  bench_.control->Export(u"Still", 7, true, 3);
  EXPECT_EQ(readOn_, std::this_thread::get_id());
  Pump(1);
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("export Still", "export finished yes"));
}

TEST_F(Exports, ClearTheHostsRectangle) {
  bench_.onExport = [&](const StillExport&) { bench_.control->PostExportFinished(false); };
  bench_.handler.onCall = [&] {
    const HostRect16& rectangle = bench_.record.imageRect;
    EXPECT_THAT((std::array{rectangle.top, rectangle.left, rectangle.bottom, rectangle.right}),
                ElementsAre(0, 0, 0, 0));
  };
  bench_.control->Export(u"Still", 0, false, -1);
  Pump(1);
}

TEST_F(Exports, PushNothingWhenReadingFails) {
  bench_.onRead = [](HeapBlock& image, bool&) {
    image = HeapBlock(kImageBytes);
    return kResultFail;
  };
  bench_.control->Export(u"Still", 0, false, -1);
  bench_.control->PostDisconnected();
  Pump(1);
  EXPECT_THAT(bench_.journal.Lines(), ElementsAre("disconnected"));
  EXPECT_EQ(bench_.record.imageRect.right, 4);
}

TEST_F(Exports, PushNothingWithoutAHostRecord) {
  bench_.control->SetHostRecord(nullptr);
  bench_.control->Export(u"Still", 0, false, -1);
  EXPECT_EQ(readOn_, std::thread::id());
}

TEST_F(ExportControls, EndTheSwitcherSideOnTheThreadThatMadeIt) {
  EXPECT_EQ(bench_.Close(), 0);
  EXPECT_EQ(bench_.sideCreatedOn, std::this_thread::get_id());
  EXPECT_EQ(bench_.sideDestroyedOn, std::this_thread::get_id());
}

TEST_F(ExportControls, TakeWhatTheSwitcherSidePostsToTheEnd) {
  bench_.onRead = [](HeapBlock& image, bool&) {
    image = HeapBlock(64);
    return kResultOk;
  };
  bench_.onDestroySide = [](ExportControl& control) {
    for (std::uint32_t slot = 0; slot < 100; ++slot)
      control.PostStillInfo(slot, true, u"late");
    control.PostMessageBox(u"late", u"later");
  };
  bench_.control->Export(u"Still", 0, false, -1);
  EXPECT_EQ(bench_.Close(), 0);
  for (const std::string& line : bench_.journal.Lines())
    EXPECT_EQ(line, "export Still");
}

TEST(ExportControlCreation, PassesTheMissingServiceThrough) {
  ExportControlBench bench;
  bench.onCreate = [](ExportControl&) { throw 1; };
  try {
    bench.Create();
    ADD_FAILURE() << "nothing was thrown";
  } catch (int meaning) {
    EXPECT_EQ(meaning, 1);
  }
  EXPECT_EQ(bench.control, nullptr);
}

TEST(ExportControlCreation, NeedsASwitcherSide) {
  ExportControlParts parts;
  parts.createSwitcherSide = [](ExportGlobals*, ExportControl&) {
    return std::unique_ptr<SwitcherSide>();
  };
  EXPECT_EQ(ExportControl::Create(nullptr, parts), nullptr);
}

TEST(ExportControlCreation, CanBeUndoneAtOnce) {
  ExportControlBench bench;
  bench.Create();
  ASSERT_NE(bench.control, nullptr);
  EXPECT_EQ(bench.control->Release(), 0);
  EXPECT_EQ(bench.sides, 0);
  EXPECT_THAT(bench.journal.Lines(), IsEmpty());
}

}  // namespace
}  // namespace mixdecks::testing
