#include "tools/export/export_run.h"

#include <chrono>
#include <memory>
#include <utility>

#include "platform/message_box.h"
#include "plugin/export_main.h"
#include "simulator/service_registration.h"
#include "simulator/switcher_simulator.h"
#include "simulator/unicode.h"
#include "tools/export/document_opener.h"
#include "tools/export/export_failure.h"
#include "tools/export/front_end.h"
#include "tools/export/stage_clock.h"
#include "tools/export/still_description.h"
#include "tools/interrupt.h"
#include "tools/memory_host/memory_host.h"
#include "tools/path_text.h"
#include "tools/pool_failure.h"
#include "tools/user_error.h"

namespace mixdecks {
namespace {

using Clock = std::chrono::steady_clock;
using simulator::SwitcherSimulator;

/// Collects the system's message boxes, which nobody would answer here.
class CollectedBoxes {
 public:
  CollectedBoxes()
      : former_(SetMessageBoxPresenter(
            [this](void*, const char* text, const char* caption, std::uint32_t) {
              shown_.push_back({simulator::ToUtf16(caption), simulator::ToUtf16(text)});
            })) {}
  ~CollectedBoxes() { SetMessageBoxPresenter(std::move(former_)); }
  CollectedBoxes(const CollectedBoxes&) = delete;
  CollectedBoxes& operator=(const CollectedBoxes&) = delete;

  const std::vector<ShownMessage>& Shown() const noexcept { return shown_; }

 private:
  std::vector<ShownMessage> shown_;
  MessageBoxPresenter former_;
};

std::unique_ptr<SwitcherSimulator> SwitchOn(const ExportOptions& options,
                                            const simulator::Scenario& scenario) {
  try {
    return std::make_unique<SwitcherSimulator>(scenario, PathOf(options.pool));
  } catch (const simulator::PoolError& error) {
    throw PoolFailure(PathOf(options.pool), error.what());
  }
}

/// A document that is not in RGB never reaches a dialog, nor a switcher.
void LetThePluginRefuse(const ExportOptions& options, HostDocument document) {
  const std::int16_t imageMode = document.imageMode;
  MemoryHost host(std::move(document));
  throw RefusalOf(options, host.Call(MixdecksExportMain, Selector::kStart), imageMode);
}

std::vector<StageTime> TimesOf(Clock::duration opening, const ExportOutcome& outcome,
                               const StageMarks& marks) {
  return {{"open", opening},
          {"connect", outcome.connecting},
          {"read", outcome.readingChannels},
          {"fit", marks.converting - marks.fitting},
          {"convert", marks.copying - marks.converting},
          {"copy", marks.uploading - marks.copying},
          {"upload", outcome.ended - marks.uploading},
          {"export", outcome.ended - outcome.clicked}};
}

}  // namespace

ExportReport RunExport(const ExportOptions& options, const WarningSink& warn) {
  const Clock::time_point begun = Clock::now();
  ExportPlan plan = PlanExport(options);
  Picture picture = OpenDocument(options, plan.warnings);
  for (const std::string& warning : plan.warnings)
    warn(warning);
  if (picture.document.imageMode != kImageModeRgb) {
    LetThePluginRefuse(options, std::move(picture.document));
  }

  ExportReport report = BeginReport(options, picture);
  const Clock::duration opening = Clock::now() - begun;

  const auto simulator = SwitchOn(options, plan.scenario);
  const simulator::ScopedServiceRegistration registration(*simulator);
  const StageClock clock(*simulator);
  const CollectedBoxes boxes;
  MemoryHost host(std::move(picture.document));
  ExportOperator exportOperator(plan.orders,
                                {plan.timeout, InterruptRequested, [&] { simulator->Shutdown(); }});
  std::int16_t result = kHostResultNone;
  {
    const SeatedOperator seat(exportOperator);
    result = host.Call(MixdecksExportMain, Selector::kStart);
  }
  simulator->Shutdown();

  ExportOutcome outcome = exportOperator.Outcome();
  outcome.messages = boxes.Shown();
  outcome.poolFailure = simulator->PoolFailure();
  if (result != kHostResultDone) throw RefusalOf(options, result, kImageModeRgb);
  // Equipment that was switched off in the middle has something to complain about.
  if (!outcome.cutOff) {
    CheckRules(host.Violations());
    CheckRules(simulator->Violations());
  }
  if (outcome.end != ExportEnd::kExported) throw FailureOf(options, outcome);
  // The still is there; what came after it was lost, such as the media player's choice.
  if (!outcome.poolFailure.empty()) warn(outcome.poolFailure);
  if (outcome.slotWasUsed) report.replaced = simulator::ToUtf8(outcome.replaced);
  report.times = TimesOf(opening, outcome, clock.Marks());
  DescribeStill(report, plan.orders, simulator->Contents());
  return report;
}

}  // namespace mixdecks
