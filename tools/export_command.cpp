#include "tools/export_command.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "simulator/code_text.h"
#include "tools/export/export_run.h"
#include "tools/export/plugin_run.h"
#include "tools/json_text.h"
#include "tools/video_mode_name.h"
#include "transfer/video_modes.h"

namespace mixdecks {
namespace {

constexpr const char* kExportExamples =
    "Examples:\n"
    "  mixdecks export lower-third.png                    into slot 1 of mixdecks-pool\n"
    "  mixdecks export title.psd --slot 3 --player 1      and onto media player 1\n"
    "  mixdecks export logo.png --mode 4H25 --name Logo   for a switcher in 2160p25\n"
    "  mixdecks export bars.jpg --alpha-channel mask.png  with an extra alpha channel\n"
    "  mixdecks export grey.png --rgb --json              converted first, told as JSON\n";
constexpr const char* kExitCodes =
    "Exit codes: 0 the still is in the pool, 1 it is not, 2 a fault in the options,\n"
    "130 stopped with Ctrl-C. The pool is whole in every case.";

std::string ModeTable() {
  std::string table = "Video modes:\n";
  for (const VideoModeInfo& mode : VideoModes()) {
    table += fmt::format("  {}  {:<15} {:>4} x {}\n", simulator::CodeText(mode.code),
                         NameOfVideoMode(mode.code), mode.width, mode.height);
  }
  return table;
}

void AddDocumentOptions(CLI::App& command, ExportOptions& options) {
  command
      .add_option("IMAGE", options.picture,
                  "PNG, JPEG, PSD, BMP, PPM or PGM file, or - for standard input")
      ->required();
  command
      .add_option("--alpha-channel", options.alphaChannels,
                  "Greyscale picture to use as alpha instead of transparency")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  command.add_option("--depth", options.depth, "Convert to 8 or 16 bits per channel first")
      ->type_name("BITS");
  command.add_flag("--rgb", options.toRgb, "Convert greyscale and indexed colour to RGB first");
}

void AddDialogOptions(CLI::App& command, ExportOptions& options) {
  command.add_option("--slot", options.slot, "Slot of the media pool, from 1 (default: 1)")
      ->type_name("N");
  command
      .add_option("--name", options.name,
                  "Name of the still (default: the file's, up to its first dot)")
      ->type_name("TEXT");
  CLI::Option* const keep = command.add_flag_callback(
      "--no-premultiply", [&options] { options.premultiply = false; },
      "Leave the colours as they are");
  command.add_flag("--premultiply")
      ->description("Multiply the colours by alpha, which is the default")
      ->excludes(keep);
  command
      .add_option("--player", options.player, "Show the still on media player 1 to 4 afterwards")
      ->type_name("N");
  command
      .add_option("--address", options.address,
                  "Address of the switcher (default: " + options.address + ")")
      ->type_name("IPV4");
}

void AddSwitcherOptions(CLI::App& command, ExportOptions& options) {
  command
      .add_option("--pool", options.pool,
                  "Folder of the switcher's media pool (default: " + options.pool + ")")
      ->type_name("DIR");
  command
      .add_option("--mode", options.mode,
                  "Video mode of the switcher, such as 10i9 for 1080i59.94 (default: the pool's)")
      ->type_name("CODE");
  command
      .add_option("--scenario", options.scenario,
                  "What the switcher is like and what goes wrong (docs/simulator.md)")
      ->type_name("FILE");
  command
      .add_option("--timeout", options.timeoutSeconds,
                  "Give up when the still is not there by then (default: 60)")
      ->type_name("SECONDS");
}

ExportReport Export(const ExportOptions& options, const Console& console) {
  std::vector<std::string> warnings;
  const auto warn = [&](const std::string& warning) {
    console.Warn(warning);
    warnings.push_back(warning);
  };
  std::optional<ExportReport> report = RunPluginExport(options, warn);
  if (!report) report = RunExport(options, warn);
  report->warnings = std::move(warnings);
  return *std::move(report);
}

void Run(const ExportOptions& options, const Console& console) {
  if (ShowPluginAbout(options)) return;
  const ExportReport report = Export(options, console);
  console.out << (options.json ? JsonText(JsonOf(report)) : TextOf(report));
}

}  // namespace

void AddExportCommand(CLI::App& app, const Console& console) {
  const auto options = std::make_shared<ExportOptions>();
  CLI::App& command = *app.add_subcommand("export", "Export a picture to a slot of a media pool");
  command.footer(kExportExamples + ("\n" + ModeTable()) + "\n" + kExitCodes);
  AddDocumentOptions(command, *options);
  AddDialogOptions(command, *options);
  AddSwitcherOptions(command, *options);
  AddPluginOptions(command, *options);
  command.add_flag("--json", options->json, "Tell the result as JSON");
  command.callback([options, &console] { Run(*options, console); });
}

}  // namespace mixdecks
