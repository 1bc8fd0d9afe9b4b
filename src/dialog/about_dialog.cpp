#include "dialog/about_dialog.h"

#include "dialog/centre_dialog.h"
#include "dialog/control_access.h"
#include "dialog/text_conversion.h"

namespace mixdecks {
namespace {

void InitAboutDialog(WindowOperations& window) {
  SetControlText(window, kAboutVersion, u"Version 1.0");
  SetControlText(window, kAboutNotice, WideText(kLegalNotice).c_str());
  CentreDialog(window);
}

/// A modal dialog's loop turns escape and return into these before they become characters.
bool IsClosingCommand(std::uintptr_t first) {
  const int command = static_cast<int>(first & 0xFFFF);
  return command == kOkCommand || command == kCloseButton;
}

}  // namespace

std::intptr_t AboutDialogProc(WindowOperations& window, std::uint32_t message, std::uintptr_t first,
                              std::intptr_t /*second*/) {
  switch (message) {
    case kWmInitDialog:
      InitAboutDialog(window);
      return 1;
    case kWmChar:
      if (first == kKeyEscape || first == kKeyReturn) window.End(0);
      return 1;
    case kWmLeftButtonDown:
      window.End(0);
      return 1;
    case kWmCommand:
      if (!IsClosingCommand(first)) return 0;
      window.End(0);
      return 1;
    default:
      return 0;
  }
}

}  // namespace mixdecks
