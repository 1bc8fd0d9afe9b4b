// The contract of the window operations, kept by every adapter: the same calls, the same answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <thread>

#include "dialog/control_access.h"
#include "dialog/dialog_templates.h"
#include "dialog/window_messages.h"
#include "tests/dialog/driven_window.h"

namespace mixdecks {
namespace {

using testing::DrivenWindow;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::WindowAdapter;
using testing::WindowPlace;

constexpr int kNoControl = 4711;

class EveryWindow : public ::testing::TestWithParam<WindowAdapter> {
 protected:
  struct Seen {
    std::uint32_t message;
    std::uintptr_t first;
    std::intptr_t second;
  };

  void SetUp() override {
    if (!GetParam().canOpen()) GTEST_SKIP() << "no screen to open a window on";
    window = GetParam().open([this](WindowOperations&, std::uint32_t message, std::uintptr_t first,
                                    std::intptr_t second) {
      seen.push_back({message, first, second});
      return onMessage ? onMessage(message, first, second) : 0;
    });
    seen.clear();
  }

  /// How often a control reported that, since it was asked for last.
  std::ptrdiff_t TakeReports(int control, std::uint32_t notification) {
    const auto reports = std::ranges::count_if(seen, [&](const Seen& each) {
      return each.message == kWmCommand && each.first == CommandParameter(control, notification);
    });
    seen.clear();
    return reports;
  }
  /// First parameters of the messages of that kind, in order.
  std::vector<std::uintptr_t> FirstsOf(std::uint32_t message) const {
    std::vector<std::uintptr_t> firsts;
    for (const Seen& each : seen) {
      if (each.message == message) firsts.push_back(each.first);
    }
    return firsts;
  }
  bool HandleUntilSeen(std::uint32_t message, std::uintptr_t first) {
    return window->HandleMessagesUntil(
        [&] { return std::ranges::count(FirstsOf(message), first) > 0; });
  }
  WindowOperations& operations() { return window->Operations(); }

