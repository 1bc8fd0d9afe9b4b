// The order in which the dialog asks its window, its preferences and its switcher side for things.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dialog/export_dialog.h"
#include "dialog/text_conversion.h"
#include "dialog/window_messages.h"
#include "tests/platform/box_answerer.h"
#include "transfer/image_scaler.h"

namespace mixdecks {
namespace {

using ::testing::ElementsAreArray;

using Steps = std::vector<std::string>;

/// Everybody writes here; the dialog's factories are plain functions.
Steps steps;

Steps TakeSteps() {
  return std::exchange(steps, {});
}

std::string Name(const char16_t* text) {
  return "'" + NarrowText(text) + "'";
}

bool ScalerIsReady() {
  constexpr std::array<std::uint8_t, 4> kSource{};
  std::array<std::uint8_t, 16> destination{};
  return DrawScaledImage(kSource.data(), 1, 1, destination.data(), 2, 2, {0, 0, 2, 2});
}

/// What the fixture's dialog keeps; its switcher side comes from a plain function.
const ExportDialogState* watchedState = nullptr;

/// What there is of an open dialog at this step.
std::string Beside() {
  std::string all;
  const auto add = [&](bool exists, const char* what) {
    if (exists) all += (all.empty() ? " beside " : ", ") + std::string(what);
  };
  add(ScalerIsReady(), "scaler");
  add(watchedState->exportControl != nullptr, "control");
  add(watchedState->uiHandler != nullptr, "handler");
  add(watchedState->exportListener != nullptr, "listener");
  add(static_cast<bool>(watchedState->switcherAddress), "address");
  return all;
}

/// A window that writes down what it is asked and reports a text that is set in an edit.
class WrittenWindow final : public WindowOperations {
 public:
  explicit WrittenWindow(ExportDialog& dialog) : dialog_(dialog) {}

  std::intptr_t SendToControl(int control, std::uint32_t message, std::uintptr_t first,
                              std::intptr_t second) override {
    Write(control, Described(message, first, second));
    if (message == kWmSetText && (control == kAddressEdit || control == kNameEdit)) {
      texts_[control] = reinterpret_cast<const char16_t*>(second);
      dialog_.ExportDialogProc(*this, kWmCommand, CommandParameter(control, kEnChange), 0);
    }
    if (message == kWmGetText) {
      const std::u16string& text = texts_[control];
      text.copy(reinterpret_cast<char16_t*>(second), text.size());
      return static_cast<std::intptr_t>(text.size());
    }
    return message == kCbGetCurSel ? 5 : 0;
  }
  void EnableControl(int control, bool enabled) override {
    Write(control, enabled ? "enabled" : "disabled");
  }
  void RedrawControl(int control) override { Write(control, "redrawn"); }
  bool IsControl(std::intptr_t, int) override { return false; }
  void InstallCharacterMask(int control, std::string_view characters, bool allow) override {
    Write(control, (allow ? "allows " : "forbids ") + std::to_string(characters.size()));
  }
  void SetCaption(const char16_t* caption) override { steps.push_back("caption " + Name(caption)); }
  void StartTimer(std::uintptr_t timer, std::uint32_t milliseconds) override {
    steps.push_back("timer " + std::to_string(timer) + " every " + std::to_string(milliseconds));
  }
  void StopTimer(std::uintptr_t timer) override {
    steps.push_back("timer " + std::to_string(timer) + " stopped");
  }
  void Post(std::uint32_t message, std::uintptr_t, std::intptr_t) override {
    // Wake-ups come from the worker, whenever it likes.
    if (message != kWmApp) steps.push_back("message " + std::to_string(message) + " posted");
  }
  void End(std::intptr_t result) override {
    steps.push_back("ended with " + std::to_string(result) + Beside());
  }
  void SetTextColour(std::uintptr_t, std::uint32_t) override {}
  std::intptr_t DeviceContextBrush() override { return 0; }
  DialogPlacement Placement() override { return {}; }
  void Place(std::int32_t, std::int32_t, std::int32_t, std::int32_t) override {
    steps.push_back("placed");
  }

