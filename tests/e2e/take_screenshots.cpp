// Takes the pictures of the documentation: the dialogs' states, from the built library.
//
//   take_screenshots FOLDER
#include <windows.h>

#include <cstdio>

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

void Save(const std::filesystem::path& file, const std::vector<HWND>& windows) {
  WaitFor([&] { return IsWindowVisible(windows.front()) != FALSE; });
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

void TakeConnected(const std::filesystem::path& folder) {
  Session session({}, LowerThird());
  const std::vector<std::uint8_t> frame = ExpectedFrame(BusyPicture(1920, 1080), false, false);
  session.simulator.StoreStill(2, u"Opening title", frame);
  session.Start([&](DialogDriver& dialog) {
    if (!dialog.WaitUntilConnected()) return;
    dialog.WaitUntil("all slots are listed", [&] {
      const std::vector<std::u16string> slots = dialog.Slots();
      return slots.size() == 20 && slots[2] == u"3. Opening title";
    });
    dialog.ChooseSlot(2);
    Save(folder / "dialog-connected.png", {dialog.Window()});
  });
}

void TakeExporting(const std::filesystem::path& folder) {
  Session session({}, LowerThird());
  std::atomic<bool> taken = false;
  session.simulator.SetPointHook(Point::kUploadHalfway,
                                 [&](const auto&) { WaitFor([&] { return taken.load(); }); });
  session.Start([&](DialogDriver& dialog) {
    if (!dialog.WaitUntilConnected()) return;
    dialog.Press(kExportButton);
    dialog.WaitUntil("it exports", [&] { return dialog.Text(kStatusLine) == u"Exporting..."; });
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
  for (const auto take : {TakeNoCommunication, TakeBadAddress, TakeConnected, TakeExporting,
                          TakeMessageBox, TakeAboutBox}) {
    DeletePreferencesKey();
    take(folder);
  }
  return 0;
}
