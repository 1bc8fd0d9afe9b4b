#include "tools/interrupt.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#include "tools/user_error.h"

namespace mixdecks {
namespace {

std::atomic<bool> interruptRequested = false;
std::atomic<bool> endAtOnce = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may store it");

extern "C" void NoteInterrupt(int signal) {
  interruptRequested.store(true);
  if (endAtOnce.load()) std::_Exit(kExitInterrupted);
  std::signal(signal, SIG_DFL);
}

}  // namespace

void WatchForInterrupt() {
  std::signal(SIGINT, NoteInterrupt);
  std::signal(SIGTERM, NoteInterrupt);
}

bool InterruptRequested() noexcept {
  return interruptRequested.load();
}

InterruptEndsProcess::InterruptEndsProcess() {
  endAtOnce.store(true);
  if (!InterruptRequested()) return;
  endAtOnce.store(false);
  throw UserError(kExitInterrupted, "standard input", "interrupted while reading it", "");
}

InterruptEndsProcess::~InterruptEndsProcess() {
  endAtOnce.store(false);
}

void SetInterruptRequested(bool requested) noexcept {
  interruptRequested.store(requested);
}

}  // namespace mixdecks
