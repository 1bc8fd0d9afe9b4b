// A video switcher to work against: the switcher service, implemented in this process.
//
// It behaves like equipment, not like a mock: stills persist in a pool folder, uploads take time,
// callbacks come on threads of its own, a lock is granted later, frames of the wrong size or
// format are refused. It is strict: whatever a client does against the rules is recorded.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/result.h"
#include "simulator/points.h"
#include "simulator/pool.h"
#include "simulator/scenario.h"
#include "transfer/service_contract.h"

namespace mixdecks::simulator {

class Switcher;

/// One switcher with any number of connections. Every operation may be called from any thread,
/// from a hook and from a callback, but for `Shutdown` and the destructor, which wait for the
/// simulator's threads and so must not be called on one of them.
class SwitcherSimulator {
 public:
  /// A switcher whose pool lives in memory.
  explicit SwitcherSimulator(Scenario scenario = {});
  /// A switcher whose pool lives in `poolFolder`, which is made if it does not exist. Throws
  /// `PoolError` when the folder cannot be used, is no pool, or is in use.
  SwitcherSimulator(Scenario scenario, const std::filesystem::path& poolFolder);
  SwitcherSimulator(const SwitcherSimulator&) = delete;
  SwitcherSimulator& operator=(const SwitcherSimulator&) = delete;
  /// Shuts down. Service objects that are still held stay callable and fail.
  ~SwitcherSimulator();

  /// Creates a discovery object for a client, or plays what the scenario says of the service. The
  /// caller releases it. After `Shutdown` it fails.
  HResult CreateDiscovery(ITMKSwitcherDiscovery** discovery);

  /// Interrupts what takes time, waits for every callback and ends all threads, then gives the
  /// pool back. What the clients hold from then on counts as leaked, until they release it. May be
  /// called again.
  void Shutdown();

  /// Waits until no upload, grant or callback is under way or due. Not to be called from a hook or
  /// a callback.
  void WaitUntilIdle();

  /// What clients did against the rules so far; complete after `Shutdown`.
  std::vector<std::string> Violations() const;

  /// Installs what is called at each arrival at `point`, before the script's steps. An empty hook
  /// removes it; a call of the former one may still be under way.
  void SetPointHook(Point point, PointHook hook);

  // What the equipment or another station does. Slots that do not exist, unknown modes and what
  // comes after `Shutdown` are ignored. Throws `PoolError` when the pool cannot keep a change.
  void Disconnect();
  /// Stores a frame of the switcher's present mode, rows of width * 4 bytes.
  void StoreStill(std::uint32_t slot, std::u16string_view name,
                  std::span<const std::uint8_t> frame);
  /// An empty slot has no name and gets none.
  void RenameStill(std::uint32_t slot, std::u16string_view name);
  void ClearStill(std::uint32_t slot);
  void ChangeVideoMode(std::uint32_t mode);

  // What the equipment shows.
  PoolContents Contents() const;
  /// The frame in a slot, rows of width * 4 bytes; empty for an empty slot. Throws `PoolError`
  /// when the pool's file cannot be read.
  std::vector<std::uint8_t> Frame(std::uint32_t slot) const;
  /// Why the pool could not keep a change, the last time that it could not; empty as long as it
  /// kept all. Clients only learn that something failed.
  std::string PoolFailure() const;
  /// Service objects that clients hold.
  std::uint32_t LiveObjects() const;

 private:
  std::shared_ptr<Switcher> switcher_;
};

}  // namespace mixdecks::simulator
