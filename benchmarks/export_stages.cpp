// A whole export, from the click on Export to the switcher's SetPicture: entry, dialog, worker,
// service. The time is that of the whole; the columns behind it are the stages, as multiples of
// copying the frame's bytes once with memcpy. Of every stage the shortest time counts: on a busy
// machine the others tell of the machine.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <optional>
#include <vector>

#include "platform/four_character_code.h"
#include "plugin/export_main.h"
#include "simulator/service_registration.h"
#include "simulator/switcher_simulator.h"
#include "tools/export/export_operator.h"
#include "tools/export/front_end.h"
#include "tools/export/stage_clock.h"
#include "tools/memory_host/memory_host.h"

namespace mixdecks {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

struct Case {
  std::int32_t frameWidth, frameHeight;
  std::uint32_t mode;
  bool scaled;  ///< from a document of 7/5 the size
  bool premultiply;
};

Case CaseOf(const benchmark::State& state) {
  const bool hd = state.range(0) == 1080;
  return {hd ? 1920 : 3840, hd ? 1080 : 2160, FourCharacterCode(hd ? "10p9" : "4H59"),
          state.range(1) != 0, state.range(2) != 0};
}

HostDocument DocumentFor(const Case& setting) {
  const std::int32_t width = setting.frameWidth * (setting.scaled ? 7 : 5) / 5;
  const std::int32_t height = setting.frameHeight * (setting.scaled ? 7 : 5) / 5;
  // Soft alpha, so that no stage has an easy way out.
  std::vector<std::uint8_t> rgba(std::size_t{4} * static_cast<std::size_t>(width) *
                                 static_cast<std::size_t>(height));
  for (std::size_t i = 0; i < rgba.size(); ++i)
    rgba[i] = static_cast<std::uint8_t>(i * 31 + i / 4096 * 7);
  return DocumentOfRgba8(rgba, width, height, true);
}

/// The shortest time of copying a frame's bytes.
double CopySeconds(const Case& setting) {
  const auto bytes = std::size_t{4} * static_cast<std::size_t>(setting.frameWidth) *
                     static_cast<std::size_t>(setting.frameHeight);
  const std::vector<std::uint8_t> from(bytes, 1);
  std::vector<std::uint8_t> to(bytes);
  double shortest = 1;
  for (int copy = 0; copy < 50; ++copy) {
    const Clock::time_point begun = Clock::now();
    std::memcpy(to.data(), from.data(), bytes);
    benchmark::ClobberMemory();
    shortest = std::min(shortest, Seconds(Clock::now() - begun).count());
  }
  return shortest;
}

/// The stages of an export, in order.
constexpr const char* kStages[] = {
    "1 read",       // the document's channels, on the dialog's thread
    "2 hand over",  // until the worker looks at the image
    "3 fit",        // to the size of the video mode
    "4 convert",    // and premultiply
    "5 copy",       // into the service's frame
    "6 lock",       // until the switcher has the frame
};
using StageSeconds = std::array<double, std::size(kStages)>;

/// Runs one export; nothing when it fails.
std::optional<StageSeconds> RunExport(MemoryHost& host, const Case& setting) {
  simulator::Scenario scenario;
  scenario.mode = setting.mode;
  simulator::SwitcherSimulator switcher(scenario);
  const simulator::ScopedServiceRegistration registration(switcher);
  const StageClock clock(switcher);
  ExportOperator exportOperator(
      {.address = u"10.0.0.1", .name = u"bench", .premultiply = setting.premultiply}, {});
  {
    const SeatedOperator seat(exportOperator);
    host.Call(MixdecksExportMain, Selector::kStart);
  }
  const ExportOutcome& outcome = exportOperator.Outcome();
  if (outcome.end != ExportEnd::kExported) return std::nullopt;
  const StageMarks marks = clock.Marks();
  const Clock::time_point times[] = {outcome.clicked, outcome.clicked + outcome.readingChannels,
                                     marks.fitting,   marks.converting,
                                     marks.copying,   marks.uploading,
                                     marks.given};
  StageSeconds seconds{};
  for (std::size_t stage = 0; stage < seconds.size(); ++stage)
    seconds[stage] = Seconds(times[stage + 1] - times[stage]).count();
  return seconds;
}

void BM_Export(benchmark::State& state) {
  const Case setting = CaseOf(state);
  MemoryHost host(DocumentFor(setting));
  const double copySeconds = CopySeconds(setting);
  StageSeconds shortest;
  shortest.fill(1000);
  for ([[maybe_unused]] auto iteration : state) {
    const std::optional<StageSeconds> stages = RunExport(host, setting);
    if (!stages) return state.SkipWithError("the export failed");
    state.SetIterationTime(std::accumulate(stages->begin(), stages->end(), 0.0));
    std::ranges::transform(shortest, *stages, shortest.begin(),
                           [](double a, double b) { return std::min(a, b); });
  }
  for (std::size_t stage = 0; stage < shortest.size(); ++stage)
    state.counters[kStages[stage]] = shortest[stage] / copySeconds;
  state.counters["whole"] = std::accumulate(shortest.begin(), shortest.end(), 0.0) / copySeconds;
  state.counters["memcpy ms"] = copySeconds * 1000;
}

BENCHMARK(BM_Export)
    ->ArgNames({"size", "scaled", "premultiply"})
    ->ArgsProduct({{1080, 2160}, {0, 1}, {0, 1}})
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mixdecks
