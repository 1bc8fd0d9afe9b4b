#include <windows.h>

#include <chrono>
#include <utility>

#include <CLI/CLI.hpp>

#include "simulator/unicode.h"
#include "tools/export/dialog_pilot_win.h"
#include "tools/export/document_opener.h"
#include "tools/export/export_failure.h"
#include "tools/export/plugin_run.h"
#include "tools/export/pool_change.h"
#include "tools/export/simulator_reports.h"
#include "tools/export/still_description.h"
#include "tools/interrupt.h"
#include "tools/memory_host/memory_host.h"
#include "tools/path_text.h"
#include "tools/plugin_host/plugin_library.h"
#include "tools/plugin_host/screen_picture.h"
#include "tools/user_error.h"

namespace mixdecks {
namespace {

using Clock = std::chrono::steady_clock;

PluginLibrary LoadPlugin(const ExportOptions& options) {
  if (!options.plugin) {
    throw UsageError("mixdecks export", "--about and --press-export need a library",
                     "give --plugin Mixdecks.8bp");
  }
  try {
    return PluginLibrary(PathOf(*options.plugin));
  } catch (const PluginLibraryError& error) {
    throw Failure(*options.plugin, error.what(), "give the path of Mixdecks.8bp");
  }
}

/// Tells the simulator, if it is the service that is registered, where its pool is.
void NamePool(const ExportOptions& options) {
  const auto set = [](const wchar_t* name, const std::string& path) {
    SetEnvironmentVariableW(name, std::filesystem::absolute(PathOf(path)).c_str());
  };
  set(L"MIXDECKS_SIMULATOR_POOL", options.pool);
  if (options.scenario) set(L"MIXDECKS_SIMULATOR_SCENARIO", *options.scenario);
}

std::function<void(HWND)> ScreenshotTaker(const ExportOptions& options, const WarningSink& warn) {
  if (!options.screenshot) return {};
  return [file = PathOf(*options.screenshot), &warn](HWND dialog) {
    try {
      WritePng(file, TakeSettledPicture({dialog}));
    } catch (const std::runtime_error& error) {
      warn(error.what());
    }
  };
}

void CheckPluginOptions(const ExportOptions& options) {
  if (options.screenshot && !options.pressExport) {
    throw UsageError("--screenshot", "the dialog is pictured when it is filled in",
                     "give --plugin Mixdecks.8bp and --press-export, too");
  }
  if (!options.mode) return;
  throw UsageError("--mode", "the registered switcher decides about its video mode",
                   "for the simulator give --scenario FILE with \"mode\" in it");
}

/// File names reach the plug-in in the system's code page.
std::string InCodePage(const std::string& text) {
  const std::u16string wide = simulator::ToUtf16(text);
  const auto* source = reinterpret_cast<const wchar_t*>(wide.data());
  const auto length = static_cast<int>(wide.size());
  if (length == 0) return {};
  const int bytes = WideCharToMultiByte(CP_ACP, 0, source, length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, source, length, narrow.data(), bytes, nullptr, nullptr);
  return narrow;
}

/// What the user ordered in the dialog, as far as the pool tells.
ExportOrders OrdersInPool(const PoolSnapshot& before, const PoolSnapshot& after,
                          std::uint32_t slot) {
  const simulator::Still& still = *after.contents.slots[slot];
  return {.address = {},
          .name = still.name,
          .slot = slot,
          .premultiply = still.alpha != simulator::FrameAlpha::kStraight,
          .mediaPlayer = FindNewlyShowing(before, after, slot).value_or(-1)};
}

void DescribeNewStill(ExportReport& report, const PoolSnapshot& before) {
  const PoolSnapshot after = TakeSnapshot(report.pool);
  const std::optional<std::uint32_t> slot = FindNewStill(before, after);
  if (!slot) {
    throw Failure(simulator::PathText(report.pool), "no still came into the pool",
                  "press Export in the dialog before closing it; a switcher other than the "
                  "simulator keeps its stills itself");
  }
  if (*slot < before.contents.slots.size() && before.contents.slots[*slot]) {
    report.replaced = simulator::ToUtf8(before.contents.slots[*slot]->name);
  }
  DescribeStill(report, OrdersInPool(before, after, *slot), after.contents);
}

}  // namespace

void AddPluginOptions(CLI::App& command, ExportOptions& options) {
  command.get_option("IMAGE")->required(false);
  command
      .add_option("--plugin", options.plugin,
                  "Load this library, Mixdecks.8bp, and export with its own dialog to the "
                  "switcher that is registered on this machine")
      ->type_name("FILE");
  command.add_flag("--press-export", options.pressExport,
                   "Fill in and press the library's dialog without its user; slot, name, player, "
                   "address and premultiplication count only then");
  command
      .add_option("--screenshot", options.screenshot,
                  "With --press-export: a PNG file for a picture of the dialog, filled in")
      ->type_name("FILE");
  command.add_flag("--about", options.about, "Show the library's about box and nothing else");
}

std::optional<ExportReport> RunPluginExport(const ExportOptions& options, const WarningSink& warn) {
  if (options.picture.empty()) {
    throw UsageError("mixdecks export", "IMAGE is required", "see mixdecks export --help");
  }
  if (!options.plugin && !options.pressExport && !options.screenshot) return std::nullopt;
  const Clock::time_point begun = Clock::now();
  CheckPluginOptions(options);
  ExportPlan plan = PlanExport(options);
  const PluginLibrary library = LoadPlugin(options);
  Picture picture = OpenDocument(options, plan.warnings);
  for (const std::string& warning : plan.warnings)
    warn(warning);
  const std::int16_t imageMode = picture.document.imageMode;
  picture.document.fileName = InCodePage(picture.document.fileName);
  ExportReport report = BeginReport(options, picture);
  const PoolSnapshot before = TakeSnapshot(report.pool);
  NamePool(options);
  const SimulatorReports simulatorReports(report.pool);
  const Clock::duration opening = Clock::now() - begun;

  MemoryHost host(std::move(picture.document));
  DialogPilot pilot(options.pressExport ? std::optional(plan.orders) : std::nullopt,
                    {plan.timeout, InterruptRequested, {}}, ScreenshotTaker(options, warn));
  const std::int16_t result = host.Call(library.Entry(), Selector::kStart);
  ExportOutcome outcome = pilot.Land();
  outcome.serviceFault = simulatorReports.Failure();

  if (result != kHostResultDone) throw RefusalOf(options, result, imageMode);
  CheckRules(host.Violations());
  CheckRules(simulatorReports.Violations());
  // Who only watches sees no end: the simulator's report tells of it, or else the pool.
  if (outcome.end == ExportEnd::kNotBegun && !options.pressExport) {
    outcome.end = outcome.serviceFault.empty() ? ExportEnd::kExported : ExportEnd::kServiceMissing;
  }
  if (outcome.end != ExportEnd::kExported) throw FailureOf(options, outcome);
  report.times = {{"open", opening}};
  if (options.pressExport) {
    report.times.emplace_back("connect", outcome.connecting);
    report.times.emplace_back("export", outcome.ended - outcome.clicked);
  }
  DescribeNewStill(report, before);
  return report;
}

bool ShowPluginAbout(const ExportOptions& options) {
  if (!options.about) return false;
  const PluginLibrary library = LoadPlugin(options);
  MemoryHost host(DocumentOfRgba8(std::vector<std::uint8_t>(4), 1, 1, false));
  DialogPilot pilot(std::nullopt, {{}, InterruptRequested, {}});
  host.Call(library.Entry(), Selector::kAbout);
  if (pilot.Land().end == ExportEnd::kInterrupted) {
    throw UserError(kExitInterrupted, "about box", "interrupted", "");
  }
  return true;
}

}  // namespace mixdecks
