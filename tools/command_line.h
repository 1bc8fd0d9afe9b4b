// The `mixdecks` command from its words to its exit code.
#pragma once

#include <string>
#include <vector>

#include "tools/console.h"

namespace mixdecks {

/// Runs the command. `words` are in UTF-8 and without the program's name. The exit code: 0 for
/// success, 1 for a failure, 2 for a fault in the words, 130 after Ctrl-C.
int RunCommandLine(const std::vector<std::string>& words, const Console& console);

}  // namespace mixdecks
