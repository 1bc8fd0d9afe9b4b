// Takes the pictures of the documentation: the dialogs' states, from the built library.
//
//   take_screenshots FOLDER
//
// Fails, having said why, when a dialog did not come into the state that the picture is to show.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "dialog/window_messages.h"
#include "tests/e2e/preferences_key.h"
#include "tests/e2e/session.h"
#include "tests/e2e/wait_for.h"
#include "tools/plugin_host/screen_picture.h"

namespace mixdecks::e2e {
namespace {

using simulator::Action;
using simulator::Point;
using simulator::ScriptStep;

HostDocument LowerThird() {
  HostDocument document = DocumentOf(BusyPicture(64, 36), true);
  document.fileName = "Lower third.psd";
  return document;
}

bool WaitUntilVisible(HWND window) {
  return WaitFor([&] { return IsWindowVisible(window) != FALSE; });
}

void Save(const std::filesystem::path& file, const std::vector<HWND>& windows) {
  EXPECT_TRUE(WaitUntilVisible(windows.front())) << file;
  WritePng(file, TakeSettledPicture(windows));
  std::printf("%s\n", file.filename().string().c_str());
}

void TakeNoCommunication(const std::filesystem::path& folder) {
  simulator::Scenario scenario;
  scenario.addresses = {u"203.0.113.1"};
  scenario.refuseDelay = std::chrono::seconds(3);
  Session session(scenario, LowerThird());
  session.Start([&](DialogDriver& dialog) {
    if (dialog.WaitForDialog()) Save(folder / "dialog-no-communication.png", {dialog.Window()});
  });
}

void TakeBadAddress(const std::filesystem::path& folder) {
  Session session({}, LowerThird());
  session.Start([&](DialogDriver& dialog) {
    if (!dialog.WaitUntilConnected()) return;
    dialog.PasteOver(kAddressEdit, u"192.168.10.");
    Save(folder / "dialog-bad-address.png", {dialog.Window()});
  });
}

/// A media pool as it looks in the middle of a production.
constexpr std::pair<std::uint32_t, const char16_t*> kStills[] = {
    {0, u"Station logo"}, {1, u"Please stand by"}, {2, u"Opening title"}, {4, u"Score"}};

void StoreStills(simulator::SwitcherSimulator& simulator) {
  const std::vector<std::uint8_t> frame = ExpectedFrame(BusyPicture(1920, 1080), false, false);
  for (const auto& [slot, name] : kStills)
    simulator.StoreStill(slot, name, frame);
}

bool WaitUntilListed(DialogDriver& dialog) {
  return dialog.WaitUntilConnected() && dialog.WaitUntil("all slots are listed", [&] {
    const std::vector<std::u16string> slots = dialog.Slots();
    return slots.size() == 20 && std::ranges::all_of(kStills, [&](const auto& still) {
             return slots[still.first].ends_with(still.second);
           });
  });
}

void TakeConnected(const std::filesystem::path& folder) {
  Session session({}, LowerThird());
  StoreStills(session.simulator);
  session.Start([&](DialogDriver& dialog) {
    if (!WaitUntilListed(dialog)) return;
    dialog.ChooseSlot(2);
    Save(folder / "dialog-connected.png", {dialog.Window()});
  });
}

/// Opens the box's list and waits until it stands on the screen, which is later than it is visible.
bool DropList(HWND box) {
  RECT closedBox{};
  GetWindowRect(box, &closedBox);
  RECT list{};
  SendMessageW(box, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&list));
  list.top = closedBox.bottom;
  const ScreenPicture closed = TakeScreenPicture(list);
  SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
  return WaitFor([&] { return !(TakeScreenPicture(list) == closed); });
}

void TakeSlots(const std::filesystem::path& folder) {
  Session session({}, LowerThird());
  StoreStills(session.simulator);
  session.Start([&](DialogDriver& dialog) {
    if (!WaitUntilListed(dialog) || !WaitUntilVisible(dialog.Window())) return;
    const HWND box = dialog.Control(kSlotList);
    // A list that drops before its box has the focus is closed again.
    SendMessageW(dialog.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(box), TRUE);
    TakeSettledPicture({dialog.Window()});
    EXPECT_TRUE(DropList(box));
    Save(folder / "dialog-slots.png", {dialog.Window()});
    SendMessageW(box, CB_SHOWDROPDOWN, FALSE, 0);
  });
}

/// The status at the longest, which then stays for half a second.
void WaitForLastDot(DialogDriver& dialog) {
  dialog.WaitUntil("it exports", [&] { return dialog.Text(kStatusLine) == u"Exporting..."; });
}

void TakeExporting(const std::filesystem::path& folder) {
  Session session({}, LowerThird());
  std::atomic<bool> taken = false;
  session.simulator.SetPointHook(Point::kUploadHalfway,
                                 [&](const auto&) { WaitFor([&] { return taken.load(); }); });
  session.Start([&](DialogDriver& dialog) {
    if (!dialog.WaitUntilConnected()) return;
    dialog.Press(kExportButton);
    WaitForLastDot(dialog);
    Save(folder / "dialog-exporting.png", {dialog.Window()});
    taken = true;
    dialog.WaitUntilClosed();
  });
}

void TakeMessageBox(const std::filesystem::path& folder) {
  simulator::Scenario scenario;
  scenario.script = {ScriptStep{.at = Point::kCreateFrame, .action = Action::kFail}};
  Session session(scenario, LowerThird());
  session.Start([&](DialogDriver& dialog) {
    if (!dialog.WaitUntilConnected()) return;
    dialog.Press(kExportButton);
    if (const std::optional<MessageBoxView> box = dialog.WaitForBox()) {
      WaitForLastDot(dialog);
      Save(folder / "dialog-message-box.png", {dialog.Window(), box->window});
      dialog.Answer(*box);
    }
  });
}

void TakeAboutBox(const std::filesystem::path& folder) {
  Session session({}, LowerThird());
  session.About([&](DialogDriver& dialog) {
    if (const HWND about = dialog.WaitForAboutBox()) {
      SendMessageW(about, WM_NULL, 0, 0);
      Save(folder / "about-box.png", {about});
    }
  });
}

}  // namespace
}  // namespace mixdecks::e2e

int main(int count, char** arguments) {
  using namespace mixdecks::e2e;
  if (count != 2) {
    std::fputs("usage: take_screenshots FOLDER\n", stderr);
    return 2;
  }
  const std::filesystem::path folder = arguments[1];
  for (const auto take : {TakeNoCommunication, TakeBadAddress, TakeConnected, TakeSlots,
                          TakeExporting, TakeMessageBox, TakeAboutBox}) {
    DeletePreferencesKey();
    take(folder);
  }
  return testing::UnitTest::GetInstance()->Failed() ? 1 : 0;
}
