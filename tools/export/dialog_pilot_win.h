// Somebody who sits before the library's real dialog: fills in the fields by window messages,
// presses Export, reads and answers message boxes, waits for the end, closes. Or who only watches
// the user do it, and closes everything on Ctrl-C.
#pragma once

#include <windows.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <thread>

#include "tools/export/export_operator.h"
#include "tools/export/export_outcome.h"

namespace mixdecks {

/// Works on a thread of its own, on the dialogs of the thread that made it.
class DialogPilot {
 public:
  /// Begins. Without orders it only watches. `patience.cutConnection` is not used: nobody can cut
  /// a registered service's connection. `beforeExport`, if any, is called on the pilot's thread
  /// with the dialog filled in.
  DialogPilot(std::optional<ExportOrders> orders, OperatorPatience patience,
              std::function<void(HWND dialog)> beforeExport = {});
  ~DialogPilot();
  DialogPilot(const DialogPilot&) = delete;
  DialogPilot& operator=(const DialogPilot&) = delete;

  /// To be called when the selector has returned, which ends the pilot's work.
  ExportOutcome Land();

 private:
  using Clock = std::chrono::steady_clock;

  void Fly();
  void Watch();
  void ConnectAndExport();
  bool CheckSwitcher();
  void FillIn();
  void FollowExport();
  void CloseEverything();

  bool FindReadyDialog();
  bool ShowsConnected() const;
  void AnswerBoxes();
  void LookUp();
  void Finish(ExportEnd end);
  bool Finished() const { return outcome_.end != ExportEnd::kNotBegun; }
  /// Answers boxes until `done` holds; false when the export or the selector ended before.
  bool WaitFor(const std::function<bool()>& done);

  const std::optional<ExportOrders> orders_;
  const OperatorPatience patience_;
  const std::function<void(HWND)> beforeExport_;
  const DWORD dialogThread_ = GetCurrentThreadId();
  const Clock::time_point begun_ = Clock::now();
  std::atomic<bool> landed_ = false;
  ExportOutcome outcome_;
  HWND dialog_ = nullptr;
  std::thread thread_;
};

}  // namespace mixdecks
