// Ctrl-C as a wish to end well: what runs is closed in order, and what is written stays whole.
#pragma once

namespace mixdecks {

/// From now on the first Ctrl-C is only noted; the second ends the process at once.
void WatchForInterrupt();

/// Whether Ctrl-C was pressed since `WatchForInterrupt`. Any thread.
bool InterruptRequested() noexcept;

/// For tests: notes an interrupt, or forgets one.
void SetInterruptRequested(bool requested) noexcept;

}  // namespace mixdecks
