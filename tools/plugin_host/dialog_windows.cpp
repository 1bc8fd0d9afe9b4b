#include "tools/plugin_host/dialog_windows.h"

#include "dialog/window_messages.h"

namespace mixdecks {
namespace {

/// The number of a message box's text.
constexpr int kBoxText = 0xFFFF;

BOOL CALLBACK CollectDialog(HWND window, LPARAM windows) {
  wchar_t className[16] = {};
  GetClassNameW(window, className, 16);
  if (std::wstring_view(className) == L"#32770") {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  }
  return TRUE;
}

bool Has(HWND dialog, int control) {
  return GetDlgItem(dialog, control) != nullptr;
}

LRESULT Ask(HWND dialog, int control, UINT message, WPARAM first = 0, LPARAM second = 0) {
  return SendMessageW(GetDlgItem(dialog, control), message, first, second);
}

void Report(HWND dialog, int control, std::uint32_t notification) {
  SendMessageW(dialog, WM_COMMAND, CommandParameter(control, notification),
               reinterpret_cast<LPARAM>(GetDlgItem(dialog, control)));
}

}  // namespace

std::vector<HWND> DialogsOfThread(DWORD thread) {
  std::vector<HWND> windows;
  EnumThreadWindows(thread, CollectDialog, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

bool IsExportDialog(HWND dialog) {
  return Has(dialog, kExportButton);
}

bool IsAboutBox(HWND dialog) {
  return Has(dialog, kAboutVersion);
}

std::optional<OpenMessageBox> AsMessageBox(HWND dialog) {
  if (!Has(dialog, kBoxText) || IsExportDialog(dialog) || IsAboutBox(dialog)) return std::nullopt;
  OpenMessageBox box{dialog, WindowText(dialog), ControlText(dialog, kBoxText)};
  if (box.text.empty()) return std::nullopt;
  return box;
}

std::u16string WindowText(HWND window) {
  const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
  std::u16string text(static_cast<std::size_t>(length), u'\0');
  // The text may have become shorter meanwhile.
  const LRESULT copied = SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(length) + 1,
                                      reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(copied));
  return text;
}

bool IsControlEnabled(HWND dialog, int control) {
  SendMessageW(dialog, WM_NULL, 0, 0);
  return IsWindowEnabled(GetDlgItem(dialog, control)) != FALSE;
}

bool IsControlChecked(HWND dialog, int control) {
  return Ask(dialog, control, BM_GETCHECK) == BST_CHECKED;
}

std::u16string ControlText(HWND dialog, int control) {
  return WindowText(GetDlgItem(dialog, control));
}

int ListCount(HWND dialog, int list) {
  return static_cast<int>(Ask(dialog, list, CB_GETCOUNT));
}

int ListSelection(HWND dialog, int list) {
  return static_cast<int>(Ask(dialog, list, CB_GETCURSEL));
}

void PasteOver(HWND dialog, int edit, const std::u16string& text) {
  Ask(dialog, edit, EM_SETSEL, 0, -1);
  Ask(dialog, edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

void ChooseInList(HWND dialog, int list, int index) {
  Ask(dialog, list, CB_SETCURSEL, static_cast<WPARAM>(index));
  Report(dialog, list, kCbnSelChange);
}

void SetChecked(HWND dialog, int checkBox, bool checked) {
  Ask(dialog, checkBox, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
  Report(dialog, checkBox, kBnClicked);
}

void ChooseRadio(HWND dialog, std::span<const int> group, int chosen) {
  for (const int radio : group)
    Ask(dialog, radio, BM_SETCHECK, radio == chosen ? BST_CHECKED : BST_UNCHECKED);
  Report(dialog, chosen, kBnClicked);
}

void PressButton(HWND dialog, int button) {
  Report(dialog, button, kBnClicked);
}

void PostButton(HWND dialog, int button) {
  PostMessageW(dialog, WM_COMMAND, CommandParameter(button, kBnClicked),
               reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
}

}  // namespace mixdecks
