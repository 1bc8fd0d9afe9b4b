#include "host/plugin_entry.h"

#include <initializer_list>

#include "host/data_handle.h"
#include "host/host_data.h"

namespace mixdecks {
namespace {

constexpr std::intptr_t kDialogClosed = 0;
constexpr std::int32_t kBitsPerByte = 8;

HostBasicSuite* basicSuite = nullptr;

void* ParentWindow(const PlatformRecord* platform) noexcept {
  return platform == nullptr ? nullptr : platform->parentWindow;
}

/// How a dialog ended. Nothing thrown may reach the host's code: it counts as closing.
template <typename RunDialog>
std::intptr_t EndOf(RunDialog runDialog) noexcept {
  try {
    return runDialog();
  } catch (...) {
    return kDialogClosed;
  }
}

void RunAbout(const HostDialogs& dialogs, const AboutRecord& record) {
  basicSuite = record.basicSuite;
  EndOf([&] { return dialogs.runAboutDialog(ParentWindow(record.platform)); });
}

/// The whole export happens in here. The host never learns how it went: a dialog that was closed
/// is a selector well done.
std::int16_t RunStart(const HostDialogs& dialogs, ExportGlobals* globals, std::intptr_t* data) {
  if (globals->record->imageMode != kImageModeRgb) {
    ReleaseHostData(globals, data);
    return kHostResultWrongMode;
  }
  void* hostWindow = ParentWindow(globals->record->platform);
  const std::intptr_t end = EndOf([&] { return dialogs.runExportDialog(hostWindow, globals); });
  if (end != kDialogClosed) return kHostResultNone;
  ReleaseHostData(globals, data);
  return kHostResultDone;
}

/// The image's bytes as hosts count them: the product wraps in 32 bits and may come out negative.
std::int32_t WrappedImageBytes(const ExportRecord& record) noexcept {
  std::uint32_t bits = 1;
  for (const std::int32_t factor :
       {record.depth, record.planes, record.imageWidth, record.imageHeight}) {
    bits *= static_cast<std::uint32_t>(factor);
  }
  return static_cast<std::int32_t>(bits) / kBitsPerByte;
}

/// Asks for no more memory than the image itself takes.
void LowerMemory(ExportRecord& record) noexcept {
  const std::int32_t needed = WrappedImageBytes(record);
  if (needed < record.maximumMemory) record.maximumMemory = needed;
}

void RunWithData(const HostDialogs& dialogs, Selector selector, ExportRecord* record,
                 std::intptr_t* data, std::int16_t* result) {
  basicSuite = record->basicSuite;
  ExportGlobals* globals = AcquireHostData(result, record, data);
  if (globals == nullptr) {
    *result = kHostResultNoMemory;
    return;
  }
  switch (selector) {
    case Selector::kStart:
      *result = RunStart(dialogs, globals, data);
      break;
    case Selector::kFinish:
      ReleaseHostData(globals, data);
      break;
    case Selector::kPrepare:
      LowerMemory(*record);
      break;
    default:
      break;
  }
  if (*data != 0) UnlockDataHandle(record->handleProcs, *data);
}

}  // namespace

void RunSelector(const HostDialogs& dialogs, std::int16_t selector, void* record,
                 std::intptr_t* data, std::int16_t* result) {
  if (selector == static_cast<std::int16_t>(Selector::kAbout)) {
    RunAbout(dialogs, *static_cast<const AboutRecord*>(record));
  } else {
    RunWithData(dialogs, static_cast<Selector>(selector), static_cast<ExportRecord*>(record), data,
                result);
  }
}

HostBasicSuite* CurrentBasicSuite() noexcept {
  return basicSuite;
}

}  // namespace mixdecks
