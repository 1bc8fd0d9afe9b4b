// The port to the window system: what the logic asks of one open dialog and its controls.
//
// An object stands for one dialog from before its first message until after its last. All
// operations but `Post` are called on the dialog's thread. A control that the dialog does not
// have is ignored. Two adapters: the system's windows, and an in-memory dialog without a screen.
#pragma once

#include <cstdint>
#include <string_view>

namespace mixdecks {

/// Where a dialog stands and what its placement depends on; all in pixels of the screen.
struct DialogPlacement {
  std::int32_t parentLeft = 0;  ///< the parent's client area, or the desktop's without a parent
  std::int32_t parentTop = 0;
  std::int32_t parentRight = 0;
  std::int32_t parentBottom = 0;
  std::int32_t width = 0;  ///< of the whole dialog, frame included
  std::int32_t height = 0;
  std::int32_t captionButtonWidth = 0;
  std::int32_t screenWidth = 0;
  std::int32_t screenHeight = 0;
  bool hasSystemMenu = false;
};

class WindowOperations {
 public:
  virtual ~WindowOperations() = default;

  /// Sends a message (dialog/window_messages.h) to a control and returns its answer; 0 without
  /// the control. Text goes as a pointer to UTF-16 units in `second`. May re-enter the dialog
  /// procedure: setting an edit's text reports the change before it returns.
  virtual std::intptr_t SendToControl(int control, std::uint32_t message, std::uintptr_t first,
                                      std::intptr_t second) = 0;
  virtual void EnableControl(int control, bool enabled) = 0;
  /// Has the whole control drawn again, without erasing it first.
  virtual void RedrawControl(int control) = 0;
  /// Whether `window`, as a message carries it, is that control.
  virtual bool IsControl(std::intptr_t window, int control) = 0;
  /// Lets the control take only (`allow`), or take all but, these characters from the keyboard.
  /// Later calls replace the mask. Pasted text is not looked at.
  virtual void InstallCharacterMask(int control, std::string_view characters, bool allow) = 0;

  virtual void SetCaption(const char16_t* caption) = 0;
  /// Starts or restarts a timer that sends `kWmTimer` with its number until it is stopped.
  virtual void StartTimer(std::uintptr_t timer, std::uint32_t milliseconds) = 0;
  virtual void StopTimer(std::uintptr_t timer) = 0;
  /// Any thread. Queues a message for the dialog and returns at once.
  virtual void Post(std::uint32_t message, std::uintptr_t first, std::intptr_t second) = 0;
  /// Makes the dialog go away with that result, once the message being handled returns.
  virtual void End(std::intptr_t result) = 0;

  /// Sets the colour (0x00BBGGRR) of text drawn in a device context.
  virtual void SetTextColour(std::uintptr_t deviceContext, std::uint32_t colour) = 0;
  /// The stock brush whose colour belongs to the device context.
  virtual std::intptr_t DeviceContextBrush() = 0;

  virtual DialogPlacement Placement() = 0;
  /// Moves and sizes the dialog without changing what it covers.
  virtual void Place(std::int32_t left, std::int32_t top, std::int32_t width,
                     std::int32_t height) = 0;

 protected:
  WindowOperations() = default;
  WindowOperations(const WindowOperations&) = default;
  WindowOperations& operator=(const WindowOperations&) = default;
};

}  // namespace mixdecks
