#include "tools/export/plugin_run.h"

namespace mixdecks {

void AddPluginOptions(CLI::App& /*command*/, ExportOptions& /*options*/) {}

std::optional<ExportReport> RunPluginExport(const ExportOptions& /*options*/,
                                            const WarningSink& /*warn*/) {
  return std::nullopt;
}

bool ShowPluginAbout(const ExportOptions& /*options*/) {
  return false;
}

}  // namespace mixdecks
