// What stands around an ExportControl in its tests: a front end that writes down what it is told,
// a switcher side and a document that do what the test says.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "control/export_control.h"

namespace mixdecks::testing {

/// Lines that several threads write, in the order in which they came.
class Journal {
 public:
  void Add(std::string line);
  std::vector<std::string> Lines() const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

/// Writes every call down, then runs `onCall`, in which a front end may do anything.
class RecordingHandler : public UICommandHandler {
 public:
  explicit RecordingHandler(Journal& journal) : journal_(journal) {}
  std::function<void()> onCall;

  void OnConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                       std::int32_t mediaPlayerCount) override;
  void OnExportFinished(bool success) override;
  void OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) override;
  void OnDisconnected() override;
  void OnMessageBox(const char16_t* caption, const char16_t* message) override;

 private:
  void Call(std::string line);
  Journal& journal_;
};

struct ExportControlBench;

/// The bench's own records reach it back from the plain functions that ExportControl is given.
struct BenchGlobals : ExportGlobals {
  ExportControlBench* bench = nullptr;
};
struct BenchRecord : ExportRecord {
  ExportControlBench* bench = nullptr;
};

/// Wakes by counting; `onWake` runs on the worker.
class BenchListener : public ExportControlListener {
 public:
  explicit BenchListener(ExportControlBench& bench) : bench_(bench) {}
  void WakeUIThread() override;

 private:
  ExportControlBench& bench_;
};

struct ExportControlBench {
  ExportControlBench();

  /// Creates `control` with the bench's parts, without listener and record.
  void Create();
  /// Creates it and sets both.
  void Open();
  /// What a dialog does when it closes. The count that the release gave.
  std::int32_t Close();
  /// Answers one wake-up.
  void RunOne() { control->RunPendingUICommand(&handler); }

  ExportControlParts Parts() const;

  Journal journal;
  RecordingHandler handler{journal};
  BenchListener listener{*this};
  BenchGlobals globals{};
  BenchRecord record{};
  ExportControl* control = nullptr;

  std::function<void()> onWake;
  std::function<void(ExportControl&)> onCreate;      ///< inside the factory
  std::function<void(ExportControl&)> onConnect;     ///< worker
  std::function<void(const StillExport&)> onExport;  ///< worker
  std::function<void(ExportControl&)> onDestroySide;
  std::function<HResult(HeapBlock&, bool&)> onRead;
  std::thread::id sideCreatedOn;
  std::thread::id sideDestroyedOn;
  int sides = 0;  ///< switcher sides alive
};

}  // namespace mixdecks::testing
