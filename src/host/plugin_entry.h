// The plug-in's entry: what the host's selectors do. Runs on the host's main thread.
#pragma once

#include "host/export_record.h"

#include <cstdint>

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

/// The two dialogs as the entry knows them: creation parameter in, end value out.
struct HostDialogs {
  std::intptr_t (*runAboutDialog)(void* hostWindow) = nullptr;
  std::intptr_t (*runExportDialog)(void* hostWindow, ExportGlobals* globals) = nullptr;
};

/// Runs one selector. `record` is an `AboutRecord` for the about selector and an `ExportRecord`
/// for all others; `data` is the host's word that keeps the plug-in's handle.
void RunSelector(const HostDialogs& dialogs, std::int16_t selector, void* record,
                 std::intptr_t* data, std::int16_t* result);

/// The basic suite of the selector that ran last; null before the first.
HostBasicSuite* CurrentBasicSuite() noexcept;

}  // namespace mixdecks