  std::vector<Seen> seen;
  std::function<std::intptr_t(std::uint32_t, std::uintptr_t, std::intptr_t)> onMessage;
  std::unique_ptr<DrivenWindow> window;
};

INSTANTIATE_TEST_SUITE_P(All, EveryWindow, ::testing::ValuesIn(testing::WindowAdapters()),
                         [](const auto& tested) { return tested.param.name; });

// Dialog and controls

TEST_P(EveryWindow, OpensAsTheTemplateSays) {
  EXPECT_EQ(window->Caption(), u"Orva Switcher Media Pool");
  for (const ControlTemplate& control : kExportDialogTemplate.controls) {
    if (control.id == kLabel) continue;
    if (control.picture == 0) {
      EXPECT_EQ(window->Text(control.id), control.text) << control.id;
    }
    EXPECT_TRUE(window->IsEnabled(control.id)) << control.id;
    EXPECT_FALSE(IsChecked(operations(), control.id)) << control.id;
  }
  EXPECT_EQ(SelectedIndex(operations(), kSlotList), -1);
}

TEST_P(EveryWindow, IgnoresControlsThatItDoesNotHave) {
  EXPECT_EQ(operations().SendToControl(kNoControl, kCbGetCurSel, 0, 0), 0);
  SetControlText(operations(), kNoControl, u"text");
  operations().EnableControl(kNoControl, false);
  operations().RedrawControl(kNoControl);
  operations().InstallCharacterMask(kNoControl, "a", true);
  EXPECT_THAT(FirstsOf(kWmCommand), IsEmpty());
}

TEST_P(EveryWindow, ChangesItsCaption) {
  for (const char16_t* caption : {u"No communication", u"", u"\u00E9\xD83D\xDE00"}) {
    operations().SetCaption(caption);
    EXPECT_EQ(window->Caption(), caption);
  }
}

TEST_P(EveryWindow, DisablesControlsThatStillAnswer) {
  for (const int control : {kAddressEdit, kSlotList, kExportButton, kMediaPlayer1Radio}) {
    operations().EnableControl(control, false);
    EXPECT_FALSE(window->IsEnabled(control)) << control;
  }
  EXPECT_TRUE(window->IsEnabled(kNameEdit));
  SetControlText(operations(), kAddressEdit, u"1.2.3.4");
  EXPECT_EQ(window->Text(kAddressEdit), u"1.2.3.4");
  EXPECT_EQ(TakeReports(kAddressEdit, kEnChange), 1);
  SetChecked(operations(), kMediaPlayer1Radio, true);
  EXPECT_TRUE(IsChecked(operations(), kMediaPlayer1Radio));
  operations().EnableControl(kAddressEdit, true);
  EXPECT_TRUE(window->IsEnabled(kAddressEdit));
}

TEST_P(EveryWindow, DrawsAControlAgain) {
  window->WasRedrawn(kAddressEdit);
  operations().RedrawControl(kAddressEdit);
  EXPECT_TRUE(window->WasRedrawn(kAddressEdit));
  EXPECT_FALSE(window->WasRedrawn(kAddressEdit));
}

TEST_P(EveryWindow, DrawsTextInTheColourThatIsSet) {
  onMessage = [&](std::uint32_t message, std::uintptr_t first,
                  std::intptr_t second) -> std::intptr_t {
    if (message != kWmCtlColorEdit || !operations().IsControl(second, kAddressEdit)) return 0;
    operations().SetTextColour(first, 0x123456);
    return operations().DeviceContextBrush();
  };
  EXPECT_EQ(window->TextColour(kAddressEdit), 0x123456U);
  EXPECT_EQ(window->TextColour(kNameEdit), std::nullopt);
}

TEST_P(EveryWindow, GoesWhereItIsPlaced) {
  const DialogPlacement before = operations().Placement();
  EXPECT_EQ(before.parentLeft, 0) << "the desktop is its parent";
  EXPECT_EQ(before.parentTop, 0);
  EXPECT_EQ(before.parentRight, before.screenWidth);
  EXPECT_EQ(before.parentBottom, before.screenHeight);
  EXPECT_GT(before.captionButtonWidth, 0);
  EXPECT_FALSE(before.hasSystemMenu);
  EXPECT_EQ(before.width, window->Place().width);
  EXPECT_EQ(before.height, window->Place().height);
  for (const WindowPlace place : {WindowPlace{40, 30, 500, 400}, WindowPlace{-70, -60, 510, 410}}) {
    operations().Place(place.left, place.top, place.width, place.height);
    EXPECT_EQ(window->Place(), place) << place.left;
    EXPECT_EQ(operations().Placement().width, place.width);
    EXPECT_EQ(operations().Placement().height, place.height);
  }
}

// Edits

TEST_P(EveryWindow, ReportsATextThatIsSetInAnEditBeforeItReturns) {
  std::u16string textAtTheReport;
  bool isTheEdit = false;
  onMessage = [&](std::uint32_t message, std::uintptr_t first, std::intptr_t second) {
    if (message == kWmCommand && first == CommandParameter(kAddressEdit, kEnChange)) {
      textAtTheReport = window->Text(kAddressEdit);
      isTheEdit = operations().IsControl(second, kAddressEdit) &&
                  !operations().IsControl(second, kNameEdit);
    }
    return 0;
  };
  SetControlText(operations(), kAddressEdit, u"1.2.3.4");
  EXPECT_EQ(textAtTheReport, u"1.2.3.4");
  EXPECT_TRUE(isTheEdit);
  EXPECT_EQ(TakeReports(kAddressEdit, kEnChange), 1);
  SetControlText(operations(), kAddressEdit, u"1.2.3.4");
  EXPECT_EQ(TakeReports(kAddressEdit, kEnChange), 1) << "of the same text as well";
  SetControlText(operations(), kAddressEdit, nullptr);
  EXPECT_EQ(window->Text(kAddressEdit), u"");
  EXPECT_EQ(TakeReports(kAddressEdit, kEnChange), 1);
  SetControlText(operations(), kStatusLine, u"Exporting.");
  EXPECT_EQ(window->Text(kStatusLine), u"Exporting.");
  EXPECT_EQ(TakeReports(kStatusLine, kEnChange), 0) << "a label changes silently";
}

TEST_P(EveryWindow, CutsATextThatIsReadToItsLimit) {
  SetControlText(operations(), kNameEdit, u"abc\xD83D\xDE00");
  struct {
    std::size_t limit;
    std::u16string text;
  } const cases[] = {{0, u""},
                     {1, u""},
                     {2, u"a"},
                     {4, u"abc"},
                     {5, u"abc\xD83D"},
                     {6, u"abc\xD83D\xDE00"},
                     {7, u"abc\xD83D\xDE00"}};
  for (const auto& each : cases) {
    std::array<char16_t, 8> buffer;
    buffer.fill(u'#');
    const std::intptr_t length = operations().SendToControl(
        kNameEdit, kWmGetText, each.limit, reinterpret_cast<std::intptr_t>(buffer.data()));
    EXPECT_EQ(length, static_cast<std::intptr_t>(each.text.size())) << each.limit;
    EXPECT_EQ(std::u16string(buffer.data(), each.text.size()), each.text) << each.limit;
    if (each.limit > 0) {
      EXPECT_EQ(buffer[each.text.size()], u'\0') << each.limit;
    }
    EXPECT_EQ(buffer[each.limit], u'#') << "nothing behind the limit is touched";
  }
}

TEST_P(EveryWindow, LimitsWhatAUserEntersAndNothingElse) {
  operations().SendToControl(kAddressEdit, kEmLimitText, 5, 0);
  window->Type(kAddressEdit, u"1234567");
  EXPECT_EQ(window->Text(kAddressEdit), u"12345");
  EXPECT_GE(TakeReports(kAddressEdit, kEnChange), 5);
  window->Type(kAddressEdit, u"\b\b9");
  EXPECT_EQ(window->Text(kAddressEdit), u"1239");
  window->PasteOver(kAddressEdit, u"pasted text");
  EXPECT_EQ(window->Text(kAddressEdit), u"paste");
  SetControlText(operations(), kAddressEdit, u"longer than that");
  EXPECT_EQ(window->Text(kAddressEdit), u"longer than that");
  window->Type(kAddressEdit, u"x");
  EXPECT_EQ(window->Text(kAddressEdit), u"longer than that");
  operations().SendToControl(kAddressEdit, kEmLimitText, 0, 0);
  window->Type(kAddressEdit, u"x");
  EXPECT_EQ(window->Text(kAddressEdit), u"longer than thatx") << "0 takes the limit away";
}

TEST_P(EveryWindow, HasRoomForLongTexts) {
  const std::u16string text(2000, u'n');
  window->PasteOver(kNameEdit, text);
  EXPECT_EQ(window->Text(kNameEdit), text);
}

TEST_P(EveryWindow, ReportsEveryChangeByTheUser) {
  window->Type(kNameEdit, u"ab");
  EXPECT_EQ(TakeReports(kNameEdit, kEnChange), 2);
  window->Type(kNameEdit, u"\b\b");
  EXPECT_EQ(TakeReports(kNameEdit, kEnChange), 2);
  window->Type(kNameEdit, u"\b");
  EXPECT_EQ(TakeReports(kNameEdit, kEnChange), 0) << "there is nothing left";
  window->PasteOver(kNameEdit, u"text");
  EXPECT_EQ(window->Text(kNameEdit), u"text");
  EXPECT_EQ(TakeReports(kNameEdit, kEnChange), 1);
}

TEST_P(EveryWindow, TakesNoControlCharactersForText) {
  window->Type(kNameEdit, u"a\t\x1F\x7F\u00E9\xD83D\xDE00");
  EXPECT_EQ(window->Text(kNameEdit), u"a\u00E9\xD83D\xDE00");
}

TEST_P(EveryWindow, MasksKeysAndNotPasting) {
  operations().InstallCharacterMask(kAddressEdit, "12\b", true);
  window->Type(kAddressEdit, u"1a2 3\b\u0132x");
  EXPECT_EQ(window->Text(kAddressEdit), u"1\u0132") << "the low byte decides";
  EXPECT_EQ(TakeReports(kAddressEdit, kEnChange), 4);
  window->PasteOver(kAddressEdit, u"ab");
  EXPECT_EQ(window->Text(kAddressEdit), u"ab");
  operations().InstallCharacterMask(kAddressEdit, "1\b", false);
  window->Type(kAddressEdit, u"1\bxy2");
  EXPECT_EQ(window->Text(kAddressEdit), u"abxy2") << "all but these";
  operations().InstallCharacterMask(kAddressEdit, "z", true);
  window->Type(kAddressEdit, u"xz");
  EXPECT_EQ(window->Text(kAddressEdit), u"abxy2z") << "replaced, not joined";
  window->Type(kNameEdit, u"any");
  EXPECT_EQ(window->Text(kNameEdit), u"any") << "another edit has no mask";
}

// Buttons

TEST_P(EveryWindow, ChecksOneRadioOfItsGroup) {
  SetChecked(operations(), kDoNothingRadio, true);
  SetChecked(operations(), kPremultiplyCheck, true);
  bool checkedAtTheReport = false;
  onMessage = [&](std::uint32_t message, std::uintptr_t first, std::intptr_t) {
    if (message == kWmCommand && first == CommandParameter(kMediaPlayer4Radio, kBnClicked)) {
      checkedAtTheReport =
          IsChecked(operations(), kMediaPlayer4Radio) && !IsChecked(operations(), kDoNothingRadio);
    }
    return 0;
  };
  window->Click(kMediaPlayer4Radio);
  EXPECT_TRUE(checkedAtTheReport);
  for (const int radio : kAfterExportRadios) {
    EXPECT_EQ(IsChecked(operations(), radio), radio == kMediaPlayer4Radio) << radio;
  }
  EXPECT_TRUE(IsChecked(operations(), kPremultiplyCheck));
}

TEST_P(EveryWindow, ChecksWithoutAUserWhateverItIsTold) {
  SetChecked(operations(), kDoNothingRadio, true);
  SetChecked(operations(), kMediaPlayer1Radio, true);
  EXPECT_TRUE(IsChecked(operations(), kDoNothingRadio)) << "groups are the user's";
  SetChecked(operations(), kDoNothingRadio, false);
  EXPECT_FALSE(IsChecked(operations(), kDoNothingRadio));
  EXPECT_THAT(FirstsOf(kWmCommand), IsEmpty()) << "and silently";
}

TEST_P(EveryWindow, TurnsACheckBoxBeforeItReportsTheClick) {
  std::vector<bool> checks;
  onMessage = [&](std::uint32_t message, std::uintptr_t first, std::intptr_t) {
    if (message == kWmCommand && first == CommandParameter(kPremultiplyCheck, kBnClicked)) {
      checks.push_back(IsChecked(operations(), kPremultiplyCheck));
    }
    return 0;
  };
  window->Click(kPremultiplyCheck);
  window->Click(kPremultiplyCheck);
  EXPECT_THAT(checks, ElementsAre(true, false));
  window->Click(kExportButton);
  EXPECT_EQ(TakeReports(kExportButton, kBnClicked), 1);
  EXPECT_FALSE(IsChecked(operations(), kExportButton)) << "a plain button has no check";
}

// List

TEST_P(EveryWindow, KeepsItsList) {
  struct {
    std::uint32_t message;
    std::int32_t index;
    const char16_t* text;
    std::intptr_t answer;
    std::int32_t selection;
  } const steps[] = {
      {kCbAddString, 0, u"a", 0, -1},
      {kCbAddString, 0, u"c", 1, -1},
      {kCbInsertString, 1, u"b", 1, -1},
      {kCbInsertString, -1, u"e", 3, -1},
      {kCbInsertString, 4, u"f", 4, -1},
      {kCbInsertString, 6, u"g", -1, -1},
      {kCbSetCurSel, 2, nullptr, 2, 2},
      {kCbDeleteString, 3, nullptr, 4, 2},
      {kCbDeleteString, 0, nullptr, 3, 1},  // the selection moves with its item
      {kCbInsertString, 0, u"A", 0, 2},
      {kCbInsertString, 2, u"B", 2, 3},
      {kCbInsertString, 4, u"D", 4, 3},
      {kCbDeleteString, 3, nullptr, 5, -1},  // and goes with it
      {kCbDeleteString, 5, nullptr, -1, -1},
      {kCbSetCurSel, 4, nullptr, 4, 4},
      {kCbSetCurSel, 0, nullptr, 0, 0},
      {kCbSetCurSel, -1, nullptr, -1, -1},
      {kCbSetCurSel, 5, nullptr, -1, -1},
      {kCbGetCount, 0, nullptr, 5, -1},
  };
  for (const auto& step : steps) {
    const std::string name = "step " + std::to_string(&step - steps);
    const auto first = static_cast<std::uintptr_t>(std::intptr_t{step.index});
    EXPECT_EQ(operations().SendToControl(kSlotList, step.message, first,
                                         reinterpret_cast<std::intptr_t>(step.text)),
              step.answer)
        << name;
    EXPECT_EQ(SelectedIndex(operations(), kSlotList), step.selection) << name;
  }
  EXPECT_THAT(window->Items(kSlotList), ElementsAre(u"A", u"b", u"B", u"D", u"f"));
  EXPECT_THAT(FirstsOf(kWmCommand), IsEmpty()) << "only a user's choice is reported";
  operations().SendToControl(kSlotList, kCbResetContent, 0, 0);
  EXPECT_THAT(window->Items(kSlotList), IsEmpty());
}

TEST_P(EveryWindow, KeepsDataForTheItemsOfItsListAlone) {
  constexpr std::intptr_t kError = -1;
  const auto setData = [&](std::uintptr_t index) {
    return operations().SendToControl(kSlotList, kCbSetItemData, index, 7);
  };
  EXPECT_EQ(setData(0), kError);
  operations().SendToControl(kSlotList, kCbAddString, 0, reinterpret_cast<std::intptr_t>(u"a"));
  EXPECT_NE(setData(0), kError);
  EXPECT_EQ(setData(1), kError) << "one past the last";
}

TEST_P(EveryWindow, ReportsAChoiceOnceItIsMade) {
  for (const char16_t* item : {u"a", u"b", u"c"}) {
    operations().SendToControl(kSlotList, kCbAddString, 0, reinterpret_cast<std::intptr_t>(item));
  }
  std::int32_t selectionAtTheReport = -1;
  onMessage = [&](std::uint32_t message, std::uintptr_t first, std::intptr_t) {
    if (message == kWmCommand && first == CommandParameter(kSlotList, kCbnSelChange)) {
      selectionAtTheReport = SelectedIndex(operations(), kSlotList);
    }
    return 0;
  };
  window->Choose(kSlotList, 2);
  EXPECT_EQ(selectionAtTheReport, 2);
}

// Messages

TEST_P(EveryWindow, HandlesWhatIsPostedInOrderAndLater) {
  operations().Post(kWmApp, 1, 10);
  operations().Post(kWmApp, 2, -20);
  EXPECT_THAT(FirstsOf(kWmApp), IsEmpty()) << "posting does not call";
  EXPECT_TRUE(HandleUntilSeen(kWmApp, 2));
  EXPECT_THAT(FirstsOf(kWmApp), ElementsAre(1, 2));
  const auto last = std::ranges::find(seen, kWmApp, &Seen::message) + 1;
  EXPECT_EQ(last->second, -20);
}

TEST_P(EveryWindow, HandlesWhatAnotherThreadPosts) {
  std::thread other([&] { operations().Post(kWmApp, 3, 0); });
  EXPECT_TRUE(HandleUntilSeen(kWmApp, 3));
  other.join();
}

TEST_P(EveryWindow, SendsTimersUntilTheyAreStopped) {
  const auto ticksOf = [&](std::uintptr_t timer) {
    return std::ranges::count(FirstsOf(kWmTimer), timer);
  };
  operations().StartTimer(1, 1);
  operations().StartTimer(2, 1);
  EXPECT_TRUE(window->HandleMessagesUntil([&] { return ticksOf(1) >= 3 && ticksOf(2) >= 3; }));
  operations().StopTimer(1);
  operations().StopTimer(1);
  seen.clear();
  EXPECT_TRUE(window->HandleMessagesUntil([&] { return ticksOf(2) >= 5; }));
  EXPECT_EQ(ticksOf(1), 0);
  operations().StopTimer(2);
}

TEST_P(EveryWindow, StartsATimerAnew) {
  constexpr std::uint32_t kHour = 60 * 60 * 1000;
  operations().StartTimer(1, kHour);
  operations().StartTimer(1, 1);
  EXPECT_TRUE(HandleUntilSeen(kWmTimer, 1));
  operations().StopTimer(1);
}

// The modal loop

TEST_P(EveryWindow, EndsWithTheLastValueItIsGiven) {
  std::vector<std::uintptr_t> handled;
  const std::intptr_t value = GetParam().runModal(
      [&](WindowOperations& dialog, std::uint32_t message, std::uintptr_t first, std::intptr_t) {
        if (message == kWmInitDialog) {
          for (const std::uintptr_t each : {1U, 2U, 3U})
            dialog.Post(kWmApp, each, 0);
        }
        if (message == kWmApp) handled.push_back(first);
        if (message == kWmApp && first == 2) {
          dialog.End(5);
          dialog.End(6);
          SetControlText(dialog, kStatusLine, u"still here");
        }
        return std::intptr_t{0};
      });
  EXPECT_EQ(value, 6);
  EXPECT_THAT(handled, ElementsAre(1, 2));
}

TEST_P(EveryWindow, MayEndWhileItIsInitialised) {
  EXPECT_EQ(GetParam().runModal([](WindowOperations& dialog, std::uint32_t message, std::uintptr_t,
                                   std::intptr_t) -> std::intptr_t {
    if (message == kWmInitDialog) dialog.End(7);
    return message == kWmInitDialog;
  }),
            7);
}

}  // namespace
}  // namespace mixdecks
