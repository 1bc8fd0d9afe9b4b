#include "simulator/com_server_settings_win.h"

#include <windows.h>

#include <fstream>
#include <string>
#include <system_error>

#include "simulator/pool_neighbours.h"

namespace mixdecks::simulator {
namespace {

namespace fs = std::filesystem;

std::wstring Environment(const wchar_t* name) {
  const DWORD size = GetEnvironmentVariableW(name, nullptr, 0);
  if (size == 0) return {};
  std::wstring value(size, L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), size));
  return value;
}

/// Writes lines to a file, and to a debugger.
void Tell(const fs::path& file, std::span<const std::string> lines) {
  std::ofstream stream(file, std::ios::binary);
  for (const std::string& line : lines) {
    stream << line << "\r\n";
    OutputDebugStringA(("Mixdecks switcher simulator: " + line + "\n").c_str());
  }
}

}  // namespace

fs::path SimulatorPool() {
  const std::wstring pool = Environment(L"MIXDECKS_SIMULATOR_POOL");
  if (!pool.empty()) return fs::absolute(pool);
  const std::wstring userData = Environment(L"LOCALAPPDATA");
  if (userData.empty()) {
    throw PoolError("LOCALAPPDATA is not set: name a pool in MIXDECKS_SIMULATOR_POOL");
  }
  return fs::path(userData) / L"Mixdecks" / L"switcher-pool";
}

std::optional<fs::path> SimulatorScenario() {
  const std::wstring scenario = Environment(L"MIXDECKS_SIMULATOR_SCENARIO");
  if (!scenario.empty()) return scenario;
  const fs::path beside = NeighboursOf(SimulatorPool()).scenario;
  if (fs::exists(beside)) return beside;
  return std::nullopt;
}

std::unique_ptr<SwitcherSimulator> MakeConfiguredSimulator() {
  const fs::path pool = SimulatorPool();
  fs::create_directories(pool.parent_path());
  const std::optional<fs::path> scenario = SimulatorScenario();
  auto simulator =
      std::make_unique<SwitcherSimulator>(scenario ? LoadScenario(*scenario) : Scenario(), pool);
  // What they tell is over now. Somebody may have them open; that is no reason to fail.
  const PoolNeighbours neighbours = NeighboursOf(pool);
  std::error_code ignored;
  fs::remove(neighbours.failure, ignored);
  fs::remove(neighbours.violations, ignored);
  return simulator;
}

void ReportFailure(std::string_view why) noexcept {
  try {
    const std::string line(why);
    Tell(NeighboursOf(SimulatorPool()).failure, {&line, 1});
  } catch (const std::exception&) {
    // There is nowhere left to tell it.
  }
}

void ReportViolations(std::span<const std::string> violations) noexcept {
  try {
    Tell(NeighboursOf(SimulatorPool()).violations, violations);
  } catch (const std::exception&) {
    // Likewise.
  }
}

}  // namespace mixdecks::simulator
