#include "tests/control/export_control_bench.h"

#include <utility>

namespace mixdecks::testing {
namespace {

/// The tests' texts are plain ASCII.
std::string Narrow(const char16_t* text) {
  if (text == nullptr) return "(null)";
  std::string narrow;
  for (; *text != 0; ++text)
    narrow += static_cast<char>(*text);
  return narrow;
}

const char* YesNo(bool value) {
  return value ? "yes" : "no";
}

class BenchSide : public SwitcherSide {
 public:
  BenchSide(ExportControlBench& bench, ExportControl& control) : bench_(bench), control_(control) {
    ++bench_.sides;
    bench_.sideCreatedOn = std::this_thread::get_id();
  }
  ~BenchSide() override {
    if (bench_.onDestroySide) bench_.onDestroySide(control_);
    bench_.sideDestroyedOn = std::this_thread::get_id();
    --bench_.sides;
  }
  HResult Connect(const char16_t* address) override {
    bench_.journal.Add("connect " + Narrow(address));
    if (bench_.onConnect) bench_.onConnect(control_);
    bench_.journal.Add("connect returns");
    return kResultOk;
  }
  HResult Export(StillExport still) override {
    bench_.journal.Add("export " + Narrow(still.name));
    if (bench_.onExport) bench_.onExport(still);
    return kResultOk;
  }

 private:
  ExportControlBench& bench_;
  ExportControl& control_;
};

std::unique_ptr<SwitcherSide> MakeSide(ExportGlobals* globals, ExportControl& control) {
  ExportControlBench& bench = *static_cast<BenchGlobals*>(globals)->bench;
  if (bench.onCreate) bench.onCreate(control);
  return std::make_unique<BenchSide>(bench, control);
}

HResult ReadDocument(ExportRecord* record, HeapBlock& image, bool& hasAlpha) {
  ExportControlBench& bench = *static_cast<BenchRecord*>(record)->bench;
  return bench.onRead ? bench.onRead(image, hasAlpha) : kResultOk;
}

}  // namespace

void Journal::Add(std::string line) {
  const std::lock_guard lock(mutex_);
  lines_.push_back(std::move(line));
}

std::vector<std::string> Journal::Lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

void RecordingHandler::Call(std::string line) {
  journal_.Add(std::move(line));
  if (onCall) onCall();
}

void RecordingHandler::OnConnectResult(bool connected, std::uint32_t reason,
                                       std::uint32_t stillsCount, std::int32_t mediaPlayerCount) {
  Call(std::string("connected ") + YesNo(connected) + " reason " + std::to_string(reason) +
       " stills " + std::to_string(stillsCount) + " players " + std::to_string(mediaPlayerCount));
}

void RecordingHandler::OnExportFinished(bool success) {
  Call(std::string("export finished ") + YesNo(success));
}

void RecordingHandler::OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) {
  Call("still " + std::to_string(slot) + " in use " + YesNo(inUse) + " " + Narrow(name));
}

void RecordingHandler::OnDisconnected() {
  Call("disconnected");
}

void RecordingHandler::OnMessageBox(const char16_t* caption, const char16_t* message) {
  Call("box");
  // Read after the call: the texts must outlive whatever the front end did meanwhile.
  journal_.Add("box " + Narrow(caption) + ": " + Narrow(message));
}

void BenchListener::WakeUIThread() {
  if (bench_.onWake) bench_.onWake();
}

ExportControlBench::ExportControlBench() {
  globals.bench = this;
  record.bench = this;
}

ExportControlParts ExportControlBench::Parts() const {
  return {MakeSide, ReadDocument};
}

void ExportControlBench::Create() {
  control = ExportControl::Create(&globals, Parts());
}

void ExportControlBench::Open() {
  Create();
  control->SetListener(&listener);
  control->SetHostRecord(&record);
}

std::int32_t ExportControlBench::Close() {
  control->SetHostRecord(nullptr);
  control->SetListener(nullptr);
  return std::exchange(control, nullptr)->Release();
}

}  // namespace mixdecks::testing
