// `mixdecks export --plugin FILE`: the built library in place of our own code, with its real dialog
// and with the switcher service that is registered on this machine. Only where the system can load
// the library; elsewhere there are no such options.
#pragma once

#include <optional>

#include <CLI/App.hpp>

#include "tools/export/export_report.h"
#include "tools/export/export_run.h"

namespace mixdecks {

/// Adds the options to `mixdecks export`. `options` outlives the parsing.
void AddPluginOptions(CLI::App& command, ExportOptions& options);

/// Runs the library's export and returns when its dialog has closed; nothing when no library is
/// asked for. Throws `UserError`.
std::optional<ExportReport> RunPluginExport(const ExportOptions& options, const WarningSink& warn);

/// Shows the library's about box until it is closed; false when that is not asked for. Throws
/// `UserError`.
bool ShowPluginAbout(const ExportOptions& options);

}  // namespace mixdecks
