#include "simulator/lock_desk.h"

#include <algorithm>

namespace mixdecks::simulator {

bool LockDesk::Holds(const Connection& connection) const {
  return holder_ && holder_->request.connection.get() == &connection;
}

bool LockDesk::Ask(const std::shared_ptr<Connection>& connection,
                   ITMKSwitcherLockCallback* callback, std::uint32_t slot) {
  const std::lock_guard lock(mutex_);
  const bool waits =
      std::ranges::find(waiting_, connection, &LockRequest::connection) != waiting_.end();
  if (waits || Holds(*connection)) return false;
  waiting_.push_back({++lastId_, connection, callback, slot});
  return true;
}

bool LockDesk::WantsGranter() {
  const std::lock_guard lock(mutex_);
  if (holder_ || granting_ || waiting_.empty()) return false;
  granting_ = true;
  return true;
}

void LockDesk::NoGranter() {
  const std::lock_guard lock(mutex_);
  granting_ = false;
}

std::optional<LockRequest> LockDesk::Next() {
  const std::lock_guard lock(mutex_);
  // A request may have slipped in while its connection was dropped.
  std::erase_if(waiting_, [](const LockRequest& request) { return !request.connection->alive; });
  if (!waiting_.empty()) return waiting_.front();
  granting_ = false;
  return std::nullopt;
}

bool LockDesk::Grant(const LockRequest& request) {
  const std::lock_guard lock(mutex_);
  const bool wanted = !waiting_.empty() && waiting_.front().id == request.id;
  if (!wanted || !request.connection->alive) return false;
  waiting_.pop_front();
  holder_ = Holder{request, Phase::kGranting};
  granting_ = false;
  return true;
}

/// Steps that are late, of a lock that was given back or of a phase that is over, change nothing.
void LockDesk::Advance(std::uint64_t lockId, Phase from, Phase to) {
  const std::lock_guard lock(mutex_);
  if (holder_ && holder_->request.id == lockId && holder_->phase == from) holder_->phase = to;
}

void LockDesk::LockedReturned(const LockRequest& request) {
  Advance(request.id, Phase::kGranting, Phase::kOwed);
}

UploadPermission LockDesk::BeginUpload(const Connection& connection, std::uint32_t slot,
                                       std::uint64_t& lockId) {
  const std::lock_guard lock(mutex_);
  if (!Holds(connection)) return UploadPermission::kNoLock;
  if (holder_->phase == Phase::kUploading) return UploadPermission::kUnderWay;
  if (holder_->request.slot != slot) return UploadPermission::kOtherSlot;
  holder_->phase = Phase::kUploading;
  lockId = holder_->request.id;
  return UploadPermission::kGiven;
}

void LockDesk::Excuse(const Connection& connection) {
  const std::lock_guard lock(mutex_);
  if (Holds(connection)) holder_->phase = Phase::kExcused;
}

void LockDesk::EndUpload(std::uint64_t lockId) {
  Advance(lockId, Phase::kUploading, Phase::kEnding);
}

void LockDesk::EndTold(std::uint64_t lockId) {
  Advance(lockId, Phase::kEnding, Phase::kOwed);
}

UnlockAnswer LockDesk::Unlock(const Connection& connection,
                              const ITMKSwitcherLockCallback* callback) {
  const std::lock_guard lock(mutex_);
  if (!Holds(connection) || holder_->request.callback != callback) return UnlockAnswer::kNotHeld;
  const bool uploading = holder_->phase == Phase::kUploading;
  holder_.reset();
  return uploading ? UnlockAnswer::kDuringUpload : UnlockAnswer::kDone;
}

void LockDesk::Withdraw(const Connection& connection) {
  const std::lock_guard lock(mutex_);
  RemoveRequests(connection);
}

bool LockDesk::Drop(const Connection& connection) {
  const std::lock_guard lock(mutex_);
  RemoveRequests(connection);
  if (!Holds(connection)) return false;
  const bool owed = holder_->phase == Phase::kOwed;
  holder_.reset();
  return owed;
}

void LockDesk::RemoveRequests(const Connection& connection) {
  std::erase_if(waiting_, [&](const LockRequest& request) {
    return request.connection.get() == &connection;
  });
}

}  // namespace mixdecks::simulator
