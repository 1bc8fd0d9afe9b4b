// Runs one export through the plug-in's entry: a host in memory, an operator at the dialog, a
// simulated switcher with its pool in a folder.
#pragma once

#include <functional>

#include "tools/export/export_options.h"
#include "tools/export/export_report.h"

namespace mixdecks {

/// Told at once what the user should know although it is no error.
using WarningSink = std::function<void(const std::string& warning)>;

/// Runs the export and returns when everything is closed. Throws `UserError`; the pool is whole
/// either way.
ExportReport RunExport(const ExportOptions& options, const WarningSink& warn);

}  // namespace mixdecks
