// Ctrl-C as a wish to end well: what runs is closed in order, and what is written stays whole.
#pragma once

namespace mixdecks {

/// From now on the first Ctrl-C is only noted; the second ends the process at once.
void WatchForInterrupt();

/// Whether Ctrl-C was pressed since `WatchForInterrupt`. Any thread.
bool InterruptRequested() noexcept;

/// While it lives, Ctrl-C ends the process at once with exit code 130: for waiting that nothing can
/// wake, as long as there is nothing to close. Throws `UserError` when Ctrl-C was pressed already.
class InterruptEndsProcess {
 public:
  InterruptEndsProcess();
  ~InterruptEndsProcess();
  InterruptEndsProcess(const InterruptEndsProcess&) = delete;
  InterruptEndsProcess& operator=(const InterruptEndsProcess&) = delete;
};

/// For tests: notes an interrupt, or forgets one.
void SetInterruptRequested(bool requested) noexcept;

}  // namespace mixdecks
