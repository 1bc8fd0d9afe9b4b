// The connect threads of a SwitcherTransfer. Each tries one address and stores what it found; of
// two that run at once the later one stays.

#include <algorithm>
#include <iterator>
#include <utility>

#include "control/export_control.h"
#include "transfer/switcher_transfer_object.h"

namespace mixdecks {

/// With `transferMutex` held. False when the system has no thread to give.
bool SwitcherTransfer::StartConnecting(const char16_t* address) {
  attempts_.push_back(
      std::unique_ptr<ConnectAttempt>(new ConnectAttempt{*this, Text::CopyOf(address)}));
  ConnectAttempt& attempt = *attempts_.back();
  if (StartWaitThread(attempt.thread, 0, RunConnectAttempt, &attempt) == 0) return true;
  attempts_.pop_back();
  return false;
}

/// With `transferMutex` held: what may be joined without waiting, so that reconnecting for hours
/// does not pile up threads.
SwitcherTransfer::ConnectAttempts SwitcherTransfer::TakeEndedAttempts() {
  const auto firstEnded = std::partition(attempts_.begin(), attempts_.end(),
                                         [](const auto& attempt) { return !attempt->ended; });
  ConnectAttempts ended(std::make_move_iterator(firstEnded),
                        std::make_move_iterator(attempts_.end()));
  attempts_.erase(firstEnded, attempts_.end());
  return ended;
}

void SwitcherTransfer::Join(const ConnectAttempts& attempts) noexcept {
  constexpr std::uint32_t kNoThread = 0;
  for (const auto& attempt : attempts) {
    JoinWaitThreadUnlessSelf(attempt->thread, nullptr, kNoThread);
  }
}

int SwitcherTransfer::RunConnectAttempt(void* argument) {
  auto& attempt = *static_cast<ConnectAttempt*>(argument);
  attempt.transfer.RunConnectThread(attempt);
  attempt.ended = true;
  return 0;
}

void SwitcherTransfer::RunConnectThread(ConnectAttempt& attempt) {
  ServicePointer<ITMKSwitcherDiscovery> discovery;
  {
    const WaitLock lock(connection_.transferMutex);
    discovery = discovery_.Share();
  }
  ConnectOutcome outcome = ConnectToSwitcher(*discovery.Get(), attempt.address.Get());
  StoreConnection(outcome);
  control_.PostConnectResult(outcome.connected, outcome.reason, outcome.stillsCount,
                             outcome.mediaPlayerCount);
  PostAllStills(outcome.stillsCount);
}

/// An attempt that ended in the meantime has stored a connection of its own, with callbacks.
void SwitcherTransfer::StoreConnection(ConnectOutcome& outcome) {
  if (!outcome.connected) return;
  const WaitLock lock(connection_.transferMutex);
  Disconnect();
  connection_.switcher = std::move(outcome.switcher);
  connection_.mediaPool = std::move(outcome.mediaPool);
  connection_.stills = std::move(outcome.stills);
  connection_.switcher->AddCallback(this);
  connection_.mediaPool->AddCallback(this);
  connection_.stills->AddCallback(this);
}

/// Stops when the switcher goes away, which any call may bring about.
void SwitcherTransfer::PostAllStills(std::uint32_t count) {
  for (std::uint32_t slot = 0; slot < count; ++slot) {
    const ServicePointer<ITMKSwitcherStills> stills = ShareStills();
    if (!stills) return;
    PostStill(*stills.Get(), slot);
  }
}

}  // namespace mixdecks
