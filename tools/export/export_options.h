// What the user asked `mixdecks export` to do, as typed and as checked.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "simulator/scenario.h"
#include "tools/export/export_operator.h"

namespace mixdecks {

/// The words of the command line, in UTF-8.
struct ExportOptions {
  std::string picture;
  std::string pool = "mixdecks-pool";
  std::int64_t slot = 1;               ///< from 1
  std::optional<std::int64_t> player;  ///< from 1
  std::optional<std::string> name;
  std::optional<std::string> mode;
  std::optional<std::string> scenario;
  std::string address = "192.168.10.240";
  std::vector<std::string> alphaChannels;
  std::optional<int> depth;
  bool toRgb = false;
  bool premultiply = true;
  bool json = false;
  double timeoutSeconds = 60;

  // Only where the system can load it:
  std::optional<std::string> plugin;  ///< the built library, to run in place of our own code
  bool pressExport = false;           ///< operate the library's dialog; otherwise the user does
  /// PNG file for a picture of the dialog when it is filled in.
  std::optional<std::string> screenshot;
  bool about = false;  ///< show the library's about box and nothing else
};

/// The same, checked as far as it can be without picture and switcher.
struct ExportPlan {
  ExportOrders orders;
  simulator::Scenario scenario;
  std::chrono::milliseconds timeout{};
  std::vector<std::string> warnings;
};

/// Media players that the dialog offers.
inline constexpr std::int64_t kOfferedPlayers = 4;
/// What the dialog reads of its name field, in UTF-16 units: 255 with a terminator.
inline constexpr std::size_t kLongestName = 254;

/// The name that the dialog proposes: the file's name up to its first dot.
std::string ProposedName(const std::string& picture);

/// Checks the words and reads the scenario. Throws `UserError`.
ExportPlan PlanExport(const ExportOptions& options);

}  // namespace mixdecks
