#include "tools/interrupt.h"

#include <atomic>
#include <csignal>

namespace mixdecks {
namespace {

std::atomic<bool> interruptRequested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may store it");

extern "C" void NoteInterrupt(int signal) {
  interruptRequested.store(true);
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

void SetInterruptRequested(bool requested) noexcept {
  interruptRequested.store(requested);
}

}  // namespace mixdecks
