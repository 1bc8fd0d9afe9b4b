#include "dialog/export_dialog.h"

#include <array>
#include <new>
#include <string>
#include <utility>

#include "dialog/address_text.h"
#include "dialog/centre_dialog.h"
#include "dialog/connection_view.h"
#include "dialog/control_access.h"
#include "dialog/export_control_listener_win.h"
#include "dialog/host_window.h"
#include "dialog/preferences.h"
#include "dialog/still_name.h"
#include "dialog/text_conversion.h"
#include "dialog/ui_command_handler_win.h"
#include "platform/message_box.h"
#include "transfer/image_scaler.h"

namespace mixdecks {
namespace {

constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kRed = 0x0000FF;

constexpr std::size_t kAddressBufferUnits = 64;
constexpr std::size_t kNameBufferUnits = 256;
constexpr std::uint32_t kStatusMilliseconds = 500;
constexpr std::int32_t kStatusPhases = 3;
constexpr const char16_t* kStatusTexts[kStatusPhases] = {u"Exporting.", u"Exporting..",
                                                         u"Exporting..."};

constexpr char kNoMemoryText[] =
    "There is not enough memory available to run ORVA Switcher Media Pool";
constexpr char kServiceMissingText[] =
    "Your Mixdecks installation is missing some components, please try re-installing the "
    "Tollenmark ORVA Software.";

}  // namespace

std::intptr_t ExportDialog::ExportDialogProc(WindowOperations& window, std::uint32_t message,
                                             std::uintptr_t first, std::intptr_t second) {
  // No exception may pass through the window system's frames below.
  try {
    return HandleMessage(window, message, first, second);
  } catch (const std::bad_alloc&) {
    // Closed first: that gives memory back, and nothing can go wrong again below the box.
    CloseExportDialog(window, 0);
    ShowMessageBox(HostWindow(globals_), kNoMemoryText, "Error", kMessageBoxIconError);
    return 1;
  }
}

std::intptr_t ExportDialog::HandleMessage(WindowOperations& window, std::uint32_t message,
                                          std::uintptr_t first, std::intptr_t second) {
  switch (message) {
    case kWmClose:
      CloseExportDialog(window, 0);
      return 1;
    case kWmChar:
      if (first == kKeyEscape) CloseExportDialog(window, 0);
      return 1;
    case kWmInitDialog:
      globals_ = reinterpret_cast<ExportGlobals*>(second);
      InitExportDialog(window);
      return 1;
    case kWmTimer:
      ShowNextStatus(window);
      return 1;
    case kWmApp:
      if (state_.exportControl != nullptr) {
        state_.exportControl->RunPendingUICommand(state_.uiHandler.get());
      }
      return 1;
    case kWmCtlColorEdit:
      if (window.IsControl(second, kAddressEdit)) {
        window.SetTextColour(first, state_.addressIsValid ? kBlack : kRed);
        return window.DeviceContextBrush();
      }
      // Any other edit's device context is read as a command, as it always was.
      [[fallthrough]];
    case kWmCommand:
      return HandleCommand(window, first);
    default:
      return 0;
  }
}

void ExportDialog::InitExportDialog(WindowOperations& window) {
  StartImageScaler();
  try {
    CreateControl(window);
  } catch (int) {
    ShowMessageBox(HostWindow(globals_), kServiceMissingText, "Corrupt Installation Detected",
                   kMessageBoxIconError);
    CloseExportDialog(window, 0);
    return;
  }
  LoadPreferences(*services_.preferences, state_);
  // Reports a change of the address, and so starts the first connect.
  SetControlText(window, kAddressEdit, state_.switcherAddress.Get());
  window.SendToControl(kAddressEdit, kEmLimitText, kLongestAddress, 0);
  window.InstallCharacterMask(kAddressEdit, ".0123456789\b", true);
  SetChecked(window, kPremultiplyCheck, state_.premultiplyAlpha);
  SetChecked(window, kAfterExportRadios[state_.afterExportChoice], true);
  ProposeStillName(window);
  CentreDialog(window);
  SetControlsDisconnected(window);
}

void ExportDialog::CreateControl(WindowOperations& window) {
  state_.exportControl = ExportControl::Create(globals_, services_.control);
  // A connect that the dialog before this one left unanswered belongs to another control.
  state_.connectInProgress = false;
  state_.uiHandler = std::make_unique<UICommandHandlerWin>(window, state_, globals_);
  state_.exportListener = std::make_unique<ExportControlListenerWin>(window);
  if (state_.exportControl == nullptr) return;
  state_.exportControl->SetListener(state_.exportListener.get());
  state_.exportControl->SetHostRecord(globals_->record);
}

void ExportDialog::ProposeStillName(WindowOperations& window) {
  const std::u16string name = WideText(CutStillName(globals_->record->fileName));
  SetControlText(window, kNameEdit, name.c_str());
}

void ExportDialog::CloseExportDialog(WindowOperations& window, std::intptr_t result) {
  SavePreferences(*services_.preferences, state_);
  if (ExportControl* control = std::exchange(state_.exportControl, nullptr)) {
    control->SetHostRecord(nullptr);
    control->SetListener(nullptr);
    control->Release();
  }
  state_.exportListener.reset();
  state_.uiHandler.reset();
  StopImageScaler();
  state_.switcherAddress = Text();
  window.End(result);
}

std::intptr_t ExportDialog::HandleCommand(WindowOperations& window, std::uintptr_t first) {
  switch (static_cast<int>(first & 0xFFFF)) {
    case kCloseButton:
      CloseExportDialog(window, 0);
      return 1;
    case kAddressEdit:
      if ((first >> 16 & 0xFFFF) == kEnChange) ValidateAddress(window);
      return 1;
    case kDoNothingRadio:
    case kMediaPlayer1Radio:
    case kMediaPlayer2Radio:
    case kMediaPlayer3Radio:
    case kMediaPlayer4Radio:
      ReadAfterExportChoice(window);
      return 1;
    case kSlotList:
      state_.stillIndex = SelectedIndex(window, kSlotList);
      return 1;
    case kExportButton:
      StartExport(window);
      return 1;
    case kPremultiplyCheck:
      state_.premultiplyAlpha = IsChecked(window, kPremultiplyCheck);
      return 1;
    default:
      return 0;
  }
}

void ExportDialog::ValidateAddress(WindowOperations& window) {
  std::array<char16_t, kAddressBufferUnits> buffer;
  const std::size_t length = ReadControlText(window, kAddressEdit, buffer, kAddressBufferUnits - 1);
  const std::u16string_view text(buffer.data(), length);
  const bool valid = IsAddressText(text);
  if (valid != state_.addressIsValid) {
    state_.addressIsValid = valid;
    window.RedrawControl(kAddressEdit);
  }
  state_.connectPending = valid;
  if (valid) {
    state_.switcherAddress = Text(text);
    TryConnect(window, state_);
  } else {
    SetControlsDisconnected(window);
  }
}

void ExportDialog::ReadAfterExportChoice(WindowOperations& window) {
  for (std::uint32_t choice = 0; choice < std::size(kAfterExportRadios); ++choice) {
    if (IsChecked(window, kAfterExportRadios[choice])) {
      state_.afterExportChoice = choice;
      return;
    }
  }
}

void ExportDialog::StartExport(WindowOperations& window) {
  if (state_.exportControl == nullptr) return;
  const std::int32_t slot = SelectedIndex(window, kSlotList);
  SetControlsExporting(window);
  std::array<char16_t, kNameBufferUnits> name;
  ReadControlText(window, kNameEdit, name, kNameBufferUnits - 1);
  window.StartTimer(kExportTimer, kStatusMilliseconds);
  state_.exportControl->Export(name.data(), static_cast<std::uint32_t>(slot),
                               state_.premultiplyAlpha,
                               static_cast<std::int32_t>(state_.afterExportChoice) - 1);
}

void ExportDialog::ShowNextStatus(WindowOperations& window) {
  state_.exportingDotCounter = (state_.exportingDotCounter + 1) % kStatusPhases;
  SetControlText(window, kStatusLine, kStatusTexts[state_.exportingDotCounter]);
}

}  // namespace mixdecks
