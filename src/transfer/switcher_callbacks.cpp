// What the service calls on a SwitcherTransfer, on threads of its own.

#include <utility>

#include "control/export_control.h"
#include "transfer/media_players.h"
#include "transfer/switcher_transfer_object.h"

namespace mixdecks {

// The service must not rely on references: it is given none.
HResult SwitcherTransfer::QueryInterface(const ServiceId&, void**) {
  return kResultFail;
}
std::uint32_t SwitcherTransfer::AddRef() {
  return 1;
}
std::uint32_t SwitcherTransfer::Release() {
  return 1;
}

HResult SwitcherTransfer::Ignored3() {
  return kResultOk;
}
HResult SwitcherTransfer::Ignored4() {
  return kResultOk;
}

HResult SwitcherTransfer::Notify(std::uint32_t event) {
  const CallbackGate::Pass pass(gate_);
  if (!pass || event != kEventDisconnected) return kResultOk;
  {
    const WaitLock lock(connection_.transferMutex);
    Disconnect();
  }
  control_.PostDisconnected();
  return kResultOk;
}

HResult SwitcherTransfer::Locked() {
  const CallbackGate::Pass pass(gate_);
  if (!pass) return kResultOk;
  const WaitLock lock(connection_.transferMutex);
  if (connection_.stills && frame_) {
    connection_.stills->SetPicture(pendingSlot_, pendingName_.Get(), frame_.Get());
  }
  return kResultOk;
}

HResult SwitcherTransfer::Notify(std::uint32_t event, void*, std::uint32_t slot) {
  const CallbackGate::Pass pass(gate_);
  if (!pass) return kResultOk;
  switch (event) {
    case kEventNameChanged:
    case kEventValidityChanged:
      RefreshStillInfo(slot);
      break;
    case kEventTransferCompleted:
    case kEventTransferCancelled:
    case kEventTransferFailed:
      FinishUpload(event == kEventTransferCompleted, slot);
      break;
    default:
      break;
  }
  return kResultOk;
}

/// The player is set before the front end hears of the end. The frame is taken out with the lock
/// that is given back: an export that begins as soon as the end is posted keeps its own.
void SwitcherTransfer::FinishUpload(bool completed, std::uint32_t slot) {
  ServicePointer<ITMKSwitcherFrame> frame;
  {
    const WaitLock lock(connection_.transferMutex);
    if (connection_.stills) {
      connection_.stills->Unlock(static_cast<ITMKSwitcherLockCallback*>(this));
    }
    frame = std::move(frame_);
  }
  const std::int32_t player = mediaPlayer_;
  if (completed && player >= 0) ApplyToMediaPlayer(player, slot);
  control_.PostExportFinished(completed);
}

HResult SwitcherTransfer::ApplyToMediaPlayer(std::int32_t player, std::uint32_t slot) {
  HResult result = kResultFail;
  MediaPlayerIterator players;
  {
    const WaitLock lock(connection_.transferMutex);
    if (connection_.switcher) {
      result = CreateMediaPlayerIterator(*connection_.switcher.Get(), players);
    }
  }
  return Delivered(result, players) ? ShowStill(*players.Get(), player, slot) : kResultFail;
}

void SwitcherTransfer::RefreshStillInfo(std::uint32_t slot) {
  const ServicePointer<ITMKSwitcherStills> stills = ShareStills();
  if (stills) PostStill(*stills.Get(), slot);
}

/// A reference that outlives a disconnect: the slots are read without the mutex.
ServicePointer<ITMKSwitcherStills> SwitcherTransfer::ShareStills() {
  const WaitLock lock(connection_.transferMutex);
  return connection_.stills.Share();
}

/// Two slots of the same name are told apart by their numbers alone.
void SwitcherTransfer::PostStill(ITMKSwitcherStills& stills, std::uint32_t slot) {
  std::int32_t valid = 0;
  Text name;
  const HResult validity = stills.IsValid(slot, &valid);
  const HResult naming = stills.GetName(slot, name.Receive());
  if (Succeeded(validity) && Succeeded(naming)) {
    control_.PostStillInfo(slot, valid != 0, name.Get());
  }
}

}  // namespace mixdecks
