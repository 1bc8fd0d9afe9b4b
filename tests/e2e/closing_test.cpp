// Closing at every moment, and opening again and again.
#include "dialog/window_messages.h"
#include "simulator/points.h"
#include "tests/e2e/holdings.h"
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

/// Makes a connected dialog pass a point.
void BringAbout(Point point, const DialogDriver& dialog, Session& session) {
  switch (point) {
    case Point::kNotifySwitcher:
    case Point::kSwitcherNotified:
      session.simulator.Disconnect();
      return;
    case Point::kRemoveCallback:
      dialog.PressClose();
      return;
    default:
      dialog.Press(kMediaPlayer1Radio);
      dialog.Press(kExportButton);
  }
}

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
    PostMessageW(window, WM_COMMAND, CommandParameter(kCloseButton, kBnClicked), 0);
    DWORD_PTR answer = 0;
    if (GetCurrentThreadId() != pluginThread) {
      SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 50, &answer);
    }
  });
  const std::int16_t result = session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitForDialog());
    window = dialog.Window();
    WaitFor([&] { return arrived || dialog.Caption() == u"ORVA Switcher Media Pool"; });
    if (!arrived) BringAbout(GetParam(), dialog, session);
    dialog.WaitUntilClosed();
  });
  EXPECT_EQ(result, kHostResultDone);
  session.simulator.WaitUntilIdle();
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

TEST_F(Closing, HearsEscapeAsAKeyAndAsACharacter) {
  Session session;
  const auto closeWith = [&](int control, UINT message, WPARAM first) {
    session.Start([&](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitUntilConnected());
      const HWND window = control == 0 ? dialog.Window() : dialog.Control(control);
      PostMessageW(window, message, first, 1);
      dialog.WaitUntilClosed();
    });
  };
  closeWith(kAddressEdit, WM_KEYDOWN, VK_ESCAPE);
  closeWith(0, WM_CHAR, VK_ESCAPE);
  closeWith(0, WM_CLOSE, 0);
}

TEST_F(Closing, StaysAtOtherCharacters) {
  Session session;
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    for (const WPARAM key : {WPARAM{'a'}, WPARAM{VK_RETURN}, WPARAM{VK_SPACE}})
      SendMessageW(dialog.Window(), WM_CHAR, key, 1);
    EXPECT_EQ(dialog.Caption(), u"ORVA Switcher Media Pool") << "still there";
  });
}

constexpr int kOpenings = 200;

/// A dialog that does nothing but go away again.
INT_PTR CALLBACK CloseAtOnce(HWND dialog, UINT message, WPARAM, LPARAM) {
  if (message == WM_INITDIALOG) PostMessageW(dialog, WM_CLOSE, 0, 0);
  if (message == WM_CLOSE) EndDialog(dialog, 0);
  return message == WM_INITDIALOG || message == WM_CLOSE;
}

template <class Opening>
Holdings GrowthOver(int openings, const Opening& open) {
  const Holdings before = CurrentHoldings();
  for (int i = 0; i < openings; ++i)
    open(i);
  return CurrentHoldings() - before;
}

/// Measured against what the system itself leaves behind of such a dialog: Wine forgets the
/// picture that a control loads from the resources.
TEST_F(Closing, LeavesNothingBehindInTwoHundredOpenings) {
  Session session;
  const auto openEmpty = [&](int) {
    DialogBoxParamW(GetModuleHandleW(L"Mixdecks.8bp"), MAKEINTRESOURCEW(kExportDialog), nullptr,
                    CloseAtOnce, 0);
  };
  const auto openAndClose = [&](int i) {
    session.Start([&](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitUntilConnected());
      if (i % 10 == 0) {
        dialog.Press(kExportButton);
      } else {
        dialog.PressClose();
      }
      dialog.WaitUntilClosed();
    });
  };
  GrowthOver(20, openAndClose);
  const Holdings own = GrowthOver(kOpenings, openAndClose);
  const Holdings systems = GrowthOver(kOpenings, openEmpty);
  SCOPED_TRACE(::testing::Message() << "plug-in: " << own << "; empty dialog: " << systems);
  const Holdings growth = own - systems;
  // Less than one of a kind in ten openings.
  EXPECT_LT(growth.handles, kOpenings / 10);
  EXPECT_LT(growth.gdiObjects, kOpenings / 10);
  EXPECT_LT(growth.windows, kOpenings / 10);
  constexpr std::int64_t kNoise = 1 << 20;
  EXPECT_LT(growth.bytes, kNoise);
}

}  // namespace
}  // namespace mixdecks::e2e
