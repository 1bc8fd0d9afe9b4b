// What the command line and the build decide about the proof: how much, which cases, which seed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mixdecks::proof {

/// How much is compared. `kSmall` is for slow surroundings: sanitizers, Wine, an emulated
/// processor; it takes every eleventh width and a fifth of the layouts. `kFull` takes every width,
/// content and layout with one another.
enum class Effort { kSmall, kDefault, kFull };

struct Options {
  Effort effort = Effort::kDefault;
  std::uint64_t seed = 1;
  /// Restrict the proof to one pair, for repeating a failure.
  std::string source, destination;
  std::optional<std::uint32_t> width;
};

/// The options of this run.
Options& TheOptions();

/// Takes the options it knows out of the arguments; gives a message about a wrong one.
std::optional<std::string> ParseOptions(int& count, char** arguments);

/// The arguments that repeat this run for one pair and width.
std::string RepeatArguments(std::string_view source, std::string_view destination,
                            std::uint32_t width);

}  // namespace mixdecks::proof
