#include "tools/export/export_options.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "dialog/address_text.h"
#include "simulator/code_text.h"
#include "simulator/unicode.h"
#include "tools/input_file.h"
#include "tools/path_text.h"
#include "tools/pool_failure.h"
#include "tools/user_error.h"

namespace mixdecks {
namespace {

constexpr double kLongestTimeout = 86'400;

std::u16string CheckedText(const std::string& option, const std::string& text) {
  std::u16string wide = simulator::ToUtf16(text);
  if (simulator::ToUtf8(wide) != text) {
    throw UsageError(option, "it is not valid UTF-8", "type it again in a UTF-8 terminal");
  }
  return wide;
}

/// Cut as the dialog's field cuts, but never through a character of two units.
std::u16string CutName(std::u16string name, std::vector<std::string>& warnings) {
  if (name.size() <= kLongestName) return name;
  const char16_t last = name[kLongestName - 1];
  const bool splits = last >= 0xD800 && last < 0xDC00;
  name.resize(splits ? kLongestName - 1 : kLongestName);
  warnings.push_back(fmt::format("the name was cut to {} characters", name.size()));
  return name;
}

std::u16string StillName(const ExportOptions& options, std::vector<std::string>& warnings) {
  const std::string name = options.name ? *options.name : ProposedName(options.picture);
  if (name.empty()) {
    warnings.push_back(options.name ? "the still gets no name"
                                    : "the still gets no name, since the file's begins with a dot; "
                                      "give one with --name");
  }
  return CutName(CheckedText("--name", name), warnings);
}

std::u16string CheckedAddress(const std::string& address) {
  std::u16string wide = CheckedText("--address", address);
  if (!IsAddressText(wide)) {
    throw UsageError(fmt::format("--address {}", address), "it is not a dotted IPv4 address",
                     "give four numbers from 0 to 255, such as 192.168.10.240");
  }
  return wide;
}

std::uint32_t CheckedSlot(std::int64_t slot) {
  if (slot < 1 || slot > std::numeric_limits<std::int32_t>::max()) {
    throw UsageError(fmt::format("--slot {}", slot), "there is no such slot",
                     "slots count from 1; a new pool has 20 of them");
  }
  return static_cast<std::uint32_t>(slot - 1);
}

std::int32_t CheckedPlayer(const std::optional<std::int64_t>& player) {
  if (!player) return -1;
  if (*player < 1 || *player > kOfferedPlayers) {
    throw UsageError(fmt::format("--player {}", *player), "there is no such media player",
                     fmt::format("give a number from 1 to {}", kOfferedPlayers));
  }
  return static_cast<std::int32_t>(*player - 1);
}

std::uint32_t CheckedMode(const std::string& mode) {
  const auto code = simulator::VideoModeFromText(mode);
  if (!code) {
    throw UsageError(fmt::format("--mode {}", mode), "there is no such video mode",
                     "give one of " + simulator::VideoModeList());
  }
  return *code;
}

simulator::Scenario ReadScenario(const ExportOptions& options) {
  simulator::Scenario scenario;
  if (options.scenario) {
    const std::filesystem::path file = PathOf(*options.scenario);
    try {
      scenario = simulator::LoadScenario(file);
    } catch (const simulator::ScenarioError& error) {
      throw ScenarioFailure(file, error.what());
    }
  }
  if (options.mode) scenario.mode = CheckedMode(*options.mode);
  return scenario;
}

std::chrono::milliseconds CheckedTimeout(double seconds) {
  if (!(seconds > 0) || seconds > kLongestTimeout) {
    throw UsageError(fmt::format("--timeout {}", seconds), "it is out of range",
                     fmt::format("give a number of seconds up to {}", kLongestTimeout));
  }
  return std::chrono::milliseconds(static_cast<std::int64_t>(std::ceil(seconds * 1000)));
}

void CheckDepth(const std::optional<int>& depth) {
  if (!depth || *depth == 8 || *depth == 16) return;
  throw UsageError(fmt::format("--depth {}", *depth), "documents have 8 or 16 bits per channel",
                   "give --depth 8 or --depth 16");
}

void CheckStandardInput(const ExportOptions& options) {
  const auto uses = std::ranges::count(options.alphaChannels, kStandardInput) +
                    (options.picture == kStandardInput ? 1 : 0);
  if (uses <= 1) return;
  throw UsageError(kStandardInput, "standard input can be read once",
                   "give one picture there, and the others as files");
}

}  // namespace

std::string ProposedName(const std::string& picture) {
  if (picture == kStandardInput) return "still";
  // There and back, since a file's name may be no valid text.
  const std::string file =
      simulator::ToUtf8(simulator::ToUtf16(simulator::PathText(PathOf(picture).filename())));
  return file.substr(0, file.find('.'));
}

ExportPlan PlanExport(const ExportOptions& options) {
  CheckPoolName(options.pool);
  CheckStandardInput(options);
  ExportPlan plan;
  plan.orders.slot = CheckedSlot(options.slot);
  plan.orders.mediaPlayer = CheckedPlayer(options.player);
  plan.orders.name = StillName(options, plan.warnings);
  plan.orders.address = CheckedAddress(options.address);
  plan.orders.premultiply = options.premultiply;
  CheckDepth(options.depth);
  plan.timeout = CheckedTimeout(options.timeoutSeconds);
  plan.scenario = ReadScenario(options);
  return plan;
}

}  // namespace mixdecks
