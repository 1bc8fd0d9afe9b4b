// The object behind `CreateSwitcherTransfer`, with the callback tables that the service sees.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "control/switcher_side.h"
#include "platform/text.h"
#include "transfer/callback_gate.h"
#include "transfer/connect_chain.h"
#include "transfer/service_session.h"
#include "transfer/switcher_connection.h"

namespace mixdecks {

/// Thrown when the switcher service cannot be created.
inline constexpr int kServiceAbsent = 1;

/// The lock callback's table with the owner's destructor as its slot 4, behind `Locked`.
class DestructibleLockCallback : public ITMKSwitcherLockCallback {
 public:
  virtual ~DestructibleLockCallback() = default;
};

/// Owns the connection to one switcher and all objects of the service.
///
/// Created and destroyed on the front end's thread, driven by the worker; connect threads are its
/// own, callbacks come on threads of the service. `transferMutex` guards every field that more than
/// one of them uses. It is never held while a result is posted, and a callback takes no other lock
/// beside it, so no thread can wait for another in a circle.
///
/// The four callback tables count no references: callbacks are removed before the object closes,
/// and closing waits for those that are still inside.
class SwitcherTransfer final : public DestructibleLockCallback,
                               public ITMKSwitcherMediaPoolCallback,
                               public ITMKSwitcherCallback,
                               public ITMKSwitcherStillsCallback,
                               public SwitcherSide {
 public:
  /// Throws `kServiceAbsent` when the service cannot be created; if the service itself reported
  /// success but gave no object, a message box on the host's window says so first.
  SwitcherTransfer(ExportGlobals* hostContext, ExportControl& control);
  /// Closes.
  ~SwitcherTransfer() override;
  SwitcherTransfer(const SwitcherTransfer&) = delete;
  SwitcherTransfer& operator=(const SwitcherTransfer&) = delete;

  /// Ends all threads and callbacks of the object and gives back everything of the service's. Takes
  /// as long as the service takes to give up connecting. A callback that the service begins after
  /// that, because it had looked the callback up before, is answered and does nothing. The thread
  /// that created the object.
  void Close() noexcept;

  // SwitcherSide, on the worker.
  HResult Connect(const char16_t* address) override;
  HResult Export(StillExport still) override;

  // All callback tables.
  HResult QueryInterface(const ServiceId& id, void** object) override;
  std::uint32_t AddRef() override;
  std::uint32_t Release() override;
  HResult Locked() override;
  HResult Ignored3() override;
  HResult Ignored4() override;
  HResult Notify(std::uint32_t event) override;
  HResult Notify(std::uint32_t event, void* ignored, std::uint32_t slot) override;

 private:
  /// One connect thread and the address that it tries.
  struct ConnectAttempt {
    SwitcherTransfer& transfer;
    Text address;
    WaitThread thread{};
    std::atomic<bool> ended{false};  ///< the thread will not touch `transfer` any more
  };
  using ConnectAttempts = std::vector<std::unique_ptr<ConnectAttempt>>;

  bool StartConnecting(const char16_t* address);
  ConnectAttempts TakeEndedAttempts();
  static void Join(const ConnectAttempts& attempts) noexcept;
  static int RunConnectAttempt(void* attempt);
  void RunConnectThread(ConnectAttempt& attempt);
  void StoreConnection(ConnectOutcome& outcome);
  void PostAllStills(std::uint32_t count);

  /// With `transferMutex` held: removes the callbacks from what is connected and releases it.
  void Disconnect();
  ServicePointer<ITMKSwitcherStills> ShareStills();
  void RefreshStillInfo(std::uint32_t slot);
  void PostStill(ITMKSwitcherStills& stills, std::uint32_t slot);

  HResult RequestUpload(const StillExport& still, ServicePointer<ITMKSwitcherFrame> frame);
  void FinishUpload(bool completed, std::uint32_t slot);
  HResult ApplyToMediaPlayer(std::int32_t player, std::uint32_t slot);

  // In the order they are made.
  ExportControl& control_;
  SwitcherConnection connection_;
  CallbackGate gate_;
  std::optional<ServiceSession> session_;
  ServicePointer<ITMKSwitcherDiscovery> discovery_;
  std::atomic<std::int32_t> mediaPlayer_{0};  ///< of the current export; negative for none

  // Guarded by `transferMutex`.
  ServicePointer<ITMKSwitcherFrame> frame_;  ///< of the upload in progress
  Text pendingName_;                         ///< of the current export
  std::uint32_t pendingSlot_ = static_cast<std::uint32_t>(-1);
  ConnectAttempts attempts_;  ///< threads that nobody has joined
  bool closing_ = false;
};

}  // namespace mixdecks
