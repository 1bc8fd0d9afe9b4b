#include "tools/export/dialog_pilot_win.h"

#include <algorithm>
#include <utility>

#include "dialog/window_messages.h"
#include "tools/plugin_host/dialog_windows.h"

namespace mixdecks {
namespace {

/// How often the pilot looks: other processes' windows tell nobody that they changed.
constexpr DWORD kLookMilliseconds = 10;

constexpr char16_t kConnectedCaption[] = u"ORVA Switcher Media Pool";
constexpr char16_t kDisconnectedCaption[] = u"No communication";
constexpr char16_t kServiceMissingCaption[] = u"Corrupt Installation Detected";

}  // namespace

DialogPilot::DialogPilot(std::optional<ExportOrders> orders, OperatorPatience patience,
                         std::function<void(HWND dialog)> beforeExport)
    : orders_(std::move(orders)),
      patience_(std::move(patience)),
      beforeExport_(std::move(beforeExport)),
      thread_([this] { orders_ ? Fly() : Watch(); }) {}

DialogPilot::~DialogPilot() {
  Land();
}

ExportOutcome DialogPilot::Land() {
  landed_ = true;
  if (thread_.joinable()) thread_.join();
  return outcome_;
}

void DialogPilot::Watch() {
  while (!landed_ && !(patience_.interrupted && patience_.interrupted()))
    Sleep(kLookMilliseconds);
  if (landed_) return;
  Finish(ExportEnd::kInterrupted);
  CloseEverything();
}

void DialogPilot::Fly() {
  ConnectAndExport();
  outcome_.ended = Clock::now();
  CloseEverything();
}

void DialogPilot::ConnectAndExport() {
  if (!WaitFor([this] { return FindReadyDialog(); })) return;
  if (ControlText(dialog_, kAddressEdit) != orders_->address) {
    PasteOver(dialog_, kAddressEdit, orders_->address);
  }
  if (!WaitFor([this] { return ShowsConnected(); })) return;
  outcome_.connecting = Clock::now() - begun_;
  outcome_.step = ExportStep::kListing;
  if (!CheckSwitcher()) return;
  FillIn();
  if (beforeExport_) beforeExport_(dialog_);
  outcome_.step = ExportStep::kExporting;
  outcome_.clicked = Clock::now();
  PressButton(dialog_, kExportButton);
  FollowExport();
}

bool DialogPilot::CheckSwitcher() {
  outcome_.stillSlots = static_cast<std::uint32_t>(std::max(0, ListCount(dialog_, kSlotList)));
  outcome_.mediaPlayers = -1;
  for (const int radio : kAfterExportRadios)
    outcome_.mediaPlayers += IsControlEnabled(dialog_, radio) ? 1 : 0;
  if (orders_->slot >= outcome_.stillSlots) Finish(ExportEnd::kSlotMissing);
  if (orders_->mediaPlayer >= outcome_.mediaPlayers) Finish(ExportEnd::kPlayerMissing);
  return !Finished();
}

void DialogPilot::FillIn() {
  PasteOver(dialog_, kNameEdit, orders_->name);
  SetChecked(dialog_, kPremultiplyCheck, orders_->premultiply);
  ChooseRadio(dialog_, kAfterExportRadios, kAfterExportRadios[orders_->mediaPlayer + 1]);
  // News of a slot may put the old selection back meanwhile.
  const auto slot = static_cast<int>(orders_->slot);
  WaitFor([&] {
    ChooseInList(dialog_, kSlotList, slot);
    return ListSelection(dialog_, kSlotList) == slot;
  });
}

void DialogPilot::FollowExport() {
  WaitFor([this] {
    const std::u16string caption = WindowText(dialog_);
    if (caption == kDisconnectedCaption) Finish(ExportEnd::kDisconnected);
    if (caption == kConnectedCaption && IsControlEnabled(dialog_, kExportButton)) {
      Finish(ExportEnd::kFailed);
    }
    // After a success the dialog closes by itself.
    if (!Finished() && !IsWindow(dialog_)) Finish(ExportEnd::kExported);
    return Finished();
  });
}

void DialogPilot::CloseEverything() {
  while (!landed_) {
    for (const HWND window : DialogsOfThread(dialogThread_)) {
      PostButton(window, kCloseButton);  // which answers a message box as well
    }
    Sleep(kLookMilliseconds);
  }
}

bool DialogPilot::FindReadyDialog() {
  for (const HWND window : DialogsOfThread(dialogThread_)) {
    if (!IsExportDialog(window)) continue;
    // Some choice is always made once the dialog is filled in.
    const bool ready = std::ranges::any_of(
        kAfterExportRadios, [&](int radio) { return IsControlChecked(window, radio); });
    if (ready) dialog_ = window;
  }
  return dialog_ != nullptr;
}

bool DialogPilot::ShowsConnected() const {
  return WindowText(dialog_) == kConnectedCaption;
}

void DialogPilot::AnswerBoxes() {
  for (const HWND window : DialogsOfThread(dialogThread_)) {
    const std::optional<OpenMessageBox> box = AsMessageBox(window);
    if (!box) continue;
    outcome_.messages.push_back({box->caption, box->text});
    if (box->caption == kServiceMissingCaption) Finish(ExportEnd::kServiceMissing);
    if (outcome_.step == ExportStep::kConnecting) Finish(ExportEnd::kNotConnected);
    // A box that is not yet in its loop may lose the answer.
    while (IsWindow(window) && !landed_) {
      PostButton(window, kOkCommand);
      Sleep(kLookMilliseconds);
    }
  }
}

void DialogPilot::LookUp() {
  AnswerBoxes();
  if (patience_.interrupted && patience_.interrupted()) Finish(ExportEnd::kInterrupted);
  if (Clock::now() >= begun_ + patience_.timeout) Finish(ExportEnd::kTimedOut);
}

void DialogPilot::Finish(ExportEnd end) {
  if (!Finished()) outcome_.end = end;
}

bool DialogPilot::WaitFor(const std::function<bool()>& done) {
  while (!Finished() && !done()) {
    LookUp();
    if (landed_) {
      const bool exporting = outcome_.step == ExportStep::kExporting;
      Finish(exporting ? ExportEnd::kExported : ExportEnd::kOutOfMemory);
    }
    if (!Finished()) Sleep(kLookMilliseconds);
  }
  return !Finished();
}

}  // namespace mixdecks
