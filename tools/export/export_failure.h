// The message for each way in which an export can end without its still.
#pragma once

#include "tools/export/export_options.h"
#include "tools/export/export_outcome.h"
#include "tools/user_error.h"

namespace mixdecks {

/// For an outcome other than `kExported`.
UserError FailureOf(const ExportOptions& options, const ExportOutcome& outcome);

/// The plug-in refused the document before its dialog opened, with a result word of the host's.
UserError RefusalOf(const ExportOptions& options, std::int16_t result, std::int16_t imageMode);

}  // namespace mixdecks
