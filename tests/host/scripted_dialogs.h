// The front end of the entry's tests: dialogs that do what the test says and note what they got.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "host/export_record.h"

namespace mixdecks {

struct ScriptedDialogs {
  std::vector<void*> aboutWindows;   ///< parents of the about boxes shown
  std::vector<void*> exportWindows;  ///< parents of the export dialogs shown
  std::function<std::intptr_t()> onAbout;
  std::function<std::intptr_t(ExportGlobals*)> onExport;  ///< none: the dialog ends with 0
};

/// The script of `MixdecksExportMain`; assign a fresh one before a test.
ScriptedDialogs& Dialogs();

}  // namespace mixdecks
