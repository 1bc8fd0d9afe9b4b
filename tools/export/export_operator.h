// Somebody who sits before the export dialog: connects, waits for the list of slots, presses
// Export, waits for the end, closes. It stands in for the dialog and drives ExportControl with the
// same calls in the same order, so that everything below the dialog is the real thing.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "control/export_control.h"
#include "control/ui_command_handler.h"
#include "host/export_record.h"
#include "platform/heap.h"
#include "platform/result.h"
#include "tools/export/export_outcome.h"
#include "tools/export/wake_up.h"

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
  /// Called before closing after giving up: makes every call to the switcher return soon.
  std::function<void()> cutConnection;
};

/// One operator works once, on the thread that calls `Operate`.
class ExportOperator final : private UICommandHandler {
 public:
  ExportOperator(ExportOrders orders, OperatorPatience patience);
  ~ExportOperator() override;

  /// The dialog's life from opening to closing. Always 0, as the dialog ends.
  std::intptr_t Operate(ExportGlobals* globals);
  const ExportOutcome& Outcome() const noexcept { return outcome_; }

 private:
  using Clock = WakeUp::Clock;

  void Open(ExportGlobals* globals);
  void Close();
  void ConnectAndExport();
  bool CheckSwitcher();
  void Finish(ExportEnd end) noexcept;
  bool Finished() const noexcept { return outcome_.end != ExportEnd::kNotBegun; }

  /// Handles results until `done` holds; false when the export ended before.
  bool WaitFor(const std::function<bool()>& done);
  /// Waits for the list of slots as long as it keeps growing.
  bool WaitForList();
  /// Gives up when it is time to.
  void LookUp();

  /// The real reader, with its result and its time noted.
  static HResult ReadDocument(ExportRecord* record, HeapBlock& image, bool& hasAlpha);

  // UICommandHandler
  void OnConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                       std::int32_t mediaPlayerCount) override;
  void OnExportFinished(bool success) override;
  void OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) override;
  void OnDisconnected() override;
  void OnMessageBox(const char16_t* caption, const char16_t* message) override;

  const ExportOrders orders_;
  const OperatorPatience patience_;
  ExportOutcome outcome_;
  WakeUp wakeUp_;
  ExportControl* control_ = nullptr;
  Clock::time_point deadline_;
  bool connected_ = false;
  std::uint32_t slotsTold_ = 0;
};

}  // namespace mixdecks
