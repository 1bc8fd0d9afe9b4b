// What the command line and the build decide about the proof: how much, which cases, which seed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mixdecks::proof {

/// How much is compared. The default takes every width, content and layout with one another.
/// `kFull` does so with four times the pictures, and taller ones. `kSmall` is for slow surroundings
/// (sanitizers, Windows, an emulated processor): the named widths and of the others every eleventh,
/// a third of the pictures, four layouts of nine, and of the exhaustive tests every 37th picture.
enum class Effort { kSmall, kDefault, kFull };

struct Options {
  Effort effort = Effort::kDefault;
  std::uint64_t seed = 1;
  /// Restrict the proof to one pair, for repeating a failure.
  std::string source = {}, destination = {};
  std::optional<std::uint32_t> width = {};
  /// The processor must know no instruction later than SSE2.
  bool sse2Only = false;
};

/// The options of this run.
Options& TheOptions();

/// Takes the options it knows out of the arguments; gives a message about a wrong one.
std::optional<std::string> ParseOptions(int& count, char** arguments);

/// The arguments that repeat this run for one pair and width.
std::string RepeatArguments(std::string_view source, std::string_view destination,
                            std::uint32_t width);

}  // namespace mixdecks::proof
