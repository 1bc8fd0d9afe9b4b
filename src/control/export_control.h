// ExportControl stands between the front end and the switcher: one worker thread, one queue.
//
// The front end's thread creates it, pushes commands, runs results that are handed over, and
// releases it. The posting operations may be called from any thread. Lock order: controlMutex
// before handoverMutex, controlMutex before any lock of the switcher side; queueMutex is a leaf.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>

#include "control/export_command.h"
#include "control/export_control_listener.h"
#include "control/switcher_side.h"
#include "control/ui_command_handler.h"
#include "control/wait_primitives.h"
#include "host/export_record.h"

namespace mixdecks {

/// The two sides that ExportControl joins and knows by their signatures alone.
struct ExportControlParts {
  SwitcherSideFactory createSwitcherSide = nullptr;
  DocumentReader readDocument = nullptr;
};

class ExportControl {
 public:
  /// Starts the worker and creates the switcher side. Null when memory or a system object is
  /// missing; passes the integer 1 through when the switcher service is absent. The caller then
  /// sets the listener and the host record; until both are set no command has an effect.
  static ExportControl* Create(ExportGlobals* hostContext, const ExportControlParts& parts);

  // The front end's thread. The first two throw `std::bad_alloc` and have pushed nothing then.
  void Connect(const char16_t* address);
  /// Reads the document right here and pushes the export. Pushes nothing when reading fails.
  void Export(const char16_t* name, std::uint32_t slot, bool premultiply, std::int32_t mediaPlayer);
  /// Waits for the command being dispatched, unless a handler calls it: the command is then the
  /// handler's own. Null begins the closing, for good: a worker that waits for this thread is let
  /// go, and no further result reaches a handler.
  void SetHostRecord(ExportRecord* record);
  void SetListener(ExportControlListener* listener);
  /// Runs the result that is waiting, if any, through `handler`. Answer to `WakeUIThread`.
  /// A handler may pump messages: calls that come in meanwhile do nothing.
  void RunPendingUICommand(UICommandHandler* handler);
  /// Drops a reference; the last one joins the worker and destroys the object. The new count.
  /// When a handler calls it, the object lives until that handler has returned.
  std::int32_t Release();

  // Any thread. Text is copied. A result for which there is no memory is lost.
  void PostConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                         std::int32_t mediaPlayerCount) noexcept;
  void PostExportFinished(bool success) noexcept;
  void PostStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) noexcept;
  void PostDisconnected() noexcept;
  void PostMessageBox(const char16_t* caption, const char16_t* message) noexcept;

  ExportControl(const ExportControl&) = delete;
  ExportControl& operator=(const ExportControl&) = delete;

 private:
  ExportControl() = default;
  ~ExportControl();

  bool Start(ExportGlobals* hostContext, const ExportControlParts& parts);
  void StopWorker() noexcept;
  void Push(ExportCommand command);
  template <class MakeCommand>
  void Post(MakeCommand makeCommand) noexcept;

  static int RunWorker(void* control);
  std::unique_ptr<ExportCommand> WaitForCommand();
  void Dispatch(ExportCommand& command);
  void DispatchExport(ExportCommand& command);
  void HandOver(ExportCommand& command);

  void BeginClosing();
  template <class Pointer>
  void StoreBetweenDispatches(Pointer& field, Pointer value);

  std::atomic<std::int32_t> referenceCount_{1};
  DocumentReader readDocument_ = nullptr;
  std::unique_ptr<SwitcherSide> switcherSide_;

  WaitMutex queueMutex_;  ///< guards the queue
  WaitEventPair queueEvent_;
  std::deque<std::unique_ptr<ExportCommand>> queue_;
  WaitThread worker_;
  std::atomic<bool> stopping_{false};

  WaitMutex controlMutex_;  ///< held by the worker for a whole dispatch; guards the next two
  ExportControlListener* listener_ = nullptr;
  ExportRecord* hostRecord_ = nullptr;

  WaitMutex handoverMutex_;  ///< guards the fields below
  WaitEventPair handoverEvent_;
  ExportCommand* currentUiCommand_ = nullptr;  ///< handed over and not yet handled
  bool handlerRunning_ = false;                ///< the front end's thread is inside a handler
  bool closing_ = false;                       ///< nothing is handed over any more
};

}  // namespace mixdecks
