#include "dialog/ui_command_handler_win.h"

#include <string>

#include "dialog/connection_view.h"
#include "dialog/control_access.h"
#include "dialog/host_window.h"
#include "dialog/slot_list.h"
#include "dialog/text_conversion.h"
#include "platform/four_character_code.h"
#include "platform/message_box.h"

namespace mixdecks {
namespace {

constexpr std::uint32_t kReasonFirmwareUpdate = FourCharacterCode("cfif");

constexpr int kMediaPlayerRadios[] = {kMediaPlayer1Radio, kMediaPlayer2Radio, kMediaPlayer3Radio,
                                      kMediaPlayer4Radio};

/// Takes away the choice of players that the switcher does not have; the check marks stay.
void LimitMediaPlayers(WindowOperations& window, std::int32_t count) {
  if (count < 0) return;
  for (std::size_t i = static_cast<std::size_t>(count); i < std::size(kMediaPlayerRadios); ++i) {
    window.EnableControl(kMediaPlayerRadios[i], false);
  }
}

}  // namespace

void UICommandHandlerWin::OnConnectResult(bool connected, std::uint32_t reason,
                                          std::uint32_t stillsCount,
                                          std::int32_t mediaPlayerCount) {
  ExportDialogState& state = state_;
  WindowOperations& window = window_;
  state.connectInProgress = false;
  if (connected) {
    FillSlotList(window, stillsCount);
    SetControlsConnected(window, state);
    LimitMediaPlayers(window, mediaPlayerCount);
  } else {
    if (reason == kReasonFirmwareUpdate) {
      ShowMessageBox(HostWindow(globals_),
                     "Please connect the switcher via USB and run the ORVA Switcher Utility",
                     "ORVA Switcher software update required", kMessageBoxIconError);
      if (state.uiHandler == nullptr) return;
    } else {
      // No pause: the attempt itself took as long as the service waits for an answer.
      state.connectPending = true;
    }
    SetControlsDisconnected(window);
  }
  TryConnect(window, state);
}

void UICommandHandlerWin::OnExportFinished(bool success) {
  window_.StopTimer(kExportTimer);
  if (success) {
    // Posted, since closing needs the worker, which waits for this operation to return.
    window_.Post(kWmClose, 0, 0);
  } else {
    SetControlsConnected(window_, state_);
  }
}

void UICommandHandlerWin::OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) {
  ReplaceSlot(window_, slot, inUse, name);
  // Deleting an item can lose the selection.
  SelectIndex(window_, kSlotList, state_.stillIndex);
}

void UICommandHandlerWin::OnDisconnected() {
  SetControlsDisconnected(window_);
  window_.StopTimer(kExportTimer);
  state_.connectPending = true;
  TryConnect(window_, state_);
}

void UICommandHandlerWin::OnMessageBox(const char16_t* caption, const char16_t* message) {
  const std::string narrowMessage = NarrowText(message);
  const std::string narrowCaption = NarrowText(caption);
  ShowMessageBox(HostWindow(globals_), narrowMessage.c_str(), narrowCaption.c_str(),
                 kMessageBoxIconError);
}

}  // namespace mixdecks
