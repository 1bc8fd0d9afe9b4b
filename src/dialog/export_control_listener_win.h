// Wakes the dialog's thread when a result waits for it.
#pragma once

#include "control/export_control_listener.h"
#include "dialog/window_messages.h"
#include "dialog/window_operations.h"

namespace mixdecks {

/// Called on the worker; the window outlives the listener.
class ExportControlListenerWin final : public ExportControlListener {
 public:
  explicit ExportControlListenerWin(WindowOperations& window) noexcept : window_(window) {}
  void WakeUIThread() override { window_.Post(kWmApp, 0, 0); }

 private:
  WindowOperations& window_;
};

}  // namespace mixdecks
