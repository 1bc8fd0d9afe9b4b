#include <functional>
#include <optional>

#include "dialog/about_dialog.h"
#include "dialog/dialogs.h"
#include "dialog/window_messages.h"
#include "dialog/window_operations_win.h"
#include "platform/module_handle.h"

namespace mixdecks {
namespace {

/// A dialog being run: what its window's user data points at from its initialisation on.
struct OpenDialog {
  std::function<std::intptr_t(WindowOperations&, std::uint32_t, std::uintptr_t, std::intptr_t)>
      procedure;
  std::intptr_t parameter = 0;
  std::optional<WindowOperationsWin> window;
};

INT_PTR CALLBACK ForwardMessage(HWND dialog, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, second);
    auto* opening = reinterpret_cast<OpenDialog*>(second);
    opening->window.emplace(dialog);
    return opening->procedure(*opening->window, message, first, opening->parameter);
  }
  // The window's making sends messages before the initialisation; they are the system's.
  auto* open = reinterpret_cast<OpenDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
  return open == nullptr ? 0 : open->procedure(*open->window, message, first, second);
}

std::intptr_t RunModal(int dialog, void* hostWindow, OpenDialog& open) {
  return DialogBoxParamW(static_cast<HINSTANCE>(ModuleHandle()), MAKEINTRESOURCEW(dialog),
                         static_cast<HWND>(hostWindow), ForwardMessage,
                         reinterpret_cast<LPARAM>(&open));
}

std::intptr_t RunAboutDialog(void* hostWindow) {
  OpenDialog open{AboutDialogProc, 0, std::nullopt};
  return RunModal(kAboutDialog, hostWindow, open);
}

std::intptr_t RunExportDialog(void* hostWindow, ExportGlobals* globals) {
  ExportDialog exportDialog(ModuleDialogState(), SystemDialogServices());
  OpenDialog open{std::bind_front(&ExportDialog::ExportDialogProc, &exportDialog),
                  reinterpret_cast<std::intptr_t>(globals), std::nullopt};
  return RunModal(kExportDialog, hostWindow, open);
}

}  // namespace

HostDialogs SystemDialogs() {
  return {RunAboutDialog, RunExportDialog};
}

}  // namespace mixdecks
