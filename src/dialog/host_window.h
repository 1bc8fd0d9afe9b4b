// The host's window, which owns the dialogs and the message boxes.
#pragma once

#include "host/export_record.h"

namespace mixdecks {

/// Null when the host named none.
inline void* HostWindow(const ExportGlobals* globals) noexcept {
  if (globals == nullptr || globals->record == nullptr) return nullptr;
  const PlatformRecord* platform = globals->record->platform;
  return platform == nullptr ? nullptr : platform->parentWindow;
}

}  // namespace mixdecks
