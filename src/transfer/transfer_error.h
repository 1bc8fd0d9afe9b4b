// What can go wrong between an image and its upload, and what the user is told.
#pragma once

#include <cstdint>

namespace mixdecks {

class ExportControl;

enum class TransferError : std::uint32_t {
  kNone = 0,
  kNoMemory = 1,
  kStepFailed = 2,
  kVideoModeUnreadable = 3,
  kConnectionImpossible = 4,
  kUnknown = 5,
};

/// Posts the error's message box; posts nothing for `kNone`. Any thread, with no lock held.
void ReportTransferError(ExportControl& control, TransferError error);

}  // namespace mixdecks
