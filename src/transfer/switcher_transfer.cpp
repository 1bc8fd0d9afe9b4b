// Life of a SwitcherTransfer and the two operations that the worker calls.

#include <new>
#include <utility>

#include "control/export_control.h"
#include "platform/message_box.h"
#include "transfer/service_activation.h"
#include "transfer/still_preparation.h"
#include "transfer/switcher_transfer_object.h"
#include "transfer/transfer_error.h"

namespace mixdecks {
namespace {

void* HostWindow(const ExportGlobals* hostContext) {
  if (hostContext == nullptr || hostContext->record == nullptr) return nullptr;
  const PlatformRecord* platform = hostContext->record->platform;
  return platform == nullptr ? nullptr : platform->parentWindow;
}

void TellInstallationIsCorrupt(const ExportGlobals* hostContext) {
  ShowMessageBox(HostWindow(hostContext),
                 "Your Mixdecks installation is missing some components, please try re-installing "
                 "the Tollenmark ORVA Software.",
                 "Corrupt Installation Detected", kMessageBoxIconError);
}

/// With the callback's owner holding `transferMutex`. The field is empty before the service is
/// called, so that a callback from inside finds nothing to do.
template <typename Object, typename Callback>
void Drop(ServicePointer<Object>& field, Callback* callback) {
  const ServicePointer<Object> object = std::move(field);
  if (object) object->RemoveCallback(callback);
}

}  // namespace

SwitcherTransfer::SwitcherTransfer(ExportGlobals* hostContext, ExportControl& control)
    : control_(control), session_(std::in_place) {
  if (!connection_.Usable() || !gate_.Usable() || !session_->Entered()) throw kServiceAbsent;
  if (Failed(CreateSwitcherDiscovery(discovery_.Receive()))) throw kServiceAbsent;
  if (discovery_) return;
  TellInstallationIsCorrupt(hostContext);
  throw kServiceAbsent;
}

SwitcherTransfer::~SwitcherTransfer() {
  Close();
}

// No thread of ours is left when the callbacks go, and no callback when the fields go. What the
// service owns is released before the session ends, for the session's end may unload the service.
void SwitcherTransfer::Close() noexcept {
  if (!session_) return;
  ConnectAttempts attempts;
  {
    const WaitLock lock(connection_.transferMutex);
    closing_ = true;
    attempts = std::move(attempts_);
  }
  Join(attempts);
  {
    const WaitLock lock(connection_.transferMutex);
    Disconnect();
  }
  discovery_.Reset();
  gate_.Close();
  pendingName_ = Text();
  connection_.DestroyMutex();
  frame_.Reset();
  session_.reset();
}

HResult SwitcherTransfer::Connect(const char16_t* address) {
  bool started = false;
  ConnectAttempts ended;
  {
    const WaitLock lock(connection_.transferMutex);
    if (closing_) return kResultOk;
    Disconnect();
    try {
      ended = TakeEndedAttempts();
      started = StartConnecting(address);
    } catch (const std::bad_alloc&) {
      started = false;
    }
  }
  Join(ended);
  if (started) return kResultOk;

  ReportTransferError(control_, TransferError::kUnknown);
  {
    const WaitLock lock(connection_.transferMutex);
    Disconnect();
  }
  control_.PostConnectResult(false, 0, 0, 0);
  return kResultFail;
}

void SwitcherTransfer::Disconnect() {
  Drop(connection_.switcher, static_cast<ITMKSwitcherCallback*>(this));
  Drop(connection_.mediaPool, static_cast<ITMKSwitcherMediaPoolCallback*>(this));
  Drop(connection_.stills, static_cast<ITMKSwitcherStillsCallback*>(this));
}

HResult SwitcherTransfer::Export(StillExport still) {
  mediaPlayer_ = still.mediaPlayer;
  HResult result = kResultFail;
  ServicePointer<ITMKSwitcherFrame> frame;
  StillImage image{std::move(still.image), still.width, still.height, still.hasAlpha};
  TransferError error = PrepareFrame(connection_, std::move(image), still.premultiply, frame);
  if (error == TransferError::kNone) {
    try {
      result = RequestUpload(still, std::move(frame));
    } catch (const std::bad_alloc&) {
      error = TransferError::kNoMemory;
    }
  }
  ReportTransferError(control_, error);
  if (Failed(result)) control_.PostExportFinished(false);
  return result;
}

/// Asks for the lock on the still store; the upload begins when it is granted.
HResult SwitcherTransfer::RequestUpload(const StillExport& still,
                                        ServicePointer<ITMKSwitcherFrame> frame) {
  Text name = Text::CopyOf(still.name);
  const WaitLock lock(connection_.transferMutex);
  frame_ = std::move(frame);
  pendingName_ = std::move(name);
  pendingSlot_ = still.slot;
  if (!connection_.stills) return kResultFail;

  ServicePointer<ITMKSwitcherStillsLock> stillsLock;
  HResult result = QueryService(*connection_.stills.Get(), kSwitcherStillsLockId, stillsLock);
  if (!Delivered(result, stillsLock)) return kResultFail;
  result = stillsLock->Lock(static_cast<ITMKSwitcherLockCallback*>(this), still.slot);
  return Succeeded(result) ? kResultOk : result;
}

}  // namespace mixdecks
