// The entry, the dialog, the switcher side and the document reader together, on a simulated
// switcher: documents of every size, and closing at every point of connecting and exporting.
#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "dialog/dialogs.h"
#include "dialog/window_messages.h"
#include "platform/four_character_code.h"
#include "simulator/service_registration.h"
#include "tools/memory_host/memory_host.h"

namespace mixdecks {
namespace {

using simulator::Point;
using simulator::PointVisit;

constexpr std::size_t kFrameBytes = 720 * 576 * 4;

/// Small frames, so that a test is quick however its program is watched.
simulator::Scenario SmallSwitcher() {
  simulator::Scenario scenario;
  scenario.mode = FourCharacterCode("pall");
  return scenario;
}

/// A document of which every sample is zero.
HostDocument EmptyDocument(std::int32_t width, std::int32_t height) {
  HostDocument document{.width = width, .height = height};
  HostChannel channel;
  channel.bounds = {0, 0, height, width};
  document.composite.assign(3, channel);
  return document;
}

/// Runs the host's start selector with a dialog in memory that other threads may close.
class WholeDialog : public ::testing::Test {
 protected:
  explicit WholeDialog(simulator::Scenario scenario = SmallSwitcher())
      : simulator(std::move(scenario)) {}

  void SetUp() override {
    current = this;
    ModuleDialogState() = {};
    static_cast<MemoryPreferences&>(SystemPreferences()).values.clear();
    OpenDocument(8, 8);
  }
  void TearDown() override {
    simulator.Shutdown();
    EXPECT_TRUE(simulator.Violations().empty());
    EXPECT_TRUE(host->Violations().empty());
    EXPECT_EQ(host->OpenHandles(), 0U);
    current = nullptr;
  }

  void OpenDocument(std::int32_t width, std::int32_t height) {
    host.emplace(EmptyDocument(width, height));
  }
  std::int16_t Start(const HeadlessUser& whenIdle) {
    user = whenIdle;
    return host->Call(
        [](std::int16_t selector, void* record, std::intptr_t* data, std::int16_t* result) {
          RunSelector({nullptr, RunDialog}, selector, record, data, result);
        },
        Selector::kStart);
  }

  /// Any thread: has the dialog close, and waits until it begins to. Nothing once it has ended.
  void CloseFromElsewhere() {
    std::unique_lock lock(mutex);
    if (open == nullptr) return;
    open->Post(kWmClose, 0, 0);
    if (std::this_thread::get_id() == dialogThread) return;
    changed.wait(lock, [this] { return closing; });
  }

  static std::intptr_t RunDialog(void*, ExportGlobals* globals) { return current->Run(globals); }
  std::intptr_t Run(ExportGlobals* globals) {
    ExportDialog exportDialog(ModuleDialogState(), SystemDialogServices());
    HeadlessDialog dialog(kExportDialogTemplate,
                          [&](WindowOperations& window, std::uint32_t message, std::uintptr_t first,
                              std::intptr_t second) {
                            if (message == kWmClose) Note(&dialog, true);
                            return exportDialog.ExportDialogProc(window, message, first, second);
                          });
    Note(&dialog, false);
    const std::intptr_t value = dialog.RunModal(reinterpret_cast<std::intptr_t>(globals), user);
    Note(nullptr, true);
    return value;
  }
  void Note(HeadlessDialog* dialog, bool isClosing) {
    const std::lock_guard lock(mutex);
    open = dialog;
    closing = isClosing;
    changed.notify_all();
  }

  /// Does that once, when the dialog is connected.
  std::int16_t StartAndOnceConnected(const HeadlessUser& act) {
    bool acted = false;
    return Start([&](HeadlessDialog& dialog) {
      if (acted || dialog.Caption() != u"ORVA Switcher Media Pool") return;
      acted = true;
      act(dialog);
    });
  }

  static inline WholeDialog* current = nullptr;

  std::optional<MemoryHost> host;
  simulator::SwitcherSimulator simulator;
  simulator::ScopedServiceRegistration registration{simulator};
  HeadlessUser user;
  const std::thread::id dialogThread = std::this_thread::get_id();

