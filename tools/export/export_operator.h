// Somebody who sits before the export dialog: waits for the switcher and its list of slots, fills
// in the fields, presses Export, waits for the end, closes. The dialog is the plug-in's own,
// without a screen, and so is everything below it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "control/switcher_side.h"
#include "control/ui_command_handler.h"
#include "dialog/export_dialog_state.h"
#include "dialog/headless_dialog.h"
#include "dialog/preferences_store.h"
#include "host/export_record.h"
#include "platform/heap.h"
#include "platform/result.h"
#include "tools/export/export_outcome.h"

namespace mixdecks {

/// What the operator fills in and presses. Slot and player count from 0.
struct ExportOrders {
  std::u16string address;
  std::u16string name;
  std::uint32_t slot = 0;
  bool premultiply = true;
  std::int32_t mediaPlayer = -1;  ///< negative for none
};

/// When to stop waiting.
struct OperatorPatience {
  std::chrono::milliseconds timeout{60'000};  ///< from connecting to the end of the export
  /// Asked many times a second: whether to give up at once.
  std::function<bool()> interrupted;
  /// Makes every call to the switcher return soon. Called before closing after giving up, and, on
  /// a thread of its own, when closing takes too long.
  std::function<void()> cutConnection;
};

/// One operator works once, on the thread that calls `Operate`. What dialogs keep from one opening
/// to the next begins anew with each operator.
class ExportOperator final : private UICommandHandler {
 public:
  ExportOperator(ExportOrders orders, OperatorPatience patience);
  ~ExportOperator() override;

  /// The dialog's life from opening to closing. The value that it ended with.
  std::intptr_t Operate(ExportGlobals* globals);
  const ExportOutcome& Outcome() const noexcept { return outcome_; }

 private:
  using Clock = std::chrono::steady_clock;

  /// Right after the dialog's initialisation, before it handles any result.
  void ListenIn();
  void Use(HeadlessDialog& dialog);
  void ConnectAndExport(HeadlessDialog& dialog);
  void FillIn(HeadlessDialog& dialog) const;
  void Close(HeadlessDialog& dialog);
  bool CheckSwitcher();
  void Finish(ExportEnd end) noexcept;
  bool Finished() const noexcept { return outcome_.end != ExportEnd::kNotBegun; }

  /// Lets the dialog handle messages until `done` holds; false when the export ended before.
  bool WaitFor(HeadlessDialog& dialog, const std::function<bool()>& done);
  /// Waits for the list of slots as long as it keeps growing.
  bool WaitForList(HeadlessDialog& dialog);
  /// Gives up when it is time to.
  void LookUp();

  // What the dialog is made with: the real things, with their failures and times noted.
  static std::unique_ptr<SwitcherSide> CreateSwitcherSide(ExportGlobals* globals,
                                                          ExportControl& control);
  static HResult ReadDocument(ExportRecord* record, HeapBlock& image, bool& hasAlpha);

  // UICommandHandler: told of what the dialog is told.
  void OnConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                       std::int32_t mediaPlayerCount) override;
  void OnExportFinished(bool success) override;
  void OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) override;
  void OnDisconnected() override;
  void OnMessageBox(const char16_t* caption, const char16_t* message) override;

  const ExportOrders orders_;
  const OperatorPatience patience_;
  MemoryPreferences preferences_;
  ExportDialogState state_;
  ExportOutcome outcome_;
  Clock::time_point begun_;
  bool connected_ = false;
  std::uint32_t slotsTold_ = 0;
};

}  // namespace mixdecks
