// The equipment itself: what all connections share, and what goes on in it.
//
// Service objects are thin: they check what they are given and call here. Any thread may call; no
// lock is held while a client's callback, a hook or the disk is at work.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "simulator/connection.h"
#include "simulator/frame_buffer.h"
#include "simulator/lock_desk.h"
#include "simulator/object_book.h"
#include "simulator/scenario.h"
#include "simulator/script.h"
#include "simulator/service_threads.h"
#include "simulator/still_pool.h"
#include "simulator/violation_log.h"

namespace mixdecks::simulator {

/// What the script makes of a call or of an upload.
struct Outcome {
  bool failed = false;
  bool cancelled = false;
  std::uint32_t reason = 0;
};

/// One still on its way into a slot.
struct Upload {
  std::shared_ptr<Connection> connection;
  std::uint64_t lockId;
  std::uint32_t slot;
  std::u16string name;
  std::shared_ptr<const FrameBuffer> frame;
};

class Switcher {
 public:
  Switcher(Scenario scenario, std::unique_ptr<StillStore> store);

  const Scenario& Setup() const noexcept { return scenario_; }
  StillPool& Pool() noexcept { return pool_; }
  ObjectBook& Objects() noexcept { return objects_; }
  LockDesk& Locks() noexcept { return locks_; }
  Script& Steps() noexcept { return script_; }
  ViolationLog& Violations() noexcept { return violations_; }

  void Violation(std::string_view operation, const std::string& what);

  /// Arrives at a point: calls its hook and does what the script says.
  Outcome Arrive(Point point, std::uint32_t number = 0, std::uint32_t event = 0);

  // Connections.

  /// What an opening begins with: it fails when the switcher was disconnected since then.
  std::uint64_t OpeningTicket() const;
  /// Waits during an opening, until a disconnection or the shutdown at most.
  void PauseOpening(std::uint64_t ticket, std::chrono::milliseconds duration);
  /// The new connection, or null after a disconnection or the shutdown.
  std::shared_ptr<Connection> Open(std::uint64_t ticket);
  /// Tells a connection's callbacks that it was dropped, each of them once, on a thread of the
  /// simulator.
  void StartTellingDisconnected(std::shared_ptr<Connection> connection);

  // Locks and uploads.

  /// Sees to it that the next request in line is granted, on a thread of the simulator. False when
  /// there is no thread.
  bool GrantNextLock();
  /// False when there is no thread.
  bool StartUpload(Upload upload);
  /// A connection ends or is dropped: its requests and its lock are free, its upload ends.
  void EndLocks(const Connection& connection);

  // Frames that clients hold. A client hands in what may be no frame of ours.

  void EnterFrame(const ITMKSwitcherFrame* frame, std::shared_ptr<const FrameBuffer> buffer);
  void ForgetFrame(const ITMKSwitcherFrame* frame);
  std::shared_ptr<const FrameBuffer> FindFrame(const ITMKSwitcherFrame* frame) const;

  // What the equipment or another station does. Throws `PoolError` when the pool cannot keep it.

  void Disconnect();
  void StoreStill(std::uint32_t slot, std::u16string_view name,
                  std::span<const std::uint8_t> frame);
  void RenameStill(std::uint32_t slot, std::u16string_view name);
  void ClearStill(std::uint32_t slot);
  void ChangeVideoMode(std::uint32_t mode);

  void Shutdown();
  bool Stopped() const;
  void WaitUntilIdle() { threads_.WaitUntilIdle(); }

 private:
  enum class UploadEnd : std::uint8_t { kCompleted, kCancelled, kFailed, kForgotten };

  /// Waits for a time, but not longer than `until` is false and the switcher runs.
  void Pause(std::chrono::milliseconds duration, const std::function<bool()>& until);
  void TakeStep(const ScriptStep& step, Outcome& outcome);
  std::vector<std::shared_ptr<Connection>> Connections() const;

  void TellDisconnected(Connection& connection);
  void GrantLocks();
  void RunUpload(const Upload& upload);
  UploadEnd Transfer(const Upload& upload);
  void ChangePool(std::uint32_t slot, const std::function<SlotChange()>& change);
  void TellChange(std::uint32_t slot, SlotChange change, const Connection* except);
  void TellChangeTo(Connection& connection, std::uint32_t slot, SlotChange change);
  void NotifyStills(Connection& connection, std::uint32_t event, std::uint32_t slot);
  void CheckAnswer(std::string_view callback, HResult answer);

  const Scenario scenario_;
  Script script_;
  ViolationLog violations_;
  StillPool pool_;
  ObjectBook objects_;
  LockDesk locks_;

  mutable std::mutex mutex_;  ///< guards what follows; nothing else is taken while it is held
  std::condition_variable changed_;
  std::vector<std::weak_ptr<Connection>> connections_;
  std::unordered_map<const ITMKSwitcherFrame*, std::shared_ptr<const FrameBuffer>> frames_;
  std::uint64_t disconnections_ = 0;
  bool stopped_ = false;

  ServiceThreads threads_;  ///< last: its threads use all of the above
};

}  // namespace mixdecks::simulator
