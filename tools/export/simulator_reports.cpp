#include "tools/export/simulator_reports.h"

#include <sstream>

#include "simulator/file_operations.h"
#include "simulator/file_reading.h"
#include "simulator/unicode.h"

namespace mixdecks {
namespace {

namespace fs = std::filesystem;
using simulator::LastWriteCount;

constexpr std::uint64_t kLongestReport = 1 << 20;

/// None when the file was last written at `former`.
std::vector<std::string> NewLines(const fs::path& file, std::uint64_t former) {
  std::vector<std::string> lines;
  if (LastWriteCount(file) == former) return lines;
  try {
    std::istringstream text(simulator::ReadTextFile(file, kLongestReport));
    for (std::string line; std::getline(text, line);) {
      if (line.ends_with('\r')) line.pop_back();
      // File names in it may have come in the system's own encoding.
      if (!line.empty()) lines.push_back(simulator::ToUtf8(simulator::ToUtf16(line)));
    }
  } catch (const fs::filesystem_error&) {
    // Without the file, the same as without the simulator.
  }
  return lines;
}

}  // namespace

SimulatorReports::SimulatorReports(const fs::path& pool)
    : files_(simulator::NeighboursOf(pool)),
      formerFailure_(LastWriteCount(files_.failure)),
      formerViolations_(LastWriteCount(files_.violations)) {}

std::string SimulatorReports::Failure() const {
  const std::vector<std::string> lines = NewLines(files_.failure, formerFailure_);
  return lines.empty() ? std::string() : lines.front();
}

std::vector<std::string> SimulatorReports::Violations() const {
  return NewLines(files_.violations, formerViolations_);
}

}  // namespace mixdecks
