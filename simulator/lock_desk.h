// Who has the lock on the still store, and who waits for it.
//
// One connection holds it at a time, for one slot; the others wait in the order they asked. Being
// granted takes two steps, because telling a client takes time: a grant is prepared, and counts
// only if the client still wants it then.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>

#include "simulator/connection.h"

namespace mixdecks::simulator {

struct LockRequest {
  std::uint64_t id = 0;
  std::shared_ptr<Connection> connection;
  ITMKSwitcherLockCallback* callback = nullptr;
  std::uint32_t slot = 0;
};

/// Whether a connection may upload to a slot.
enum class UploadPermission : std::uint8_t { kGiven, kNoLock, kOtherSlot, kUnderWay };

/// Whether a lock was given back.
enum class UnlockAnswer : std::uint8_t { kDone, kDuringUpload, kNotHeld };

/// Any thread may call.
class LockDesk {
 public:
  /// Puts a request in line. False when the connection holds or awaits the lock already.
  bool Ask(const std::shared_ptr<Connection>& connection, ITMKSwitcherLockCallback* callback,
           std::uint32_t slot);

  /// True once for each time somebody has to see to the line: the lock is free and somebody waits.
  /// The caller then works through `Next` and `Grant`.
  bool WantsGranter();
  /// Nobody could be found for it: the next call asks again.
  void NoGranter();
  /// The request whose turn it is; nothing when none is left, which ends the granter's work.
  std::optional<LockRequest> Next();
  /// Gives the lock to a request, which ends the granter's work. False when it was withdrawn.
  bool Grant(const LockRequest& request);

  /// `Locked` came back for this request: from now on the holder owes an upload or the lock.
  void LockedReturned(const LockRequest& request);

  /// Asks for and notes the beginning of an upload; `lockId` names the lock it goes under.
  UploadPermission BeginUpload(const Connection& connection, std::uint32_t slot,
                               std::uint64_t& lockId);
  /// The simulator itself refused the upload: the holder may go without giving the lock back.
  void Excuse(const Connection& connection);
  /// The upload is over; the holder will be told.
  void EndUpload(std::uint64_t lockId);
  /// The holder was told: from now on it owes the lock.
  void EndTold(std::uint64_t lockId);

  UnlockAnswer Unlock(const Connection& connection, const ITMKSwitcherLockCallback* callback);

  /// Takes the connection's requests out of the line.
  void Withdraw(const Connection& connection);
  /// Takes requests and lock away from a connection that ends. True when it owed the lock.
  bool Drop(const Connection& connection);

 private:
  enum class Phase : std::uint8_t {
    kGranting,   ///< the holder is being told of the lock
    kUploading,  ///< an upload is under way
    kEnding,     ///< the holder is being told of the upload's end
    kOwed,       ///< nothing is under way: the lock is to be given back
    kExcused,    ///< the same, but the simulator brought it about
  };
  struct Holder {
    LockRequest request;
    Phase phase;
  };

  bool Holds(const Connection& connection) const;
  void Advance(std::uint64_t lockId, Phase from, Phase to);
  void RemoveRequests(const Connection& connection);

  std::mutex mutex_;
  std::optional<Holder> holder_;
  std::deque<LockRequest> waiting_;
  bool granting_ = false;
  std::uint64_t lastId_ = 0;
};

}  // namespace mixdecks::simulator
