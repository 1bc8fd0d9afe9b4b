// An export dialog in memory with everything around it: a host record, preferences, and a
// switcher side that notes what it is told and says what the test has it say.
#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "dialog/export_dialog.h"
#include "dialog/headless_dialog.h"
#include "dialog/window_messages.h"

namespace mixdecks::testing {

struct SeenExport {
  std::u16string name;
  std::uint32_t slot;
  bool hasAlpha;
  bool premultiply;
  std::int32_t mediaPlayer;
};

/// What the switcher side of the newest ExportControl does and has seen.
class SwitcherScript {
 public:
  // Set before the dialog opens.
  bool serviceMissing = false;
  bool noSwitcherSide = false;
  // Set before Export is pressed.
  bool readingFails = false;
  bool readingRunsOutOfMemory = false;

  /// Waits until so many connects, or exports, have been asked for since the beginning.
  bool WaitForConnects(std::size_t count);
  bool WaitForExports(std::size_t count);

  std::vector<std::u16string> Addresses();
  std::vector<SeenExport> Exports();
  void Note(const char16_t* address);
  void Note(const StillExport& still);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::u16string> addresses_;
  std::vector<SeenExport> exports_;
};

class DialogRig {
 public:
  DialogRig();
  ~DialogRig();

  /// Opens a dialog on the state that the one before left. The rig has one at a time.
  void Open();
  /// Presses Close.
  void Close();
  /// Opens, waits for the connect and has it succeed.
  void OpenConnected(std::uint32_t stills = 20, std::int32_t players = 4);

  void PostConnected(std::uint32_t stills, std::int32_t players);
  void PostNotConnected(std::uint32_t reason);
  /// Handles messages until `done`, or fails the test.
  void HandleUntil(const std::function<bool()>& done);
  void HandleUntilConnectResult();
  void HandleUntilEnd();

  /// Sends a command of a control.
  std::intptr_t Command(int control, std::uint32_t notification = 0);
  bool IsEnabled(int control) const { return dialog->Control(control).enabled; }
  /// The controls, of those that are ever disabled, that are disabled now.
  std::vector<int> DisabledControls() const;
  void SetFileName(std::string_view name);

  SwitcherScript script;
  MemoryPreferences preferences;
  ExportDialogState state;
  ExportDialogServices services;
  ExportDialog exportDialog{state, services};
  std::optional<HeadlessDialog> dialog;
  std::optional<DialogPlacement> placement;  ///< of the next dialogs, if not the usual one

  PlatformRecord platform{};
  ExportRecord record{};
  std::int16_t result = 0;
  ExportGlobals globals{&result, &record};
};

/// All that a dialog without a switcher disables, in ascending order.
std::vector<int> AllButTheAddress();

}  // namespace mixdecks::testing
