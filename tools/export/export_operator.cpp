#include "tools/export/export_operator.h"

#include <span>
#include <utility>

#include "dialog/export_dialog.h"
#include "dialog/preferences.h"
#include "dialog/window_messages.h"
#include "host/channel_reader.h"
#include "tools/export/closing_limit.h"
#include "tools/export/result_watch.h"
#include "transfer/switcher_transfer.h"

namespace mixdecks {
namespace {

/// How often a waiting operator looks up: a signal handler cannot wake it.
constexpr std::chrono::milliseconds kLookUp{50};
/// A slot whose name cannot be read is never told of. After so much silence the list is taken as
/// complete.
constexpr std::chrono::milliseconds kSilence{500};
/// The dialog asks for the next connection as soon as one fails, and closing waits for its answer.
constexpr std::chrono::milliseconds kClosing{2000};

/// The operator at work: what dialogs are made with are plain functions.
ExportOperator* working = nullptr;

}  // namespace

ExportOperator::ExportOperator(ExportOrders orders, OperatorPatience patience)
    : orders_(std::move(orders)), patience_(std::move(patience)) {
  // The dialog connects as it opens, to the address of the last time: here to the ordered one.
  preferences_.Write(kAddressPreference, PreferenceType::kText,
                     std::as_bytes(std::span(orders_.address)));
}

ExportOperator::~ExportOperator() = default;

std::intptr_t ExportOperator::Operate(ExportGlobals* globals) {
  const ExportDialogServices services = {{CreateSwitcherSide, ReadDocument}, &preferences_};
  ExportDialog exportDialog(state_, services);
  HeadlessDialog dialog(kExportDialogTemplate, [&](WindowOperations& window, std::uint32_t message,
                                                   std::uintptr_t first, std::intptr_t second) {
    const std::intptr_t result = exportDialog.ExportDialogProc(window, message, first, second);
    if (message == kWmInitDialog) ListenIn();
    return result;
  });
  working = this;
  begun_ = Clock::now();
  const std::intptr_t value = dialog.RunModal(reinterpret_cast<std::intptr_t>(globals),
                                              [this](HeadlessDialog& open) { Use(open); });
  working = nullptr;
  return value;
}

void ExportOperator::ListenIn() {
  if (state_.exportControl == nullptr) return Finish(ExportEnd::kOutOfMemory);
  UICommandHandler& listener = *this;
  state_.uiHandler = std::make_unique<ResultWatch>(listener, std::move(state_.uiHandler));
}

void ExportOperator::Use(HeadlessDialog& dialog) {
  ConnectAndExport(dialog);
  Close(dialog);
}

void ExportOperator::ConnectAndExport(HeadlessDialog& dialog) {
  if (!WaitFor(dialog, [this] { return connected_; })) return;
  outcome_.step = ExportStep::kListing;
  if (!CheckSwitcher() || !WaitForList(dialog)) return;

  outcome_.step = ExportStep::kExporting;
  FillIn(dialog);
  outcome_.clicked = Clock::now();
  dialog.Click(kExportButton);
  WaitFor(dialog, [] { return false; });
  outcome_.ended = Clock::now();
}

bool ExportOperator::CheckSwitcher() {
  if (orders_.slot >= outcome_.stillSlots) {
    Finish(ExportEnd::kSlotMissing);
  } else if (orders_.mediaPlayer >= outcome_.mediaPlayers) {
    Finish(ExportEnd::kPlayerMissing);
  }
  return !Finished();
}

void ExportOperator::FillIn(HeadlessDialog& dialog) const {
  dialog.PasteOver(kNameEdit, orders_.name);
  dialog.Choose(kSlotList, static_cast<std::int32_t>(orders_.slot));
  if (dialog.Control(kPremultiplyCheck).checked != orders_.premultiply) {
    dialog.Click(kPremultiplyCheck);
  }
  dialog.Click(orders_.mediaPlayer < 0 ? kDoNothingRadio
                                       : kAfterExportRadios[orders_.mediaPlayer + 1]);
}

void ExportOperator::Close(HeadlessDialog& dialog) {
  const bool gaveUp =
      outcome_.end == ExportEnd::kTimedOut || outcome_.end == ExportEnd::kInterrupted;
  const auto cut = [this] {
    outcome_.cutOff = true;
    patience_.cutConnection();
  };
  if (gaveUp && patience_.cutConnection) cut();
  const ClosingLimit limit(kClosing,
                           patience_.cutConnection && !gaveUp ? cut : std::function<void()>());
  // After a success the dialog closes by itself.
  const bool closes = outcome_.end == ExportEnd::kExported;
  if (closes) dialog.HandleMessagesUntil([] { return false; }, kClosing);
  if (!dialog.EndValue()) dialog.Click(kCloseButton);
}

void ExportOperator::Finish(ExportEnd end) noexcept {
  if (!Finished()) outcome_.end = end;
}

void ExportOperator::LookUp() {
  if (patience_.interrupted && patience_.interrupted()) Finish(ExportEnd::kInterrupted);
  if (Clock::now() >= begun_ + patience_.timeout) Finish(ExportEnd::kTimedOut);
}

bool ExportOperator::WaitFor(HeadlessDialog& dialog, const std::function<bool()>& done) {
  const auto doneOrFinished = [&] {
    LookUp();
    return Finished() || done();
  };
  while (!dialog.HandleMessagesUntil(doneOrFinished, kLookUp)) {
    // Without memory the dialog closes by itself.
    if (dialog.EndValue()) Finish(ExportEnd::kOutOfMemory);
  }
  return !Finished();
}

bool ExportOperator::WaitForList(HeadlessDialog& dialog) {
  std::uint32_t told = slotsTold_;
  Clock::time_point silentFrom = Clock::now();
  return WaitFor(dialog, [&] {
    if (std::exchange(told, slotsTold_) != slotsTold_) silentFrom = Clock::now();
    return slotsTold_ >= outcome_.stillSlots || Clock::now() - silentFrom >= kSilence;
  });
}

std::unique_ptr<SwitcherSide> ExportOperator::CreateSwitcherSide(ExportGlobals* globals,
                                                                 ExportControl& control) {
  try {
    return CreateSwitcherTransfer(globals, control);
  } catch (int) {
    working->Finish(ExportEnd::kServiceMissing);
    throw;
  }
}

HResult ExportOperator::ReadDocument(ExportRecord* record, HeapBlock& image, bool& hasAlpha) {
  const Clock::time_point begun = Clock::now();
  const HResult result = ReadChannelDocument(record, image, hasAlpha);
  working->outcome_.readingChannels = Clock::now() - begun;
  // Nothing is pushed then, and no result will ever come.
  if (Failed(result)) working->Finish(ExportEnd::kDocumentUnreadable);
  return result;
}

void ExportOperator::OnConnectResult(bool connected, std::uint32_t reason,
                                     std::uint32_t stillsCount, std::int32_t mediaPlayerCount) {
  connected_ = connected;
  outcome_.connecting = Clock::now() - begun_;
  outcome_.connectReason = reason;
  outcome_.stillSlots = stillsCount;
  outcome_.mediaPlayers = mediaPlayerCount;
  if (!connected) Finish(ExportEnd::kNotConnected);
}

void ExportOperator::OnExportFinished(bool success) {
  Finish(success ? ExportEnd::kExported : ExportEnd::kFailed);
}

void ExportOperator::OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) {
  ++slotsTold_;
  if (slot != orders_.slot || outcome_.step == ExportStep::kExporting) return;
  outcome_.slotWasUsed = inUse;
  outcome_.replaced = inUse && name != nullptr ? name : u"";
}

void ExportOperator::OnDisconnected() {
  Finish(ExportEnd::kDisconnected);
}

void ExportOperator::OnMessageBox(const char16_t* /*caption*/, const char16_t* /*message*/) {
  // The dialog shows it.
}

}  // namespace mixdecks
