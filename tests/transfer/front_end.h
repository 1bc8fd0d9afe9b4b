// The dialog's place in tests: an ExportControl with the real switcher side, a document, and a
// record of all results that were handed over. Its thread is the test's.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "control/export_control.h"
#include "control/export_control_listener.h"
#include "control/ui_command_handler.h"
#include "host/export_record.h"

namespace mixdecks {

/// An 8-bit BGRA document.
struct TestDocument {
  std::int16_t width = 0;
  std::int16_t height = 0;
  bool hasAlpha = false;
  std::vector<std::uint8_t> pixels;
};

class FrontEnd : public ExportControlListener, public UICommandHandler {
 public:
  /// Creates the control. Throws what its creation throws.
  explicit FrontEnd(ExportGlobals* hostContext = nullptr);
  ~FrontEnd() override;

  ExportControl& Control() { return *control_; }
  /// What later exports read.
  void Open(TestDocument document);

  /// Connects and takes all that is told about it, down to the last of `stills` slots.
  void Connect(std::size_t stills);
  void Export(const char16_t* name = u"Title", std::uint32_t slot = 1, bool premultiply = false,
              std::int32_t mediaPlayer = -1);

  /// Handles results until there are so many in all.
  void TakeUntil(std::size_t count);
  /// Handles what comes next and returns it.
  std::string TakeNext();
  const std::vector<std::string>& Results() const { return results_; }

  /// Ends the control as the dialog does. Results that were not taken are dropped.
  void Close();

  // ExportControlListener
  void WakeUIThread() override;

  // UICommandHandler
  void OnConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                       std::int32_t mediaPlayerCount) override;
  void OnExportFinished(bool success) override;
  void OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) override;
  void OnDisconnected() override;
  void OnMessageBox(const char16_t* caption, const char16_t* message) override;

 private:
  ExportRecord hostRecord_{};
  ExportControl* control_ = nullptr;
  std::vector<std::string> results_;
  std::mutex mutex_;
  std::condition_variable woken_;
  bool wake_ = false;
};

}  // namespace mixdecks
