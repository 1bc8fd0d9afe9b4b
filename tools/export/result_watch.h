// Listens to the results that reach the export dialog.
#pragma once

#include <memory>
#include <utility>

#include "control/ui_command_handler.h"

namespace mixdecks {

/// Tells `listener` of each result before `dialog` applies it. Runs where the dialog's own handler
/// runs; `listener` is borrowed.
class ResultWatch final : public UICommandHandler {
 public:
  ResultWatch(UICommandHandler& listener, std::unique_ptr<UICommandHandler> dialog) noexcept
      : listener_(listener), dialog_(std::move(dialog)) {}

  void OnConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                       std::int32_t mediaPlayerCount) override {
    listener_.OnConnectResult(connected, reason, stillsCount, mediaPlayerCount);
    dialog_->OnConnectResult(connected, reason, stillsCount, mediaPlayerCount);
  }
  void OnExportFinished(bool success) override {
    listener_.OnExportFinished(success);
    dialog_->OnExportFinished(success);
  }
  void OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) override {
    listener_.OnStillInfo(slot, inUse, name);
    dialog_->OnStillInfo(slot, inUse, name);
  }
  void OnDisconnected() override {
    listener_.OnDisconnected();
    dialog_->OnDisconnected();
  }
  void OnMessageBox(const char16_t* caption, const char16_t* message) override {
    listener_.OnMessageBox(caption, message);
    dialog_->OnMessageBox(caption, message);
  }

 private:
  UICommandHandler& listener_;
  std::unique_ptr<UICommandHandler> dialog_;
};

}  // namespace mixdecks
