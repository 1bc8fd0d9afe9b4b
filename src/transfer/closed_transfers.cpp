#include "transfer/closed_transfers.h"

#include <array>
#include <mutex>
#include <utility>

namespace mixdecks {

void CloseTransfer(std::unique_ptr<SwitcherTransfer> transfer) noexcept {
  static std::mutex mutex;
  static std::array<std::unique_ptr<SwitcherTransfer>, 8> kept;
  static std::size_t oldest = 0;

  transfer->Close();
  const std::lock_guard lock(mutex);
  kept[oldest] = std::move(transfer);
  oldest = (oldest + 1) % kept.size();
}

}  // namespace mixdecks
