// The way of a command out of the queue: to the switcher side, or over to the front end's thread.

#include <utility>

#include "control/export_control.h"

namespace mixdecks {
namespace {

void CallHandler(UICommandHandler& handler, const ExportCommand& command) {
  switch (command.type) {
    case CommandType::CmdConnectResult:
      return handler.OnConnectResult(command.flag, command.reason, command.index, command.extra);
    case CommandType::CmdExportFinished:
      return handler.OnExportFinished(command.flag);
    case CommandType::CmdStillInfo:
      return handler.OnStillInfo(command.index, command.flag, command.text.Get());
    case CommandType::CmdDisconnected:
      return handler.OnDisconnected();
    case CommandType::CmdMessageBox:
      return handler.OnMessageBox(command.text.Get(), command.text2.Get());
    case CommandType::CmdConnect:
    case CommandType::CmdExport:
    case CommandType::CmdShutdown:
      return;
  }
}

}  // namespace

int ExportControl::RunWorker(void* control) {
  auto& self = *static_cast<ExportControl*>(control);
  while (const auto command = self.WaitForCommand())
    self.Dispatch(*command);
  return 0;
}

std::unique_ptr<ExportCommand> ExportControl::WaitForCommand() {
  const WaitLock lock(queueMutex_);
  while (!stopping_) {
    if (!queue_.empty()) {
      auto command = std::move(queue_.front());
      queue_.pop_front();
      return command;
    }
    WaitEventReleasing(queueEvent_, queueMutex_);
  }
  return nullptr;
}

void ExportControl::Dispatch(ExportCommand& command) {
  const WaitLock lock(controlMutex_);
  if (listener_ == nullptr || hostRecord_ == nullptr) return;
  switch (command.type) {
    case CommandType::CmdConnect:
      switcherSide_->Connect(command.text.Get());
      return;
    case CommandType::CmdExport:
      return DispatchExport(command);
    case CommandType::CmdConnectResult:
    case CommandType::CmdExportFinished:
    case CommandType::CmdStillInfo:
    case CommandType::CmdDisconnected:
    case CommandType::CmdMessageBox:
      return HandOver(command);
    case CommandType::CmdShutdown:
      return;
  }
}

void ExportControl::DispatchExport(ExportCommand& command) {
  switcherSide_->Export({.name = command.text.Get(),
                         .slot = command.index,
                         .image = std::move(command.image),
                         .width = hostRecord_->imageWidth,
                         .height = hostRecord_->imageHeight,
                         .hasAlpha = command.hasAlpha,
                         .premultiply = command.flag,
                         .mediaPlayer = command.extra});
  hostRecord_->imageRect = {};  // an empty rectangle tells the host that nothing more is wanted
}

// Worker. The command is done when it is no longer the current one: handled, or dropped because
// the front end is closing.
void ExportControl::HandOver(ExportCommand& command) {
  const WaitLock lock(handoverMutex_);
  if (closing_) return;
  currentUiCommand_ = &command;
  listener_->WakeUIThread();
  while (currentUiCommand_ != nullptr && WaitEventReleasing(handoverEvent_, handoverMutex_) == 0) {
  }
  currentUiCommand_ = nullptr;
}

// Front end's thread. A handler that shows a message box pumps messages, and any of the front
// end's operations may come in again below it: this one, the closing, and the release. So the
// object holds on to itself here, and a command under way is never started again.
void ExportControl::RunPendingUICommand(UICommandHandler* handler) {
  struct Reference {
    explicit Reference(ExportControl& owner) : control(owner) { ++control.referenceCount_; }
    ~Reference() { control.Release(); }
    ExportControl& control;
  };
  struct Handling {
    explicit Handling(ExportControl& owner) : control(owner) { control.handlerRunning_ = true; }
    ~Handling() {
      control.handlerRunning_ = false;
      control.currentUiCommand_ = nullptr;
      SignalWaitEvent(control.handoverEvent_);
    }
    ExportControl& control;
  };

  const Reference reference(*this);
  const WaitLock lock(handoverMutex_);
  if (handler == nullptr || currentUiCommand_ == nullptr || handlerRunning_) return;
  const Handling handling(*this);
  CallHandler(*handler, *currentUiCommand_);
}

// A worker that waits for the front end's thread would never get an answer once that thread goes
// on to wait for the worker: it is let go first. While a handler runs, its own return lets go.
void ExportControl::BeginClosing() {
  const WaitLock lock(handoverMutex_);
  closing_ = true;
  if (currentUiCommand_ == nullptr || handlerRunning_) return;
  currentUiCommand_ = nullptr;
  SignalWaitEvent(handoverEvent_);
}

// Below a handler the worker holds controlMutex, yet it stands still until the handler returns:
// what the mutex guards is then this thread's to change.
template <class Pointer>
void ExportControl::StoreBetweenDispatches(Pointer& field, Pointer value) {
  if (value == nullptr) BeginClosing();
  if (handlerRunning_) {
    field = value;
  } else {
    const WaitLock lock(controlMutex_);
    field = value;
  }
}

void ExportControl::SetHostRecord(ExportRecord* record) {
  StoreBetweenDispatches(hostRecord_, record);
}

void ExportControl::SetListener(ExportControlListener* listener) {
  StoreBetweenDispatches(listener_, listener);
}

}  // namespace mixdecks
