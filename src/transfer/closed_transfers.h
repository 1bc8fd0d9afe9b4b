// Where switcher transfers stay for a while after they were closed.
#pragma once

#include <memory>

#include "transfer/switcher_transfer_object.h"

namespace mixdecks {

/// Closes a transfer and keeps it until a few others were closed after it. The service counts no
/// references to its callbacks: a thread of it that looked one up before it was removed calls it
/// afterwards, and finds an object that answers. The thread that created the transfer.
void CloseTransfer(std::unique_ptr<SwitcherTransfer> transfer) noexcept;

}  // namespace mixdecks