 private:
  static void Write(int control, const std::string& what) {
    steps.push_back(std::to_string(control) + " " + what);
  }
  static std::string Described(std::uint32_t message, std::uintptr_t first, std::intptr_t second) {
    const auto number = std::to_string(static_cast<std::intptr_t>(first));
    const auto* text = reinterpret_cast<const char16_t*>(second);
    switch (message) {
      case kWmSetText:
        return "text " + Name(text);
      case kWmGetText:
        return "read up to " + number;
      case kEmLimitText:
        return "limited to " + number;
      case kBmSetCheck:
        return "checked " + number;
      case kCbResetContent:
        return "emptied";
      case kCbAddString:
        return "add " + Name(text);
      case kCbDeleteString:
        return "delete " + number;
      case kCbInsertString:
        return "insert " + number + " " + Name(text);
      case kCbSetItemData:
        return "data " + number + " is " + std::to_string(second);
      case kCbSetCurSel:
        return "select " + number;
      case kCbGetCurSel:
        return "selection asked";
      default:
        return "message " + std::to_string(message);
    }
  }

  ExportDialog& dialog_;
  std::map<int, std::u16string> texts_;
};

class WrittenPreferences final : public PreferencesStore {
 public:
  bool Open() override {
    steps.push_back("preferences opened" + Beside());
    return true;
  }
  void Close() override { steps.emplace_back("preferences closed"); }
  std::optional<std::size_t> Read(const char16_t* name, std::span<std::byte>) override {
    steps.push_back(NarrowText(name) + " read");
    return std::nullopt;
  }
  void Write(const char16_t* name, PreferenceType type, std::span<const std::byte> value) override {
    steps.push_back(NarrowText(name) + " written: type " +
                    std::to_string(static_cast<std::uint32_t>(type)) + ", " +
                    std::to_string(value.size()) + " bytes");
  }
};

class WrittenSwitcher final : public SwitcherSide {
 public:
  WrittenSwitcher() { Write("created"); }
  ~WrittenSwitcher() override { Write("destroyed"); }
  // The worker comes here, at a time of its own.
  HResult Connect(const char16_t*) override { return kResultOk; }
  HResult Export(StillExport) override { return kResultOk; }

