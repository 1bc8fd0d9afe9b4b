#include "tools/export/export_failure.h"

#include <fmt/format.h>

#include "host/plugin_entry.h"
#include "simulator/code_text.h"
#include "simulator/unicode.h"
#include "tools/path_text.h"
#include "tools/picture/picture_header.h"
#include "tools/pool_failure.h"
#include "transfer/service_contract.h"

namespace mixdecks {
namespace {

constexpr const char* kTryAgain = "try again, or look at the scenario if there is one";

/// What the plug-in's message boxes said, each once, or `otherwise` if it kept silent.
std::string MessagesOr(const ExportOutcome& outcome, std::string_view otherwise) {
  std::string text;
  std::u16string last;
  for (const ShownMessage& message : outcome.messages) {
    if (message.text == last) continue;
    last = message.text;
    text += (text.empty() ? "" : " / ") + simulator::ToUtf8(message.text);
  }
  return text.empty() ? std::string(otherwise) : text;
}

std::string StepText(ExportStep step) {
  switch (step) {
    case ExportStep::kConnecting:
      return "connecting to the switcher";
    case ExportStep::kListing:
      return "reading the list of stills";
    default:
      return "exporting";
  }
}

std::string Switcher(const ExportOptions& options) {
  return "switcher " + options.address;
}

UserError ServiceMissing(const ExportOptions& options, const ExportOutcome& outcome) {
  const char* const what = "switcher service";
  if (!outcome.serviceFault.empty()) {
    return Failure(what, "the registered simulator cannot serve: " + outcome.serviceFault,
                   "put that right, or give another pool with --pool");
  }
  return Failure(what, MessagesOr(outcome, "it could not be created"),
                 options.plugin
                     ? "register one, the simulator for instance: regsvr32 MixdecksSwitcherSim.dll"
                     : "the scenario takes the service away; leave that out");
}

/// What `--rgb` does not convert needs an image editor, which knows profiles.
const char* ConversionToRgb(ColourMode mode) {
  const bool ours = mode == ColourMode::kGrey || mode == ColourMode::kIndexed;
  return ours ? "give --rgb to convert it to RGB first" : "convert it to RGB in an image editor";
}

UserError NotConnected(const ExportOptions& options, const ExportOutcome& outcome) {
  if (outcome.connectReason == kReasonFirmware) {
    return Failure(Switcher(options), "its software must be updated",
                   "connect it via USB and run the ORVA Switcher Utility");
  }
  const std::string reason =
      outcome.connectReason == 0
          ? "and gave no reason"
          : fmt::format("with reason '{}'", simulator::CodeText(outcome.connectReason));
  return Failure(Switcher(options),
                 MessagesOr(outcome, "it did not accept the connection " + reason),
                 "check the address and that the switcher is on");
}

}  // namespace

UserError FailureOf(const ExportOptions& options, const ExportOutcome& outcome) {
  switch (outcome.end) {
    case ExportEnd::kServiceMissing:
      return ServiceMissing(options, outcome);
    case ExportEnd::kOutOfMemory:
      return Failure("export", "there is not enough memory", "close other programs");
    case ExportEnd::kNotConnected:
      return NotConnected(options, outcome);
    case ExportEnd::kSlotMissing:
      return UsageError(fmt::format("--slot {}", options.slot),
                        fmt::format("the switcher has {} slots", outcome.stillSlots),
                        "give a lower number");
    case ExportEnd::kPlayerMissing:
      return UsageError(fmt::format("--player {}", options.player.value_or(0)),
                        fmt::format("the switcher has {} media players", outcome.mediaPlayers),
                        "give a lower number, or leave the option out");
    case ExportEnd::kDocumentUnreadable:
      return Failure(options.picture, "the plug-in could not read the document's channels",
                     options.alphaChannels.size() > 1
                         ? "documents with more than one extra alpha channel cannot be exported"
                         : "use a picture with at most one saved alpha channel");
    case ExportEnd::kFailed:
      if (!outcome.poolFailure.empty()) {
        return PoolFailure(PathOf(options.pool), outcome.poolFailure);
      }
      return Failure(fmt::format("export to slot {}", options.slot),
                     MessagesOr(outcome, "the switcher did not take the still"), kTryAgain);
    case ExportEnd::kDisconnected:
      return Failure(Switcher(options), "it disconnected while " + StepText(outcome.step),
                     kTryAgain);
    case ExportEnd::kTimedOut:
      return Failure(
          Switcher(options),
          fmt::format("no end within {} s of {}", options.timeoutSeconds, StepText(outcome.step)),
          "allow more with --timeout SECONDS");
    case ExportEnd::kInterrupted:
      return UserError(kExitInterrupted, "export", "interrupted while " + StepText(outcome.step),
                       "");
    default:
      return Failure("export", "the plug-in ended without opening its dialog", kTryAgain);
  }
}

UserError RefusalOf(const ExportOptions& options, std::int16_t result, std::int16_t imageMode) {
  if (result == kHostResultWrongMode) {
    const std::string_view mode = ColourModeName(static_cast<ColourMode>(imageMode));
    return Failure(options.picture,
                   fmt::format("the document is not in RGB mode but in {} mode, and the plug-in "
                               "refuses it (result {})",
                               mode, result),
                   ConversionToRgb(static_cast<ColourMode>(imageMode)));
  }
  if (result == kHostResultNoMemory) {
    return Failure("export", "there is not enough memory", "close other programs");
  }
  return Failure(options.picture, fmt::format("the plug-in gave result {}", result), kTryAgain);
}

}  // namespace mixdecks
