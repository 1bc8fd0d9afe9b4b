#include "simulator/com_server_settings_win.h"

#include <windows.h>

#include <fstream>
#include <string>

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
  fs::path beside = SimulatorPool();
  beside += L".scenario.json";
  if (fs::exists(beside)) return beside;
  return std::nullopt;
}

std::unique_ptr<SwitcherSimulator> MakeConfiguredSimulator() {
  const fs::path pool = SimulatorPool();
  fs::create_directories(pool.parent_path());
  const std::optional<fs::path> scenario = SimulatorScenario();
  return std::make_unique<SwitcherSimulator>(scenario ? LoadScenario(*scenario) : Scenario(), pool);
}

void ReportFailure(std::string_view why) noexcept {
  try {
    const std::string text = "Mixdecks switcher simulator: " + std::string(why) + "\r\n";
    OutputDebugStringA(text.c_str());
    std::ofstream(SimulatorPool().parent_path() / "simulator-error.txt", std::ios::binary) << text;
  } catch (const std::exception&) {
    // There is nowhere left to tell it.
  }
}

}  // namespace mixdecks::simulator
