// Opens the user's picture as the host would.
#pragma once

#include <string>
#include <vector>

#include "tools/export/export_options.h"
#include "tools/picture/picture_decoder.h"

namespace mixdecks {

/// Reads the picture and its alpha channels and converts them as asked. What the user should know
/// beforehand is added to `warnings`. Throws `UserError`.
Picture OpenDocument(const ExportOptions& options, std::vector<std::string>& warnings);

}  // namespace mixdecks
