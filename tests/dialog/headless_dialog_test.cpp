// What the dialog in memory has beside the contract of all windows: its user and its loop.
#include "dialog/headless_dialog.h"

#include <gtest/gtest.h>

#include <thread>

#include "dialog/window_messages.h"

namespace mixdecks {
namespace {

using std::chrono::seconds;

/// Remembers every message and answers 0, but for the ends that a test asks for.
class Headless : public ::testing::Test {
 protected:
  struct Seen {
    std::uint32_t message;
    std::uintptr_t first;
    std::intptr_t second;
    bool operator==(const Seen&) const = default;
  };

  std::intptr_t Record(std::uint32_t message, std::uintptr_t first, std::intptr_t second) {
    seen.push_back({message, first, second});
    if (message == kWmClose) dialog.End(5);
    return 0;
  }

  std::vector<Seen> seen;
  HeadlessDialog dialog{kExportDialogTemplate,
                        [this](WindowOperations&, std::uint32_t message, std::uintptr_t first,
                               std::intptr_t second) { return Record(message, first, second); }};
};

TEST_F(Headless, RefusesTheUserADisabledControl) {
  for (const int control : {kAddressEdit, kSlotList, kExportButton}) {
    dialog.EnableControl(control, false);
  }
  EXPECT_FALSE(dialog.Click(kExportButton));
  EXPECT_FALSE(dialog.Type(kAddressEdit, u"1"));
  EXPECT_FALSE(dialog.PasteOver(kAddressEdit, u"1"));
  EXPECT_FALSE(dialog.Choose(kSlotList, 0));
  EXPECT_TRUE(seen.empty());
}

TEST_F(Headless, WaitsForMessagesOnlySoLong) {
  EXPECT_FALSE(dialog.HandleMessagesUntil([] { return false; }, std::chrono::milliseconds(1)));
  dialog.Post(kWmClose, 0, 0);
  EXPECT_FALSE(dialog.HandleMessagesUntil([] { return false; }, seconds(100))) << "it has ended";
  EXPECT_EQ(dialog.EndValue(), 5);
}

TEST_F(Headless, ForgetsATimerThatIsStopped) {
  dialog.StartTimer(1, 1000);
  EXPECT_TRUE(dialog.HasTimer(1));
  EXPECT_FALSE(dialog.HasTimer(2));
  dialog.StopTimer(1);
  EXPECT_FALSE(dialog.HasTimer(1));
}

TEST_F(Headless, RunsUntilItEnds) {
  std::thread other;
  bool started = false;
  const std::intptr_t value = dialog.RunModal(77, [&](HeadlessDialog&) {
    if (started) return;
    started = true;
    other = std::thread([&] { dialog.Post(kWmClose, 0, 0); });
  });
  other.join();
  EXPECT_EQ(value, 5);
  EXPECT_EQ(seen[0], (Seen{kWmInitDialog, 0, 77}));
  EXPECT_EQ(seen[1], (Seen{kWmClose, 0, 0}));
}

TEST_F(Headless, ClosesWithoutAUser) {
  HeadlessDialog alone(kExportDialogTemplate,
                       [](WindowOperations& window, std::uint32_t message, std::uintptr_t first,
                          std::intptr_t) -> std::intptr_t {
                         if (message == kWmCommand && first == kCloseButton) window.End(0);
                         return 1;
                       });
  EXPECT_EQ(alone.RunModal(0, {}), 0);
}

}  // namespace
}  // namespace mixdecks
