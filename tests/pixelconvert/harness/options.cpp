#include "tests/pixelconvert/harness/options.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace mixdecks::proof {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(_WIN32)
constexpr Effort kNaturalEffort = Effort::kSmall;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr Effort kNaturalEffort = Effort::kSmall;
#else
constexpr Effort kNaturalEffort = Effort::kDefault;
#endif
#else
constexpr Effort kNaturalEffort = Effort::kDefault;
#endif

template <typename Number>
bool ParseNumber(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && !text.empty();
}

// The part of `argument` behind `name`, if it begins with it.
std::optional<std::string_view> ValueOf(std::string_view argument, std::string_view name) {
  if (!argument.starts_with(name)) return std::nullopt;
  return argument.substr(name.size());
}

bool ParsePair(std::string_view text, Options& options) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return false;
  options.source = text.substr(0, colon);
  options.destination = text.substr(colon + 1);
  return true;
}

// Takes one argument; `known` tells whether it is ours, the result whether it is well formed.
bool ParseOption(std::string_view argument, Options& options, bool& known) {
  known = true;
  if (argument == "--full") {
    options.effort = Effort::kFull;
    return true;
  }
  if (argument == "--small") {
    options.effort = Effort::kSmall;
    return true;
  }
  if (argument == "--sse2-only") {
    options.sse2Only = true;
    return true;
  }
  if (const auto seed = ValueOf(argument, "--seed=")) return ParseNumber(*seed, options.seed);
  if (const auto pair = ValueOf(argument, "--pair=")) return ParsePair(*pair, options);
  if (const auto width = ValueOf(argument, "--width=")) {
    return ParseNumber(*width, options.width.emplace());
  }
  known = false;
  return true;
}

std::string_view EffortArgument(Effort effort) {
  switch (effort) {
    case Effort::kSmall:
      return "--small ";
    case Effort::kFull:
      return "--full ";
    case Effort::kDefault:
      break;
  }
  return "";
}

}  // namespace

Options& TheOptions() {
  static Options options = {.effort = kNaturalEffort};
  return options;
}

std::optional<std::string> ParseOptions(int& count, char** arguments) {
  int kept = 0;
  for (int i = 0; i < count; ++i) {
    bool known = false;
    const bool wellFormed = i == 0 || ParseOption(arguments[i], TheOptions(), known);
    if (!wellFormed) return "not understood: " + std::string(arguments[i]);
    if (!known) arguments[kept++] = arguments[i];
  }
  count = kept;
  return std::nullopt;
}

std::string RepeatArguments(std::string_view source, std::string_view destination,
                            std::uint32_t width) {
  return std::string(EffortArgument(TheOptions().effort)) +
         "--seed=" + std::to_string(TheOptions().seed) + " --pair=" + std::string(source) + ":" +
         std::string(destination) + " --width=" + std::to_string(width) +
         " '--gtest_filter=*Proof*'";
}

}  // namespace mixdecks::proof
