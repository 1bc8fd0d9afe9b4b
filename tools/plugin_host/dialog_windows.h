// The plug-in's real dialogs from outside: which of them are open on a thread, what they show, and
// what a user does to their controls. Any thread but the dialogs' own.
//
// Texts are asked for with messages, which the dialog's thread answers between two of its own
// steps: no half-done change is seen in them. Buttons are not clicked but reported as clicked,
// which does not need the dialog to be the active window.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace mixdecks {

/// The dialogs, message boxes included, that thread `thread` has open.
std::vector<HWND> DialogsOfThread(DWORD thread);

/// An open message box.
struct OpenMessageBox {
  HWND window = nullptr;
  std::u16string caption;
  std::u16string text;
};

// What one of the dialogs is, told by its controls.
bool IsExportDialog(HWND dialog);
bool IsAboutBox(HWND dialog);
/// Nothing when the dialog is no message box, or one that is still being made.
std::optional<OpenMessageBox> AsMessageBox(HWND dialog);

/// A window's text or caption.
std::u16string WindowText(HWND window);

// A dialog's controls, by number.
bool IsControlEnabled(HWND dialog, int control);
bool IsControlChecked(HWND dialog, int control);
std::u16string ControlText(HWND dialog, int control);
int ListCount(HWND dialog, int list);
int ListSelection(HWND dialog, int list);

/// Replaces all of an edit's text as pasting does.
void PasteOver(HWND dialog, int edit, const std::u16string& text);
/// Returns once the dialog knows of the choice.
void ChooseInList(HWND dialog, int list, int index);
void SetChecked(HWND dialog, int checkBox, bool checked);
/// Chooses one of a group of radio buttons.
void ChooseRadio(HWND dialog, std::span<const int> group, int chosen);
/// Presses a push button and returns when the dialog has dealt with it.
void PressButton(HWND dialog, int button);
/// The same without waiting.
void PostButton(HWND dialog, int button);

}  // namespace mixdecks
