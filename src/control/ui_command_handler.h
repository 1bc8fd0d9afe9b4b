// What ExportControl tells the front end. Every operation runs on the front end's thread, inside
// `ExportControl::RunPendingUICommand`, while the worker waits for it to return.
#pragma once

#include <cstdint>

namespace mixdecks {

/// Implemented by the front end. Text is borrowed for the length of the call and may be null.
class UICommandHandler {
 public:
  virtual ~UICommandHandler() = default;
  /// A connect attempt ended. `reason` is a four-character code, 0 when none was given;
  /// both counts are 0 unless the steps that read them succeeded.
  virtual void OnConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                               std::int32_t mediaPlayerCount) = 0;
  /// An export ended; failures were told before by `OnMessageBox`, if at all.
  virtual void OnExportFinished(bool success) = 0;
  /// What a still slot (from 0) holds now.
  virtual void OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) = 0;
  /// The switcher went away. An export in progress has been forgotten.
  virtual void OnDisconnected() = 0;
  /// An error to show to the user.
  virtual void OnMessageBox(const char16_t* caption, const char16_t* message) = 0;
};

}  // namespace mixdecks
