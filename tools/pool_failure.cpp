#include "tools/pool_failure.h"

#include "simulator/unicode.h"

namespace mixdecks {
namespace {

struct KnownReason {
  std::string_view mark;  ///< a part of the reason
  const char* remedy;     ///< null: stands behind the reason's semicolon
};

constexpr KnownReason kPoolReasons[] = {
    {"; choose another one", nullptr},
    {"; put it back", nullptr},
    {"; give it more slots", nullptr},
    {"in use by", "end that process, or choose another --pool"},
    {"cannot be written", "check the permission, free some space or choose another --pool"},
    {"cannot be read", "check the permission, or choose another --pool"},
    {"there is no such folder", "check the path; an export makes a pool"},
    {"holds no pool", "check the path; an export makes a pool in an empty folder"},
    {"is a file", "name a folder with --pool"},
    {"", "put the file right, or choose another --pool"},
};

constexpr KnownReason kScenarioReasons[] = {
    {"cannot be read", "check the path and the permission"},
    {"", "put the scenario right; docs/simulator.md lists what is allowed"},
};

/// A text that begins with `subject` or with something in it. The path may hold anything.
std::size_t EndOfSubject(const std::filesystem::path& subject, std::string_view text) {
  const std::string known = simulator::PathText(subject);
  return text.find(": ", text.starts_with(known) ? known.size() : 0);
}

template <std::size_t count>
UserError Split(const std::filesystem::path& subject, std::string_view text,
                const KnownReason (&reasons)[count]) {
  const std::size_t end = EndOfSubject(subject, text);
  if (end == std::string_view::npos)
    return Failure(std::string(text), "", reasons[count - 1].remedy);
  const std::string what(text.substr(0, end));
  const std::string_view why = text.substr(end + 2);
  const KnownReason* reason = reasons;
  while (why.find(reason->mark) == std::string_view::npos)
    ++reason;
  if (reason->remedy != nullptr) return Failure(what, std::string(why), reason->remedy);
  const std::size_t remedy = why.find("; ");
  return Failure(what, std::string(why.substr(0, remedy)), std::string(why.substr(remedy + 2)));
}

}  // namespace

void CheckPoolName(const std::string& pool) {
  if (!pool.empty()) return;
  throw UsageError("--pool", "the name is empty",
                   "name the pool's folder, or leave the option out");
}

UserError PoolFailure(const std::filesystem::path& pool, std::string_view text) {
  return Split(pool, text, kPoolReasons);
}

UserError ScenarioFailure(const std::filesystem::path& scenario, std::string_view text) {
  return Split(scenario, text, kScenarioReasons);
}

}  // namespace mixdecks