 private:
  static void Write(const std::string& what) {
    steps.push_back("switcher side " + what + Beside());
  }
};

std::unique_ptr<SwitcherSide> CreateWrittenSwitcher(ExportGlobals*, ExportControl&) {
  return std::make_unique<WrittenSwitcher>();
}

HResult ReadWrittenDocument(ExportRecord*, HeapBlock&, bool&) {
  steps.emplace_back("document read");
  return kResultFail;
}

const Steps kChoices = {"1010", "1015", "1020", "1012", "1013", "1014", "1021", "1022"};

Steps Each(const Steps& controls, const std::string& what) {
  Steps each;
  for (const std::string& control : controls)
    each.push_back(control + " " + what);
  return each;
}

Steps Joined(const std::vector<Steps>& parts) {
  Steps all;
  for (const Steps& part : parts)
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

Steps Disconnected() {
  return Joined({Each(kChoices, "disabled"),
                 {"1007 enabled", "1017 text ''", "1018 disabled", "caption 'No communication'"}});
}

Steps Connected(int slot) {
  return Joined({{"1015 select " + std::to_string(slot), "1007 enabled"},
                 Each(kChoices, "enabled"),
                 {"1018 enabled", "caption 'ORVA Switcher Media Pool'", "1017 text ''"}});
}

class DialogSteps : public ::testing::Test {
 protected:
  void SetUp() override { watchedState = &state; }
  void Open() {
    record.fileName[0] = 3;
    record.fileName[1] = record.fileName[2] = record.fileName[3] = 'a';
    dialog.ExportDialogProc(window, kWmInitDialog, 0, reinterpret_cast<std::intptr_t>(&globals));
  }
  void Close() { dialog.ExportDialogProc(window, kWmClose, 0, 0); }
  void TearDown() override {
    if (state.exportControl != nullptr) Close();
    steps.clear();
    watchedState = nullptr;
  }
  UICommandHandler& handler() { return *state.uiHandler; }

  WrittenPreferences preferences;
  ExportDialogServices services{{CreateWrittenSwitcher, ReadWrittenDocument}, &preferences};
  ExportDialogState state;
  ExportDialog dialog{state, services};
  WrittenWindow window{dialog};
  ExportRecord record{};
  std::int16_t result = 0;
  ExportGlobals globals{&result, &record};
};

TEST_F(DialogSteps, OfOpening) {
  state.premultiplyAlpha = false;
  state.afterExportChoice = 2;
  Open();
  EXPECT_THAT(
      TakeSteps(),
      ElementsAreArray(Joined({{"switcher side created beside scaler",
                                "preferences opened beside scaler, control, handler, listener",
                                "Address read", "StillIndex read", "preferences closed",
                                "1007 text '192.168.10.240'", "1007 read up to 63"},
                               Disconnected(),
                               {"1007 limited to 15", "1007 allows 12", "1020 checked 0",
                                "1014 checked 1", "1010 text 'aaa'", "placed"},
                               Disconnected()})));
}

TEST_F(DialogSteps, OfClosing) {
  Open();
  TakeSteps();
  Close();
  EXPECT_THAT(
      TakeSteps(),
      ElementsAreArray({"preferences opened beside scaler, control, handler, listener, address",
                        "Address written: type 1, 28 bytes", "StillIndex written: type 4, 4 bytes",
                        "preferences closed",
                        "switcher side destroyed beside scaler, handler, listener, address",
                        "ended with 0"}))
      << "everything is gone at the end";
}

TEST_F(DialogSteps, OfOpeningWithoutTheService) {
  services.control.createSwitcherSide =
      [](ExportGlobals*, ExportControl&) -> std::unique_ptr<SwitcherSide> { throw 1; };
  const auto boxes = testing::AnswerBoxes([&] { Open(); });
  EXPECT_EQ(boxes.size(), testing::CanShowBoxes() ? 1U : 0U);
  EXPECT_THAT(TakeSteps(), ElementsAreArray({"preferences opened beside scaler",
                                             "StillIndex written: type 4, 4 bytes",
                                             "preferences closed", "ended with 0"}))
      << "nothing is loaded, nothing is filled in";
}

TEST_F(DialogSteps, OfStartingAnExport) {
  Open();
  TakeSteps();
  dialog.ExportDialogProc(window, kWmCommand, CommandParameter(kExportButton, kBnClicked), 0);
  EXPECT_THAT(TakeSteps(), ElementsAreArray(Joined({{"1015 selection asked", "1007 disabled"},
                                                    Each(kChoices, "disabled"),
                                                    {"1018 disabled", "1010 read up to 255",
                                                     "timer 1 every 500", "document read"}})));
}

TEST_F(DialogSteps, OfAddressesThatChange) {
  Open();
  TakeSteps();
  window.SendToControl(kAddressEdit, kWmSetText, 0, reinterpret_cast<std::intptr_t>(u"1.2"));
  EXPECT_THAT(TakeSteps(),
              ElementsAreArray(Joined(
                  {{"1007 text '1.2'", "1007 read up to 63", "1007 redrawn"}, Disconnected()})));
  state.connectInProgress = false;
  window.SendToControl(kAddressEdit, kWmSetText, 0, reinterpret_cast<std::intptr_t>(u"1.2.3.4"));
  EXPECT_THAT(
      TakeSteps(),
      ElementsAreArray(
          Joined({{"1007 text '1.2.3.4'", "1007 read up to 63", "1007 redrawn"}, Disconnected()})));
}

TEST_F(DialogSteps, OfAConnectResult) {
  Open();
  TakeSteps();
  handler().OnConnectResult(true, 0, 2, 3);
  EXPECT_THAT(TakeSteps(),
              ElementsAreArray(Joined({{"1015 emptied", "1015 add '1. Empty'", "1015 data 1 is 0",
                                        "1015 add '2. Empty'", "1015 data 2 is 1"},
                                       Connected(0),
                                       {"1022 disabled"}})));
  handler().OnConnectResult(false, 0, 0, 0);
  EXPECT_THAT(TakeSteps(), ElementsAreArray(Joined({Disconnected(), Disconnected()})))
      << "once for the result, once for the next attempt";
}

TEST_F(DialogSteps, OfAStill) {
  Open();
  TakeSteps();
  state.stillIndex = -1;
  handler().OnStillInfo(7, true, u"Bars");
  EXPECT_THAT(TakeSteps(), ElementsAreArray({"1015 delete 7", "1015 insert 7 '8. Bars'",
                                             "1015 data 8 is 7", "1015 select -1"}));
}

TEST_F(DialogSteps, OfTheEndOfAnExport) {
  Open();
  TakeSteps();
  handler().OnExportFinished(true);
  EXPECT_THAT(TakeSteps(), ElementsAreArray({"timer 1 stopped", "message 16 posted"}));
  state.stillIndex = 3;
  handler().OnExportFinished(false);
  EXPECT_THAT(TakeSteps(), ElementsAreArray(Joined({{"timer 1 stopped"}, Connected(3)})));
}

TEST_F(DialogSteps, OfADisconnect) {
  Open();
  TakeSteps();
  handler().OnDisconnected();
  EXPECT_THAT(TakeSteps(), ElementsAreArray(Joined({Disconnected(), {"timer 1 stopped"}})))
      << "the connect under way is waited for";
}

}  // namespace
}  // namespace mixdecks
