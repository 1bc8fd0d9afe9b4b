// What the export dialog keeps: part of it for one opening, part of it as long as the library
// stays loaded. The dialog's thread alone reads and writes it; no lock guards it.
#pragma once

#include <cstdint>
#include <memory>

#include "control/export_control.h"
#include "control/export_control_listener.h"
#include "control/ui_command_handler.h"
#include "platform/text.h"

namespace mixdecks {

struct ExportDialogState {
  // The open dialog's objects; null while none is open. The control may be null in an open
  // dialog too, and then nothing reaches a switcher.
  ExportControl* exportControl = nullptr;
  std::unique_ptr<UICommandHandler> uiHandler;
  std::unique_ptr<ExportControlListener> exportListener;

  Text switcherAddress;                 ///< the last valid address; kept in the preferences
  std::int32_t stillIndex = 0;          ///< last selection in the slot list; kept likewise
  std::uint32_t afterExportChoice = 0;  ///< 0 nothing, 1 to 4 that media player
  bool premultiplyAlpha = true;
  bool addressIsValid = true;            ///< colour of the address
  bool connectPending = false;           ///< a connect is wanted
  bool connectInProgress = false;        ///< a connect was pushed and has no result yet
  std::int32_t exportingDotCounter = 0;  ///< phase of the status animation
};

}  // namespace mixdecks
