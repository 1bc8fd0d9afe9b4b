// The lock on the still store and what happens under it.
#include <exception>
#include <utility>

#include "simulator/switcher.h"

namespace mixdecks::simulator {

bool Switcher::GrantNextLock() {
  if (!locks_.WantsGranter()) return true;
  if (threads_.Start([this] { GrantLocks(); })) return true;
  locks_.NoGranter();
  return false;
}

void Switcher::GrantLocks() {
  Pause(scenario_.lockDelay, [] { return false; });
  while (const std::optional<LockRequest> request = locks_.Next()) {
    Arrive(Point::kLockGranted, request->slot);
    if (!locks_.Grant(*request)) continue;
    CheckAnswer("ITMKSwitcherLockCallback::Locked", request->callback->Locked());
    locks_.LockedReturned(*request);
    Arrive(Point::kLockedReturned, request->slot);
    return;
  }
}

void Switcher::EndLocks(const Connection& connection) {
  const bool owed = locks_.Drop(connection);
  if (owed && connection.alive) Violation("Lock", "the lock was not given back");
  {
    // Whoever is about to wait for a time looks at the connection before or after this.
    const std::lock_guard lock(mutex_);
  }
  changed_.notify_all();
  GrantNextLock();
}

bool Switcher::StartUpload(Upload upload) {
  return threads_.Start([this, upload = std::move(upload)] { RunUpload(upload); });
}

void Switcher::RunUpload(const Upload& upload) {
  const UploadEnd end = Transfer(upload);
  if (end == UploadEnd::kForgotten) return;
  locks_.EndUpload(upload.lockId);
  const std::uint32_t event = end == UploadEnd::kCompleted   ? kEventTransferCompleted
                              : end == UploadEnd::kCancelled ? kEventTransferCancelled
                                                             : kEventTransferFailed;
  NotifyStills(*upload.connection, event, upload.slot);
  locks_.EndTold(upload.lockId);
}

/// Takes the frame in, stage by stage, and stores it. Nobody is left to be told of the end when
/// the connection went away under way: the slot stays as it was.
Switcher::UploadEnd Switcher::Transfer(const Upload& upload) {
  const auto gone = [&] { return !upload.connection->CanUpload(); };
  const std::chrono::milliseconds half = scenario_.uploadTime / 2;
  struct Stage {
    Point point;
    std::chrono::milliseconds before;
  };
  const Stage stages[] = {{Point::kUploadBegun, std::chrono::milliseconds(0)},
                          {Point::kUploadHalfway, half},
                          {Point::kUploadReceived, scenario_.uploadTime - half}};
  for (const Stage& stage : stages) {
    Pause(stage.before, gone);
    const Outcome outcome = Arrive(stage.point, upload.slot);
    if (gone() || Stopped()) return UploadEnd::kForgotten;
    if (outcome.cancelled) return UploadEnd::kCancelled;
    if (outcome.failed) return UploadEnd::kFailed;
  }
  // The mode may have changed since the frame was made; the switcher has no use for it then.
  if (upload.frame->Mode() != pool_.Mode()) return UploadEnd::kFailed;
  try {
    const SlotChange change =
        pool_.Store(upload.slot, upload.name, upload.frame->Mode(), upload.frame->Packed());
    TellChange(upload.slot, change, upload.connection.get());
    TellChangeTo(*upload.connection, upload.slot, change);
    return UploadEnd::kCompleted;
  } catch (const std::exception&) {
    // A full disk or memory: equipment, too, reports no more than that it failed.
    return UploadEnd::kFailed;
  }
}

void Switcher::TellChange(std::uint32_t slot, SlotChange change, const Connection* except) {
  for (const auto& connection : Connections()) {
    if (connection.get() == except) continue;
    threads_.Start([=, this] { TellChangeTo(*connection, slot, change); });
  }
}

void Switcher::TellChangeTo(Connection& connection, std::uint32_t slot, SlotChange change) {
  if (!change.anything) return;
  if (change.validity) NotifyStills(connection, kEventValidityChanged, slot);
  if (change.name) NotifyStills(connection, kEventNameChanged, slot);
  for (ITMKSwitcherMediaPoolCallback* callback : connection.mediaPoolCallbacks.All()) {
    if (!connection.alive || !connection.mediaPoolCallbacks.Contains(callback)) continue;
    CheckAnswer("ITMKSwitcherMediaPoolCallback", callback->Ignored3());
  }
}

void Switcher::NotifyStills(Connection& connection, std::uint32_t event, std::uint32_t slot) {
  Arrive(Point::kNotifyStills, slot, event);
  for (ITMKSwitcherStillsCallback* callback : connection.stillsCallbacks.All()) {
    if (!connection.alive || !connection.stillsCallbacks.Contains(callback)) continue;
    CheckAnswer("ITMKSwitcherStillsCallback::Notify", callback->Notify(event, nullptr, slot));
  }
  Arrive(Point::kStillsNotified, slot, event);
}

}  // namespace mixdecks::simulator
