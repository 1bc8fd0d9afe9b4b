#include "tools/export/export_operator.h"

#include <algorithm>
#include <utility>

#include "host/channel_reader.h"
#include "platform/message_box.h"
#include "transfer/image_scaler.h"
#include "transfer/switcher_transfer.h"

namespace mixdecks {
namespace {

constexpr char kServiceMissingText[] =
    "Your Mixdecks installation is missing some components, please try re-installing the "
    "Tollenmark ORVA Software.";
constexpr char kServiceMissingCaption[] = "Corrupt Installation Detected";

/// How often a waiting operator looks up: a signal handler cannot wake it.
constexpr std::chrono::milliseconds kLookUp{50};
/// A slot whose name cannot be read is never told of. After so much silence the list is taken as
/// complete.
constexpr std::chrono::milliseconds kSilence{500};

std::u16string Copy(const char16_t* text) {
  return text == nullptr ? u"" : text;
}

/// The operator at work: the document reader is a plain function, like the dialog's.
ExportOperator* working = nullptr;

}  // namespace

ExportOperator::ExportOperator(ExportOrders orders, OperatorPatience patience)
    : orders_(std::move(orders)), patience_(std::move(patience)) {}

ExportOperator::~ExportOperator() = default;

std::intptr_t ExportOperator::Operate(ExportGlobals* globals) {
  working = this;
  Open(globals);
  if (control_ != nullptr) ConnectAndExport();
  Close();
  working = nullptr;
  return 0;
}

void ExportOperator::Open(ExportGlobals* globals) {
  StartImageScaler();
  try {
    control_ = ExportControl::Create(globals, {CreateSwitcherTransfer, ReadDocument});
  } catch (int) {
    ShowMessageBox(nullptr, kServiceMissingText, kServiceMissingCaption, kMessageBoxIconError);
    return Finish(ExportEnd::kServiceMissing);
  }
  if (control_ == nullptr) return Finish(ExportEnd::kOutOfMemory);
  control_->SetListener(&wakeUp_);
  control_->SetHostRecord(globals->record);
}

void ExportOperator::Close() {
  const bool gaveUp =
      outcome_.end == ExportEnd::kTimedOut || outcome_.end == ExportEnd::kInterrupted;
  if (gaveUp && patience_.cutConnection) patience_.cutConnection();
  if (control_ != nullptr) {
    control_->SetHostRecord(nullptr);
    control_->SetListener(nullptr);
    std::exchange(control_, nullptr)->Release();
  }
  StopImageScaler();
}

void ExportOperator::ConnectAndExport() {
  const Clock::time_point begun = Clock::now();
  deadline_ = begun + patience_.timeout;
  control_->Connect(orders_.address.c_str());
  if (!WaitFor([this] { return connected_; })) return;
  outcome_.connecting = Clock::now() - begun;
  outcome_.step = ExportStep::kListing;
  if (!CheckSwitcher() || !WaitForList()) return;

  outcome_.step = ExportStep::kExporting;
  outcome_.clicked = Clock::now();
  control_->Export(orders_.name.c_str(), orders_.slot, orders_.premultiply, orders_.mediaPlayer);
  WaitFor([] { return false; });
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

void ExportOperator::Finish(ExportEnd end) noexcept {
  if (!Finished()) outcome_.end = end;
}

void ExportOperator::LookUp() {
  if (patience_.interrupted && patience_.interrupted()) Finish(ExportEnd::kInterrupted);
  if (Clock::now() >= deadline_) Finish(ExportEnd::kTimedOut);
}

bool ExportOperator::WaitFor(const std::function<bool()>& done) {
  while (!Finished() && !done()) {
    const bool woken = wakeUp_.WaitUntil(std::min(deadline_, Clock::now() + kLookUp));
    if (woken) control_->RunPendingUICommand(this);
    LookUp();
  }
  return !Finished();
}

bool ExportOperator::WaitForList() {
  std::uint32_t told = slotsTold_;
  Clock::time_point silentFrom = Clock::now();
  return WaitFor([&] {
    if (std::exchange(told, slotsTold_) != slotsTold_) silentFrom = Clock::now();
    return slotsTold_ >= outcome_.stillSlots || Clock::now() - silentFrom >= kSilence;
  });
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
  outcome_.replaced = inUse ? Copy(name) : u"";
}

void ExportOperator::OnDisconnected() {
  Finish(ExportEnd::kDisconnected);
}

void ExportOperator::OnMessageBox(const char16_t* caption, const char16_t* message) {
  outcome_.messages.push_back({Copy(caption), Copy(message)});
}

}  // namespace mixdecks
