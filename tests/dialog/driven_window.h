// One open dialog on either adapter of WindowOperations, together with its user: what the contract
// of the port is tested with.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "dialog/window_operations.h"

namespace mixdecks::testing {

/// Handles a message of the dialog; as a dialog procedure's, its result is the message's own.
using WindowProcedure = std::function<std::intptr_t(WindowOperations& window, std::uint32_t message,
                                                    std::uintptr_t first, std::intptr_t second)>;

/// On the screen, in pixels.
struct WindowPlace {
  std::int32_t left, top, width, height;
  bool operator==(const WindowPlace&) const = default;
};

/// The export dialog's controls, with whatever procedure. Made, used and destroyed on one thread.
class DrivenWindow {
 public:
  virtual ~DrivenWindow() = default;
  virtual WindowOperations& Operations() = 0;

  // What a user does, to controls that are enabled.
  virtual void Click(int button) = 0;
  /// Presses keys with the caret behind the text.
  virtual void Type(int edit, std::u16string_view keys) = 0;
  /// Pastes over the whole text.
  virtual void PasteOver(int edit, const std::u16string& text) = 0;
  virtual void Choose(int list, std::int32_t index) = 0;

  // What a user sees.
  virtual std::u16string Caption() = 0;
  virtual std::u16string Text(int control) = 0;
  virtual bool IsEnabled(int control) = 0;
  virtual std::vector<std::u16string> Items(int list) = 0;
  /// Colour in which an edit draws its text; nothing when the procedure leaves it to the system.
  virtual std::optional<std::uint32_t> TextColour(int edit) = 0;
  virtual WindowPlace Place() = 0;
  /// Whether the control was asked to draw itself again since the last call.
  virtual bool WasRedrawn(int control) = 0;

  /// Handles messages until `done` holds before one of them. False when it takes too long.
  virtual bool HandleMessagesUntil(const std::function<bool()>& done) = 0;
};

struct WindowAdapter {
  const char* name;
  bool (*canOpen)();
  std::unique_ptr<DrivenWindow> (*open)(WindowProcedure procedure);
  /// Runs a dialog from its initialisation to its end. The value it ended with.
  std::intptr_t (*runModal)(WindowProcedure procedure);
};

inline void PrintTo(const WindowAdapter& adapter, std::ostream* stream) {
  *stream << adapter.name;
}

/// The one in memory.
WindowAdapter HeadlessAdapter();
/// All that this system has.
std::vector<WindowAdapter> WindowAdapters();

}  // namespace mixdecks::testing
