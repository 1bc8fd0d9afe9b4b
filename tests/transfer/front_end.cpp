#include "tests/transfer/front_end.h"

#include <cstring>
#include <utility>

#include "transfer/switcher_transfer.h"

namespace mixdecks {
namespace {

TestDocument openDocument;

HResult ReadOpenDocument(ExportRecord*, HeapBlock& image, bool& hasAlpha) {
  image = HeapBlock(openDocument.pixels.size());
  if (!image) return kResultFail;
  std::memcpy(image.Bytes(), openDocument.pixels.data(), openDocument.pixels.size());
  hasAlpha = openDocument.hasAlpha;
  return kResultOk;
}

/// Names in tests are ASCII.
std::string Narrow(const char16_t* text) {
  std::string narrow;
  for (; text != nullptr && *text != 0; ++text)
    narrow += static_cast<char>(*text);
  return narrow;
}

}  // namespace

FrontEnd::FrontEnd(ExportGlobals* hostContext)
    : control_(ExportControl::Create(hostContext, {CreateSwitcherTransfer, ReadOpenDocument})) {
  control_->SetListener(this);
  control_->SetHostRecord(&hostRecord_);
}

FrontEnd::~FrontEnd() {
  Close();
}

void FrontEnd::Close() {
  if (control_ == nullptr) return;
  control_->SetHostRecord(nullptr);
  control_->SetListener(nullptr);
  std::exchange(control_, nullptr)->Release();
}

void FrontEnd::Open(TestDocument document) {
  hostRecord_.imageWidth = document.width;
  hostRecord_.imageHeight = document.height;
  openDocument = std::move(document);
}

void FrontEnd::Connect(std::size_t stills) {
  const std::size_t before = results_.size();
  control_->Connect(u"10.0.0.5");
  TakeUntil(before + 1 + stills);
}

void FrontEnd::Export(const char16_t* name, std::uint32_t slot, bool premultiply,
                      std::int32_t mediaPlayer) {
  control_->Export(name, slot, premultiply, mediaPlayer);
}

void FrontEnd::TakeUntil(std::size_t count) {
  while (results_.size() < count) {
    {
      std::unique_lock lock(mutex_);
      woken_.wait(lock, [this] { return std::exchange(wake_, false); });
    }
    control_->RunPendingUICommand(this);
  }
}

std::string FrontEnd::TakeNext() {
  TakeUntil(results_.size() + 1);
  return results_.back();
}

void FrontEnd::WakeUIThread() {
  {
    const std::lock_guard lock(mutex_);
    wake_ = true;
  }
  woken_.notify_one();
}

void FrontEnd::OnConnectResult(bool connected, std::uint32_t reason, std::uint32_t stillsCount,
                               std::int32_t mediaPlayerCount) {
  results_.push_back((connected ? "connected, reason " : "not connected, reason ") +
                     std::to_string(reason) + ", stills " + std::to_string(stillsCount) +
                     ", players " + std::to_string(mediaPlayerCount));
}

void FrontEnd::OnExportFinished(bool success) {
  results_.emplace_back(success ? "exported" : "not exported");
}

void FrontEnd::OnStillInfo(std::uint32_t slot, bool inUse, const char16_t* name) {
  results_.push_back("slot " + std::to_string(slot) + (inUse ? " in use: " : " free: ") +
                     Narrow(name));
}

void FrontEnd::OnDisconnected() {
  results_.emplace_back("disconnected");
}

void FrontEnd::OnMessageBox(const char16_t* caption, const char16_t* message) {
  results_.push_back(Narrow(caption) + ": " + Narrow(message));
}

}  // namespace mixdecks
