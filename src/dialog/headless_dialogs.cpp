#include <utility>

#include "dialog/about_dialog.h"
#include "dialog/dialogs.h"

namespace mixdecks {
namespace {

HeadlessUser headlessUser;

std::intptr_t RunHeadlessAboutDialog(void* /*hostWindow*/) {
  HeadlessDialog dialog(kAboutDialogTemplate, AboutDialogProc);
  return dialog.RunModal(0, headlessUser);
}

std::intptr_t RunHeadlessExportDialog(void* /*hostWindow*/, ExportGlobals* globals) {
  ExportDialog exportDialog(ModuleDialogState(), SystemDialogServices());
  HeadlessDialog dialog(kExportDialogTemplate, [&](WindowOperations& window, std::uint32_t message,
                                                   std::uintptr_t first, std::intptr_t second) {
    return exportDialog.ExportDialogProc(window, message, first, second);
  });
  return dialog.RunModal(reinterpret_cast<std::intptr_t>(globals), headlessUser);
}

}  // namespace

HostDialogs HeadlessDialogs() {
  return {RunHeadlessAboutDialog, RunHeadlessExportDialog};
}

HeadlessUser SetHeadlessUser(HeadlessUser user) {
  return std::exchange(headlessUser, std::move(user));
}

}  // namespace mixdecks
