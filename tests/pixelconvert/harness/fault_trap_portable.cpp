#include <setjmp.h>
#include <signal.h>

#include <array>

#include "tests/pixelconvert/harness/fault_trap.h"

namespace mixdecks::proof {
namespace {

constexpr std::array kSignals = {SIGSEGV, SIGBUS, SIGILL};

std::array<struct sigaction, kSignals.size()> previousActions;
sigjmp_buf returnPoint;
volatile sig_atomic_t armed = 0;
Fault lastFault;

void RestorePreviousActions() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &previousActions[i], nullptr);
  }
}

void OnFault(int number, siginfo_t* info, void*) {
  if (armed == 0) {
    // A fault of the tests themselves: it happens again, to whoever handled it before us.
    RestorePreviousActions();
    return;
  }
  armed = 0;
  lastFault.kind = number == SIGILL ? FaultKind::kIllegalInstruction : FaultKind::kAccess;
  lastFault.address = reinterpret_cast<std::uintptr_t>(info->si_addr);
  siglongjmp(returnPoint, 1);
}

bool InstallHandlers() {
  struct sigaction action = {};
  action.sa_sigaction = OnFault;
  action.sa_flags = SA_SIGINFO;
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &action, &previousActions[i]);
  }
  return true;
}

}  // namespace

std::optional<Fault> RunTrapped(const std::function<void()>& code) {
  [[maybe_unused]] static const bool installed = InstallHandlers();
  // The jump restores the mask too: during the handler the signal is blocked.
  if (sigsetjmp(returnPoint, 1) != 0) return lastFault;
  armed = 1;
  code();
  armed = 0;
  return std::nullopt;
}

}  // namespace mixdecks::proof
