#include "tools/command_line.h"

#include <algorithm>
#include <new>

#include <CLI/CLI.hpp>

#include "tools/export_command.h"
#include "tools/pool_command.h"

namespace mixdecks {
namespace {

constexpr const char* kAbout =
    "Mixdecks sends stills to the media pool of a video switcher. This command does it without "
    "the\n"
    "host: the plug-in's own code reads a picture file and exports it to a simulated switcher.";
constexpr const char* kExamples =
    "Examples:\n"
    "  mixdecks export lower-third.png\n"
    "  mixdecks export title.psd --slot 3 --player 1 --name \"Tonight\"\n"
    "  mixdecks pool\n\n"
    "`mixdecks COMMAND --help` tells more about a command.";

int RunParsed(CLI::App& app, const std::vector<std::string>& words, const Console& console) {
  try {
    // The parser takes the words from the back.
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    return kExitSuccess;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return app.exit(error, console.out, console.err);
    const auto commands = app.get_subcommands();
    const std::string command = commands.empty() ? "" : " " + commands.front()->get_name();
    throw UsageError(commands.empty() ? "command line" : "mixdecks" + command, error.what(),
                     "see mixdecks" + command + " --help");
  }
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& words, const Console& console) {
  CLI::App app(kAbout, "mixdecks");
  app.footer(kExamples);
  app.require_subcommand(1);
  app.set_version_flag("--version", "mixdecks " MIXDECKS_VERSION, "Print the version and exit");
  AddExportCommand(app, console);
  AddPoolCommand(app, console);
  try {
    return RunParsed(app, words, console);
  } catch (const UserError& error) {
    console.Report(error);
    return error.ExitCode();
  } catch (const std::bad_alloc&) {
    console.Report(Failure("memory", "there is not enough of it", "close other programs"));
  } catch (const std::exception& error) {
    console.Report(Failure("internal fault", error.what(), "please report this message"));
  }
  return kExitFailure;
}

}  // namespace mixdecks
