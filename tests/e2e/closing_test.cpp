// Closing at every moment, and opening again and again.
// clang-format off
#include <windows.h>
#include <psapi.h>  // needs the one before it
// clang-format on

#include "dialog/window_messages.h"
#include "simulator/points.h"
#include "tests/e2e/plugin_fixture.h"
#include "tests/e2e/wait_for.h"

namespace mixdecks::e2e {
namespace {

using simulator::Action;
using simulator::Point;
using simulator::ScriptStep;

class Closing : public PluginTest {};

/// The name of the point, for a test's title.
std::string PointTitle(const ::testing::TestParamInfo<Point>& info) {
  return std::string(simulator::InfoOf(info.param).name);
}

class ClosingAt : public PluginTest, public ::testing::WithParamInterface<Point> {};

/// The point's thread holds still while the dialog's thread begins to close: it cannot know that
/// it has, so it waits a moment for it, and the dialog closes in any case.
TEST_P(ClosingAt, EndsWithoutAHang) {
  Session session;
  const DWORD pluginThread = GetCurrentThreadId();
  std::atomic<HWND> window = nullptr;
  std::atomic<bool> arrived = false;
  session.simulator.SetPointHook(GetParam(), [&](const simulator::PointVisit&) {
    if (arrived.exchange(true)) return;
    WaitFor([&] { return window != nullptr; });
    PostMessageW(window, WM_CLOSE, 0, 0);
    DWORD_PTR answer = 0;
    if (GetCurrentThreadId() != pluginThread) {
      SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 50, &answer);
    }
  });
  const std::int16_t result = session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitForDialog());
    window = dialog.Window();
    WaitFor([&] { return arrived || dialog.Caption() == u"ORVA Switcher Media Pool"; });
    if (!arrived) {
      dialog.Press(kMediaPlayer1Radio);
      dialog.Press(kExportButton);
    }
    WaitFor([&] { return arrived.load(); }, std::chrono::seconds(2));
    // Some points are passed only by what comes after the close, or by a disconnect.
    if (!arrived) session.simulator.Disconnect();
    WaitFor([&] { return arrived.load(); }, std::chrono::seconds(2));
    dialog.PressClose();
    dialog.WaitUntilClosed();
  });
  EXPECT_EQ(result, kHostResultDone);
  EXPECT_TRUE(arrived) << "the point was passed";
  session.Start([](DialogDriver& dialog) {
    EXPECT_TRUE(dialog.WaitUntilConnected()) << "the next opening connects";
  });
}

std::vector<Point> AllPoints() {
  std::vector<Point> points;
  for (const simulator::PointInfo& each : simulator::Points())
    points.push_back(each.point);
  return points;
}

INSTANTIATE_TEST_SUITE_P(EachPoint, ClosingAt, ::testing::ValuesIn(AllPoints()), PointTitle);

TEST_F(Closing, ReturnsOnceTheBoxOverItIsAnswered) {
  simulator::Scenario scenario;
  scenario.script = {ScriptStep{.at = Point::kCreateFrame, .action = Action::kFail}};
  Session session(scenario);
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.Press(kExportButton);
    const std::optional<MessageBoxView> box = dialog.WaitForBox();
    ASSERT_TRUE(box.has_value());
    dialog.PressClose();
    dialog.WaitUntil("the dialog goes away", [&] { return !IsWindowVisible(dialog.Window()); });
    EXPECT_TRUE(IsWindow(box->window)) << "the box stays";
    dialog.Answer(*box);
    dialog.WaitUntilClosed();
  });
}

TEST_F(Closing, ReturnsOnceTheFirmwareBoxIsAnswered) {
  simulator::Scenario scenario;
  scenario.script = {ScriptStep{.at = Point::kConnectTo,
                                .action = Action::kFail,
                                .times = ScriptStep::kAlways,
                                .reason = kReasonFirmware}};
  Session session(scenario);
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitForDialog());
    const std::optional<MessageBoxView> box = dialog.WaitForBox();
    ASSERT_TRUE(box.has_value());
    dialog.PressClose();
    dialog.WaitUntil("the dialog goes away", [&] { return !IsWindowVisible(dialog.Window()); });
    dialog.Answer(*box);
    dialog.WaitUntilClosed();
  });
}

TEST_F(Closing, HearsEscapeAsAKey) {
  Session session;
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    PostMessageW(dialog.Control(kAddressEdit), WM_KEYDOWN, VK_ESCAPE, 1);
    dialog.WaitUntilClosed();
  });
}

/// What would grow if an opening left something behind.
struct Holdings {
  DWORD handles = 0;
  DWORD gdiObjects = 0;
  DWORD userObjects = 0;
  SIZE_T privateBytes = 0;
};

Holdings CurrentHoldings() {
  Holdings holdings;
  GetProcessHandleCount(GetCurrentProcess(), &holdings.handles);
  holdings.gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  holdings.userObjects = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
  holdings.privateBytes = memory.PagefileUsage;
  return holdings;
}

TEST_F(Closing, LeavesNothingBehindInTwoHundredOpenings) {
  Session session;
  const auto openAndExport = [&](int times) {
    for (int i = 0; i < times; ++i) {
      session.Start([&](DialogDriver& dialog) {
        ASSERT_TRUE(dialog.WaitUntilConnected());
        if (i % 4 == 0) dialog.Press(kExportButton);
        if (i % 4 != 0) dialog.PressClose();
        dialog.WaitUntilClosed();
      });
    }
  };
  openAndExport(40);
  const Holdings before = CurrentHoldings();
  openAndExport(200);
  const Holdings after = CurrentHoldings();
  EXPECT_LE(after.handles, before.handles + 10);
  EXPECT_LE(after.gdiObjects, before.gdiObjects + 5);
  EXPECT_LE(after.userObjects, before.userObjects + 5);
  constexpr SIZE_T kNoise = 8u << 20;
  EXPECT_LE(after.privateBytes, before.privateBytes + kNoise);
  RecordProperty("handles", static_cast<int>(after.handles - before.handles));
  RecordProperty("bytes", static_cast<int>(after.privateBytes - before.privateBytes));
}

}  // namespace
}  // namespace mixdecks::e2e