  std::mutex mutex;
  std::condition_variable changed;
  HeadlessDialog* open = nullptr;  ///< while its loop runs
  bool closing = false;
};

// Documents

TEST_F(WholeDialog, ExportsADocumentOfOnePixel) {
  OpenDocument(1, 1);
  StartAndOnceConnected([](HeadlessDialog& dialog) { dialog.Click(kExportButton); });
  const std::vector<std::uint8_t> frame = simulator.Frame(0);
  ASSERT_EQ(frame.size(), kFrameBytes);
  constexpr std::uint8_t kOpaqueBlack[] = {0x3A, 0xC8, 0x00, 0x40};
  for (std::size_t i = 0; i < frame.size(); ++i)
    ASSERT_EQ(frame[i], kOpaqueBlack[i % 4]) << i;
}

/// Its image would have more bytes than a number of the reader holds.
TEST_F(WholeDialog, StaysDisabledOnADocumentThatIsTooLarge) {
  OpenDocument(30000, 20000);
  const std::int16_t result = StartAndOnceConnected([](HeadlessDialog& dialog) {
    dialog.Click(kExportButton);
    EXPECT_FALSE(dialog.Control(kExportButton).enabled);
    EXPECT_FALSE(dialog.Control(kAddressEdit).enabled);
    EXPECT_TRUE(dialog.HasTimer(kExportTimer));
    EXPECT_TRUE(dialog.Click(kCloseButton));
  });
  EXPECT_EQ(result, kHostResultDone);
  EXPECT_EQ(host->Calls(HostCall::kReadPixels), 0);
  EXPECT_FALSE(simulator.Contents().slots[0].has_value());
}

// Players

class OnePlayer : public WholeDialog {
 protected:
  static simulator::Scenario Scenario() {
    simulator::Scenario scenario = SmallSwitcher();
    scenario.players = 1;
    return scenario;
  }
  OnePlayer() : WholeDialog(Scenario()) {}
};

TEST_F(OnePlayer, IsNotGivenAStillThatIsMeantForAnother) {
  ModuleDialogState().afterExportChoice = 4;
  StartAndOnceConnected([](HeadlessDialog& dialog) {
    EXPECT_TRUE(dialog.Control(kMediaPlayer4Radio).checked);
    EXPECT_FALSE(dialog.Control(kMediaPlayer4Radio).enabled);
    dialog.Click(kExportButton);
  });
  EXPECT_TRUE(simulator.Contents().slots[0].has_value());
  EXPECT_EQ(simulator.Contents().players[0], std::nullopt);
}

// Closing

class ClosingAtEach : public WholeDialog, public ::testing::WithParamInterface<Point> {
 protected:
  /// Makes a connected dialog pass the point.
  void BringAbout(HeadlessDialog& dialog) {
    switch (GetParam()) {
      case Point::kNotifySwitcher:
      case Point::kSwitcherNotified:
        simulator.Disconnect();
        return;
      case Point::kRemoveCallback:
        dialog.Click(kCloseButton);
        return;
      default:
        dialog.Click(kMediaPlayer1Radio);
        dialog.Click(kExportButton);
    }
  }
};

/// The thread that passes the point goes on once the dialog has begun to close.
TEST_P(ClosingAtEach, PointEndsAndLetsTheNextOpeningConnect) {
  std::atomic<bool> arrived = false;
  simulator.SetPointHook(GetParam(), [&](const PointVisit&) {
    if (!arrived.exchange(true)) CloseFromElsewhere();
  });
  const std::int16_t result = StartAndOnceConnected([&](HeadlessDialog& dialog) {
    if (!arrived) BringAbout(dialog);
  });
  EXPECT_EQ(result, kHostResultDone);
  simulator.WaitUntilIdle();
  EXPECT_TRUE(arrived) << "the point was passed";
  bool connected = false;
  StartAndOnceConnected([&](HeadlessDialog& dialog) {
    connected = true;
    dialog.Click(kCloseButton);
  });
  EXPECT_TRUE(connected);
}

std::vector<Point> AllPoints() {
  std::vector<Point> points;
  for (const simulator::PointInfo& each : simulator::Points())
    points.push_back(each.point);
  return points;
}

INSTANTIATE_TEST_SUITE_P(Simulated, ClosingAtEach, ::testing::ValuesIn(AllPoints()),
                         [](const auto& tested) {
                           return std::string(simulator::InfoOf(tested.param).name);
                         });

}  // namespace
}  // namespace mixdecks
