#include "tests/dialog/dialog_rig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace mixdecks::testing {
namespace {

constexpr std::chrono::seconds kPatience(20);

/// A message that only makes the dialog's thread look again.
constexpr std::uint32_t kNothing = 0;

/// Factories are plain functions, so the rig in use is found here.
DialogRig* currentRig = nullptr;

class ScriptedSwitcher final : public SwitcherSide {
 public:
  HResult Connect(const char16_t* address) override {
    currentRig->script.Note(address);
    currentRig->dialog->Post(kNothing, 0, 0);
    return kResultOk;
  }
  HResult Export(StillExport still) override {
    currentRig->script.Note(still);
    return kResultOk;
  }
};

std::unique_ptr<SwitcherSide> CreateScriptedSwitcher(ExportGlobals*, ExportControl&) {
  if (currentRig->script.serviceMissing) throw 1;
  if (currentRig->script.noSwitcherSide) return nullptr;
  return std::make_unique<ScriptedSwitcher>();
}

HResult ReadScriptedDocument(ExportRecord*, HeapBlock& image, bool& hasAlpha) {
  if (currentRig->script.readingRunsOutOfMemory) throw std::bad_alloc();
  if (currentRig->script.readingFails) return kResultFail;
  image = HeapBlock(4);
  hasAlpha = true;
  return kResultOk;
}

}  // namespace

bool SwitcherScript::WaitForConnects(std::size_t count) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, kPatience, [&] { return addresses_.size() >= count; });
}

bool SwitcherScript::WaitForExports(std::size_t count) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, kPatience, [&] { return exports_.size() >= count; });
}

std::vector<std::u16string> SwitcherScript::Addresses() {
  const std::lock_guard lock(mutex_);
  return addresses_;
}

std::vector<SeenExport> SwitcherScript::Exports() {
  const std::lock_guard lock(mutex_);
  return exports_;
}

void SwitcherScript::Note(const char16_t* address) {
  const std::lock_guard lock(mutex_);
  addresses_.emplace_back(address);
  changed_.notify_all();
}

void SwitcherScript::Note(const StillExport& still) {
  const std::lock_guard lock(mutex_);
  exports_.push_back(
      {still.name, still.slot, still.hasAlpha, still.premultiply, still.mediaPlayer});
  changed_.notify_all();
}

DialogRig::DialogRig() {
  services = {{CreateScriptedSwitcher, ReadScriptedDocument}, &preferences};
  record.platform = &platform;
  record.imageMode = kImageModeRgb;
  record.imageWidth = record.imageHeight = 1;
  SetFileName("C:\\stills\\Lower third.psd");
  currentRig = this;
}

DialogRig::~DialogRig() {
  if (state.exportControl != nullptr) Close();
  currentRig = nullptr;
}

void DialogRig::SetFileName(std::string_view name) {
  record.fileName[0] = static_cast<std::uint8_t>(name.size());
  std::memcpy(record.fileName + 1, name.data(), name.size());
}

void DialogRig::Open() {
  dialog.emplace(kExportDialogTemplate, [this](WindowOperations& window, std::uint32_t message,
                                               std::uintptr_t first, std::intptr_t second) {
    return exportDialog.ExportDialogProc(window, message, first, second);
  });
  if (placement) dialog->placement = *placement;
  EXPECT_EQ(dialog->Send(kWmInitDialog, 0, reinterpret_cast<std::intptr_t>(&globals)), 1);
}

void DialogRig::Close() {
  EXPECT_EQ(Command(kCloseButton), 1);
  EXPECT_EQ(dialog->EndValue(), 0);
}

void DialogRig::OpenConnected(std::uint32_t stills, std::int32_t players) {
  const std::size_t before = script.Addresses().size();
  Open();
  ASSERT_TRUE(script.WaitForConnects(before + 1));
  PostConnected(stills, players);
  HandleUntilConnectResult();
}

void DialogRig::PostConnected(std::uint32_t stills, std::int32_t players) {
  state.exportControl->PostConnectResult(true, 0, stills, players);
}

void DialogRig::PostNotConnected(std::uint32_t reason) {
  state.exportControl->PostConnectResult(false, reason, 0, 0);
}

void DialogRig::HandleUntil(const std::function<bool()>& done) {
  EXPECT_TRUE(dialog->HandleMessagesUntil(done, kPatience));
}

void DialogRig::HandleUntilConnectResult() {
  HandleUntil([this] { return !state.connectInProgress; });
}

void DialogRig::HandleUntilEnd() {
  dialog->HandleMessagesUntil([] { return false; }, kPatience);
  EXPECT_EQ(dialog->EndValue(), 0);
}

std::intptr_t DialogRig::Command(int control, std::uint32_t notification) {
  return dialog->Send(kWmCommand, CommandParameter(control, notification), control);
}

std::vector<int> DialogRig::DisabledControls() const {
  std::vector<int> disabled;
  for (const ControlTemplate& control : kExportDialogTemplate.controls) {
    if (control.id != kLabel && !IsEnabled(control.id)) disabled.push_back(control.id);
  }
  std::ranges::sort(disabled);
  return disabled;
}

std::vector<int> AllButTheAddress() {
  return {1010, 1012, 1013, 1014, 1015, 1018, 1020, 1021, 1022};
}

}  // namespace mixdecks::testing
