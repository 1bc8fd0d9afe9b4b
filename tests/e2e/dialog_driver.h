// A user in front of the real dialogs: finds windows of the thread that runs the plug-in, looks at
// them and operates them by window messages from another thread.
//
// What takes time is waited for with a limit; a limit that is passed fails the test, and the
// driver then goes on so that the dialog still gets closed.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mixdecks::e2e {

/// An open message box.
struct MessageBoxView {
  HWND window = nullptr;
  HWND owner = nullptr;
  std::string text;
  std::string caption;
  bool isError = false;  ///< the error icon, and nothing to answer but OK
};

class DialogDriver {
 public:
  /// Looks at the windows of thread `pluginThread` until `ended` becomes true.
  DialogDriver(DWORD pluginThread, const std::atomic<bool>& ended)
      : pluginThread_(pluginThread), ended_(ended) {}

  /// Waits, and fails the test with `what` when it takes too long or the selector has returned.
  /// Then waits until the dialog is done with the message that made it so.
  bool WaitUntil(const char* what, const std::function<bool()>& condition);

  // The export dialog. It is found by its controls once it is open.
  bool WaitForDialog();
  bool WaitUntilConnected();
  /// The button is pressed and its work begun, or done.
  bool WaitUntilExporting();
  /// The button may be pressed again.
  bool WaitUntilUsable();
  bool WaitUntilClosed();
  HWND Window() const noexcept { return dialog_; }
  HWND Control(int control) const { return GetDlgItem(dialog_, control); }

  std::u16string Caption() const { return TextOf(dialog_); }
  std::u16string Text(int control) const { return TextOf(Control(control)); }
  bool IsEnabled(int control) const { return IsWindowEnabled(Control(control)) != FALSE; }
  bool IsChecked(int control) const;
  std::vector<std::u16string> Slots() const;
  int SelectedSlot() const;
  /// The colour in which an edit draws its text, asked of the dialog as the edit asks.
  std::optional<COLORREF> TextColour(int edit) const;
  RECT Rectangle() const;
  /// The controls, of those that are ever disabled, that are disabled now.
  std::vector<int> DisabledControls() const;

  /// Posts characters to an edit, one message each; returns before they are worked off.
  void TypeKeys(int edit, const std::u16string& keys) const;
  /// Replaces all of an edit's text past what the keyboard is held to: mask and limit.
  void PasteOver(int edit, const std::u16string& text) const;
  void ChooseSlot(int index) const;
  /// Presses a button; returns before the press is worked off.
  void Press(int button) const;
  /// Closes the dialog as its Close button does; returns at once.
  void PressClose() const;

  // Message boxes.
  std::optional<MessageBoxView> WaitForBox();
  /// Presses OK and waits until the box is gone.
  void Answer(const MessageBoxView& box);
  /// The boxes that are open now.
  std::vector<MessageBoxView> Boxes() const;

  // The about box.
  HWND WaitForAboutBox();

  /// Answers boxes and closes dialogs until the selector has returned.
  void CloseEverything();

 private:
  std::vector<HWND> DialogWindows() const;
  std::u16string TextOf(HWND window) const;
  /// Waits until a window's thread is between two messages, as far as patience goes.
  static void Settle(HWND window);

  DWORD pluginThread_;
  const std::atomic<bool>& ended_;
  HWND dialog_ = nullptr;
};

}  // namespace mixdecks::e2e
