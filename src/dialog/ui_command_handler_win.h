// Applies results from the switcher to the open export dialog.
//
// Every operation runs on the dialog's thread while the worker waits for it. A message box runs
// messages of its own: the user may close the dialog under it, and with it this object. So an
// operation that showed one looks at the state before it goes on.
#pragma once

#include "control/ui_command_handler.h"
#include "dialog/export_dialog_state.h"
#include "dialog/window_operations.h"
#include "host/export_record.h"

namespace mixdecks {

class UICommandHandlerWin final : public UICommandHandler {
 public:
  /// All three are borrowed and outlive the object.
  UICommandHandlerWin(WindowOperations& window, ExportDialogState& state,
                      ExportGlobals* globals) noexcept
      : window_(window), state_(state), globals_(globals) {}

  void OnConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                       std::int32_t mediaPlayerCount) override;
  void OnExportFinished(bool success) override;
  void OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) override;
  void OnDisconnected() override;
  void OnMessageBox(const char16_t* caption, const char16_t* message) override;

 private:
  WindowOperations& window_;
  ExportDialogState& state_;
  ExportGlobals* globals_;
};

}  // namespace mixdecks
