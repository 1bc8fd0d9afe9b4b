// The plug-in's entry: what the host's selectors do. Runs on the host's main thread.
#pragma once

#include <cstdint>

#include "host/export_record.h"

namespace mixdecks {

enum class Selector : std::int16_t {
  kAbout = 0,
  kStart = 1,
  kContinue = 2,
  kFinish = 3,
  kPrepare = 4,
};

/// Result words that the host gets.
inline constexpr std::int16_t kHostResultNone = 0;
inline constexpr std::int16_t kHostResultDone = 1;
inline constexpr std::int16_t kHostResultNoMemory = -108;
inline constexpr std::int16_t kHostResultWrongMode = -30201;

/// The two dialogs as the entry knows them: creation parameter in, end value out. Neither is null
/// when a selector runs. What they throw counts as a dialog that was closed.
struct HostDialogs {
  std::intptr_t (*runAboutDialog)(void* hostWindow) = nullptr;
  std::intptr_t (*runExportDialog)(void* hostWindow, ExportGlobals* globals) = nullptr;
};

/// Runs one selector. `record` is an `AboutRecord` for the about selector and an `ExportRecord`
/// for all others; `data` is the host's word that keeps the plug-in's handle. The about selector
/// touches neither `data` nor `result`; all others write `result`.
void RunSelector(const HostDialogs& dialogs, std::int16_t selector, void* record,
                 std::intptr_t* data, std::int16_t* result);

/// The basic suite of the selector that ran last; null before the first.
HostBasicSuite* CurrentBasicSuite() noexcept;

}  // namespace mixdecks
