// The dialog in memory: its controls, its queue, its timers and its loop.
#include "dialog/headless_dialog.h"

#include <gtest/gtest.h>

#include <thread>

#include "dialog/control_access.h"
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

TEST_F(Headless, StartsAsTheTemplateSays) {
  EXPECT_EQ(dialog.Caption(), u"Orva Switcher Media Pool");
  EXPECT_EQ(dialog.Control(kExportButton).text, u"Export");
  EXPECT_TRUE(dialog.Control(kExportButton).enabled);
  EXPECT_EQ(SelectedIndex(dialog, kSlotList), -1);
}

TEST_F(Headless, ReportsATextThatIsSet) {
  SetControlText(dialog, kAddressEdit, u"1.2.3.4");
  SetControlText(dialog, kStatusLine, u"Exporting.");
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_EQ(seen[0], (Seen{kWmCommand, CommandParameter(kAddressEdit, kEnChange), kAddressEdit}));
}

TEST_F(Headless, CutsTextThatIsRead) {
  SetControlText(dialog, kNameEdit, u"abcdef");
  std::array<char16_t, 8> buffer;
  EXPECT_EQ(ReadControlText(dialog, kNameEdit, buffer, 7), 6U);
  EXPECT_EQ(ReadControlText(dialog, kNameEdit, buffer, 4), 3U);
  EXPECT_EQ(std::u16string(buffer.data()), u"abc");
  EXPECT_EQ(ReadControlText(dialog, 4711, buffer, 4), 0U) << "no such control";
}

TEST_F(Headless, LimitsAndMasksWhatIsTyped) {
  dialog.SendToControl(kAddressEdit, kEmLimitText, 5, 0);
  dialog.InstallCharacterMask(kAddressEdit, ".0123456789\b", true);
  dialog.Type(kAddressEdit, u"1a.2b.34\b5");
  EXPECT_EQ(dialog.Control(kAddressEdit).text, u"1.2.5");
  dialog.PasteOver(kAddressEdit, u"pasted text");
  EXPECT_EQ(dialog.Control(kAddressEdit).text, u"paste");
}

TEST_F(Headless, ChecksOneRadioOfAGroup) {
  SetChecked(dialog, kDoNothingRadio, true);
  SetChecked(dialog, kPremultiplyCheck, true);
  dialog.Click(kMediaPlayer4Radio);
  for (const int radio : kAfterExportRadios) {
    EXPECT_EQ(IsChecked(dialog, radio), radio == kMediaPlayer4Radio) << radio;
  }
  EXPECT_TRUE(IsChecked(dialog, kPremultiplyCheck));
  dialog.Click(kPremultiplyCheck);
  EXPECT_FALSE(IsChecked(dialog, kPremultiplyCheck));
}

TEST_F(Headless, KeepsAListLikeTheSystems) {
  const auto send = [&](std::uint32_t message, std::intptr_t index, const char16_t* text) {
    return dialog.SendToControl(kSlotList, message, static_cast<std::uintptr_t>(index),
                                reinterpret_cast<std::intptr_t>(text));
  };
  EXPECT_EQ(send(kCbAddString, 0, u"a"), 0);
  EXPECT_EQ(send(kCbAddString, 0, u"b"), 1);
  EXPECT_EQ(send(kCbAddString, 0, u"c"), 2);
  EXPECT_EQ(send(kCbSetItemData, 3, nullptr), -1) << "one past the last";
  SelectIndex(dialog, kSlotList, 1);
  EXPECT_EQ(send(kCbDeleteString, 0, nullptr), 2);
  EXPECT_EQ(SelectedIndex(dialog, kSlotList), 0) << "moves with its item";
  EXPECT_EQ(send(kCbInsertString, 0, u"A"), 0);
  EXPECT_EQ(SelectedIndex(dialog, kSlotList), 1);
  EXPECT_EQ(send(kCbDeleteString, 1, nullptr), 2);
  EXPECT_EQ(SelectedIndex(dialog, kSlotList), -1) << "goes with its item";
  EXPECT_EQ(send(kCbInsertString, 9, u"x"), -1);
  EXPECT_EQ(send(kCbDeleteString, 9, nullptr), -1);
  SelectIndex(dialog, kSlotList, 9);
  EXPECT_EQ(SelectedIndex(dialog, kSlotList), -1);
  EXPECT_EQ(send(kCbGetCount, 0, nullptr), 2);
  EXPECT_EQ(send(kCbResetContent, 0, nullptr), 0);
  EXPECT_EQ(send(kCbGetCount, 0, nullptr), 0);
}

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

TEST_F(Headless, HandlesPostedMessagesInOrder) {
  dialog.Post(kWmApp, 1, 0);
  dialog.Post(kWmApp, 2, 0);
  EXPECT_TRUE(seen.empty()) << "posting does not call";
  EXPECT_TRUE(dialog.HandleMessagesUntil([&] { return seen.size() == 2; }, seconds(10)));
  EXPECT_EQ(seen[0].first, 1U);
  EXPECT_EQ(seen[1].first, 2U);
  EXPECT_FALSE(dialog.HandleMessagesUntil([] { return false; }, std::chrono::milliseconds(1)));
}

TEST_F(Headless, SendsTimersUntilTheyAreStopped) {
  dialog.StartTimer(1, 1);
  EXPECT_TRUE(dialog.HandleMessagesUntil([&] { return seen.size() >= 2; }, seconds(10)));
  EXPECT_EQ(seen[0], (Seen{kWmTimer, 1, 0}));
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
