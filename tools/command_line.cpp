#include "tools/command_line.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>

#include <CLI/CLI.hpp>

#include "tools/export_command.h"
#include "tools/json_text.h"
#include "tools/path_text.h"
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

/// What to do about words that do not fit `command`.
std::string RemedyOf(const CLI::ParseError& error, const std::vector<std::string>& words,
                     const std::string& command) {
  const std::string text = error.what();
  if (text.find("At Most 1 required") != std::string::npos) {
    return "give " + text.substr(0, text.find(':')) + " once";
  }
  for (const std::string& word : words) {
    std::error_code ignored;
    if (word.starts_with('-') && std::filesystem::exists(PathOf(word), ignored)) {
      return "for the file give ./" + word;
    }
  }
  return "see mixdecks" + command + " --help";
}

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
                     RemedyOf(error, words, command));
  }
}

/// Tells an error to people, and to programs that asked for JSON. Asked for that the words can be:
/// also when they are at fault.
int Tell(const UserError& error, const std::vector<std::string>& words, const Console& console) {
  if (std::ranges::find(words, "--json") != words.end()) {
    console.out << JsonText({{"error",
                              {{"what", error.What()},
                               {"why", error.Why()},
                               {"remedy", error.Remedy()},
                               {"exitCode", error.ExitCode()}}}});
  }
  console.Report(error);
  return error.ExitCode();
}

/// A result that nobody can read is none.
void FinishOutput(const Console& console) {
  errno = 0;
  console.out.flush();
  if (console.out) return;
  throw Failure("standard output", errno != 0 ? std::strerror(errno) : "it cannot be written",
                "free some space, or send the output elsewhere");
}

int RunGuarded(const std::vector<std::string>& words, CLI::App& app, const Console& console) {
  try {
    const int exitCode = RunParsed(app, words, console);
    FinishOutput(console);
    return exitCode;
  } catch (const UserError& error) {
    return Tell(error, words, console);
  } catch (const std::bad_alloc&) {
    return Tell(Failure("memory", "there is not enough of it", "close other programs"), words,
                console);
  } catch (const std::exception& error) {
    return Tell(Failure("internal fault", error.what(), "please report this message"), words,
                console);
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
  return RunGuarded(words, app, console);
}

}  // namespace mixdecks
