// The export dialog: the one window in which the user gives the switcher's address, a still name
// and a slot, and presses Export.
//
// The host's main thread runs all of it. It never talks to the switcher: it pushes commands to
// ExportControl, whose results UICommandHandlerWin applies.
#pragma once

#include <cstdint>

#include "dialog/export_dialog_state.h"
#include "dialog/preferences_store.h"
#include "dialog/window_operations.h"
#include "host/export_record.h"

namespace mixdecks {

/// What the dialog works with besides its window.
struct ExportDialogServices {
  ExportControlParts control;
  PreferencesStore* preferences = nullptr;
};

class ExportDialog {
 public:
  /// `state` outlives the dialog and carries over to the next; `services` is used at opening and
  /// at closing. Both are borrowed.
  ExportDialog(ExportDialogState& state, const ExportDialogServices& services) noexcept
      : state_(state), services_(services) {}

  /// Handles one message of the dialog that `window` stands for. For the first one, the dialog's
  /// initialisation, `second` points at the `ExportGlobals`. The result is the message's own:
  /// non-zero when it was handled, a brush for the colour of an edit. Without memory the dialog
  /// closes and says so; no exception leaves.
  std::intptr_t ExportDialogProc(WindowOperations& window, std::uint32_t message,
                                 std::uintptr_t first, std::intptr_t second);

 private:
  std::intptr_t HandleMessage(WindowOperations& window, std::uint32_t message, std::uintptr_t first,
                              std::intptr_t second);
  void InitExportDialog(WindowOperations& window);
  void CloseExportDialog(WindowOperations& window, std::intptr_t result);
  void CreateControl(WindowOperations& window);
  void ProposeStillName(WindowOperations& window);

  std::intptr_t HandleCommand(WindowOperations& window, std::uintptr_t first);
  void ValidateAddress(WindowOperations& window);
  void ReadAfterExportChoice(WindowOperations& window);
  void StartExport(WindowOperations& window);
  void ShowNextStatus(WindowOperations& window);

  ExportDialogState& state_;
  const ExportDialogServices& services_;
  ExportGlobals* globals_ = nullptr;  ///< from the initialisation on
};

}  // namespace mixdecks
