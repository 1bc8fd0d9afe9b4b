// `mixdecks pool`: lists what a media pool holds.
#pragma once

#include <CLI/App.hpp>

#include "tools/console.h"

namespace mixdecks {

/// Adds the subcommand. It runs while the words are parsed and throws `UserError`. `console` must
/// outlive the parsing.
void AddPoolCommand(CLI::App& app, const Console& console);

}  // namespace mixdecks
