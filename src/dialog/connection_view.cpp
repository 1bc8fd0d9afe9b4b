#include "dialog/connection_view.h"

#include "dialog/control_access.h"

namespace mixdecks {
namespace {

/// What the user chooses for an export, beside the address.
constexpr int kChoices[] = {
    kNameEdit,          kSlotList,          kPremultiplyCheck,  kDoNothingRadio,
    kMediaPlayer1Radio, kMediaPlayer2Radio, kMediaPlayer3Radio, kMediaPlayer4Radio,
};

}  // namespace

void SetControlsDisconnected(WindowOperations& window) {
  EnableControls(window, kChoices, false);
  // An export that was running had disabled the address, and only the user can correct it.
  window.EnableControl(kAddressEdit, true);
  SetControlText(window, kStatusLine, u"");
  window.EnableControl(kExportButton, false);
  window.SetCaption(u"No communication");
}

void SetControlsConnected(WindowOperations& window, const ExportDialogState& state) {
  SelectIndex(window, kSlotList, state.stillIndex);
  window.EnableControl(kAddressEdit, true);
  EnableControls(window, kChoices, true);
  window.EnableControl(kExportButton, true);
  window.SetCaption(u"ORVA Switcher Media Pool");
  SetControlText(window, kStatusLine, u"");
}

void SetControlsExporting(WindowOperations& window) {
  window.EnableControl(kAddressEdit, false);
  EnableControls(window, kChoices, false);
  window.EnableControl(kExportButton, false);
}

void TryConnect(WindowOperations& window, ExportDialogState& state) {
  if (state.exportControl == nullptr || !state.connectPending || state.connectInProgress) return;
  state.connectPending = false;
  SetControlsDisconnected(window);
  state.exportControl->Connect(state.switcherAddress.Get());
  state.connectInProgress = true;
}

}  // namespace mixdecks
