// Life of an ExportControl, and everything that enters its queue.

#include "control/export_control.h"

#include <new>
#include <utility>

namespace mixdecks {
namespace {

struct ReleaseControl {
  void operator()(ExportControl* control) const { control->Release(); }
};

}  // namespace

ExportControl* ExportControl::Create(ExportGlobals* hostContext, const ExportControlParts& parts) {
  std::unique_ptr<ExportControl, ReleaseControl> control;
  try {
    control.reset(new ExportControl);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
  return control->Start(hostContext, parts) ? control.release() : nullptr;
}

bool ExportControl::Start(ExportGlobals* hostContext, const ExportControlParts& parts) {
  readDocument_ = parts.readDocument;
  if (CreateWaitMutex(queueMutex_) != 0) return false;
  if (CreateWaitEventPair(queueEvent_) != 0) return false;
  if (StartWaitThread(worker_, 0, RunWorker, this) != 0) return false;
  if (CreateWaitMutex(controlMutex_) != 0) return false;
  switcherSide_ = parts.createSwitcherSide(hostContext, *this);
  if (switcherSide_ == nullptr) return false;
  if (CreateWaitMutex(handoverMutex_) != 0) return false;
  return CreateWaitEventPair(handoverEvent_) == 0;
}

std::int32_t ExportControl::Release() {
  const std::int32_t count = --referenceCount_;
  if (count == 0) delete this;
  return count;
}

// The switcher side goes first, while the queue still takes what its threads post. The worker ends
// before any object goes that it may wait for.
ExportControl::~ExportControl() {
  SetHostRecord(nullptr);
  SetListener(nullptr);
  switcherSide_.reset();
  StopWorker();
  DestroyWaitMutex(controlMutex_);
  DestroyWaitMutex(queueMutex_);
  DestroyWaitEventPair(queueEvent_);
  DestroyWaitMutex(handoverMutex_);
  DestroyWaitEventPair(handoverEvent_);
}

void ExportControl::StopWorker() noexcept {
  if (worker_.handle == nullptr) return;
  stopping_ = true;
  try {
    Push({.type = CommandType::CmdShutdown});
  } catch (const std::bad_alloc&) {
    SignalWaitEvent(queueEvent_);  // closing must not fail for want of memory
  }
  JoinWaitThreadUnlessSelf(worker_, nullptr, 0);
}

void ExportControl::Push(ExportCommand command) {
  auto record = std::make_unique<ExportCommand>(std::move(command));
  const WaitLock lock(queueMutex_);
  queue_.push_back(std::move(record));
  SignalWaitEvent(queueEvent_);
}

void ExportControl::Connect(const char16_t* address) {
  Push({.type = CommandType::CmdConnect, .text = Text::CopyOf(address)});
}

void ExportControl::Export(const char16_t* name, std::uint32_t slot, bool premultiply,
                           std::int32_t mediaPlayer) {
  if (hostRecord_ == nullptr) return;
  HeapBlock image;
  bool hasAlpha = false;
  if (Failed(readDocument_(hostRecord_, image, hasAlpha))) return;
  Push({.type = CommandType::CmdExport,
        .flag = premultiply,
        .hasAlpha = hasAlpha,
        .index = slot,
        .extra = mediaPlayer,
        .text = Text::CopyOf(name),
        .image = std::move(image)});
}

/// Those who post are threads at their beginning and callbacks below the service's frames: neither
/// lets an exception through, and neither has anybody to tell. Without memory the result is lost.
template <class MakeCommand>
void ExportControl::Post(MakeCommand makeCommand) noexcept {
  try {
    Push(makeCommand());
  } catch (const std::bad_alloc&) {
  }
}

void ExportControl::PostConnectResult(bool connected, std::uint32_t reason,
                                      std::uint32_t stillsCount,
                                      std::int32_t mediaPlayerCount) noexcept {
  Post([=] {
    return ExportCommand{.type = CommandType::CmdConnectResult,
                         .flag = connected,
                         .index = stillsCount,
                         .extra = mediaPlayerCount,
                         .reason = reason};
  });
}

void ExportControl::PostExportFinished(bool success) noexcept {
  Post([=] { return ExportCommand{.type = CommandType::CmdExportFinished, .flag = success}; });
}

void ExportControl::PostStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) noexcept {
  Post([=] {
    return ExportCommand{.type = CommandType::CmdStillInfo,
                         .flag = inUse,
                         .index = slot,
                         .text = Text::CopyOf(name)};
  });
}

void ExportControl::PostDisconnected() noexcept {
  Post([] { return ExportCommand{.type = CommandType::CmdDisconnected}; });
}

void ExportControl::PostMessageBox(const char16_t* caption, const char16_t* message) noexcept {
  Post([=] {
    return ExportCommand{.type = CommandType::CmdMessageBox,
                         .text = Text::CopyOf(caption),
                         .text2 = Text::CopyOf(message)};
  });
}

}  // namespace mixdecks
