#include "transfer/transfer_error.h"

#include "control/export_control.h"

namespace mixdecks {
namespace {

const char16_t* MessageOf(TransferError error) {
  switch (error) {
    case TransferError::kNone:
      return nullptr;
    case TransferError::kNoMemory:
      return u"There is not enough memory available to run ORVA Switcher Media Pool";
    case TransferError::kStepFailed:
      return u"An error occured during export.";
    case TransferError::kVideoModeUnreadable:
      return u"Unable to export an image of this format. RGB 8/16 Bit Required. Resize the image "
             u"to be less than or equal to the current switcher resolution";
    case TransferError::kConnectionImpossible:
      return u"Unable to connect to the switcher device.";
    case TransferError::kUnknown:
      break;
  }
  return u"An unknown error has occured.";
}

}  // namespace

void ReportTransferError(ExportControl& control, TransferError error) {
  if (const char16_t* message = MessageOf(error)) control.PostMessageBox(u"Error", message);
}

}  // namespace mixdecks
