#include "dialog/connection_view.h"

#include "dialog/control_access.h"

namespace mixdecks {
namespace {

/// What needs a switcher: all that the user can change but the address.
constexpr int kSwitcherControls[] = {
    kNameEdit,          kSlotList,          kPremultiplyCheck,  kDoNothingRadio, kMediaPlayer1Radio,
    kMediaPlayer2Radio, kMediaPlayer3Radio, kMediaPlayer4Radio, kExportButton,
};

}  // namespace

void SetControlsDisconnected(WindowOperations& window) {
  EnableControls(window, kSwitcherControls, false);
  // An export that was running had disabled the address, and only the user can correct it.
  window.EnableControl(kAddressEdit, true);
  SetControlText(window, kStatusLine, u"");
  window.SetCaption(u"No communication");
}

void SetControlsConnected(WindowOperations& window, const ExportDialogState& state) {
  SelectIndex(window, kSlotList, state.stillIndex);
  window.EnableControl(kAddressEdit, true);
  EnableControls(window, kSwitcherControls, true);
  window.SetCaption(u"ORVA Switcher Media Pool");
  SetControlText(window, kStatusLine, u"");
}

void SetControlsExporting(WindowOperations& window) {
  window.EnableControl(kAddressEdit, false);
  EnableControls(window, kSwitcherControls, false);
}

void TryConnect(WindowOperations& window, ExportDialogState& state) {
  if (state.exportControl == nullptr || !state.connectPending || state.connectInProgress) return;
  state.connectPending = false;
  SetControlsDisconnected(window);
  state.exportControl->Connect(state.switcherAddress.Get());
  state.connectInProgress = true;
}

}  // namespace mixdecks
