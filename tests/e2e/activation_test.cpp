// The simulator's library as COM finds it through the registry.
#include <fstream>

#include "dialog/window_messages.h"
#include "simulator/pool.h"
#include "tests/e2e/plugin_fixture.h"
#include "tests/simulator/temporary_folder.h"

namespace mixdecks::e2e {
namespace {

namespace fs = std::filesystem;

/// Exit code of the system's registration program.
DWORD Regsvr32(const wchar_t* arguments) {
  std::wstring command = std::wstring(L"regsvr32 ") + arguments + L" MixdecksSwitcherSim.dll";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process)) {
    ADD_FAILURE() << "regsvr32 cannot be started: error " << GetLastError();
    return ~DWORD{0};
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return code;
}

class Activation : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    ASSERT_EQ(Regsvr32(L"/s"), 0U);
    SetEnvironmentVariableW(kPool, (folder / "pool").c_str());
    SetEnvironmentVariableW(kScenario, nullptr);
  }
  void TearDown() override {
    EXPECT_EQ(Regsvr32(L"/s /u"), 0U);
    SetEnvironmentVariableW(kPool, nullptr);
    SetEnvironmentVariableW(kScenario, nullptr);
    PluginTest::TearDown();
  }
  void WriteFile(const fs::path& path, std::string_view text) {
    std::ofstream(path, std::ios::binary) << text;
  }
  static void ExportToSlot5(DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.ChooseSlot(4);
    dialog.Press(kExportButton);
    dialog.WaitUntilClosed();
  }

  static constexpr wchar_t kPool[] = L"MIXDECKS_SIMULATOR_POOL";
  static constexpr wchar_t kScenario[] = L"MIXDECKS_SIMULATOR_SCENARIO";

  test::TemporaryFolder folder;
  Picture picture = BusyPicture(1920, 1080);
};

TEST_F(Activation, ExportsIntoAPoolThatOthersCanUseAfterwards) {
  HostedPlugin plugin(DocumentOf(picture, true));
  EXPECT_EQ(plugin.Start(ExportToSlot5), kHostResultDone);
  const simulator::PoolContents contents = simulator::LoadPool(folder / "pool");
  ASSERT_TRUE(contents.slots.at(4).has_value());
  EXPECT_TRUE(simulator::LoadFrame(folder / "pool", contents, 4) ==
              ExpectedFrame(picture, true, true));
  EXPECT_NO_THROW(simulator::SwitcherSimulator({}, folder / "pool")) << "nobody holds the pool";
  plugin.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.WaitUntil("the still is listed", [&] {
      const std::vector<std::u16string> slots = dialog.Slots();
      return slots.size() == 20 && slots[4] == u"5. Untitled-1";
    });
  });
}

TEST_F(Activation, LeavesTheProcessWithTheDialog) {
  HostedPlugin plugin(DocumentOf(BusyPicture(8, 8), false));
  plugin.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    EXPECT_NE(GetModuleHandleW(L"MixdecksSwitcherSim.dll"), nullptr);
  });
  EXPECT_EQ(GetModuleHandleW(L"MixdecksSwitcherSim.dll"), nullptr);
}

TEST_F(Activation, IsLeftInTheMiddleOfAnUpload) {
  WriteFile(folder / "pool.scenario.json", R"({"uploadTime": 60000})");
  HostedPlugin plugin(DocumentOf(BusyPicture(8, 8), false));
  const std::int16_t result = plugin.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.Press(kExportButton);
    dialog.WaitUntil("the status changes", [&] { return !dialog.Text(kStatusLine).empty(); });
    dialog.PressClose();
    dialog.WaitUntilClosed();
  });
  EXPECT_EQ(result, kHostResultDone);
  EXPECT_FALSE(simulator::LoadPool(folder / "pool").slots.at(0).has_value());
}

TEST_F(Activation, TakesAPoolWhereTheHostStands) {
  HostedPlugin plugin(DocumentOf(BusyPicture(8, 8), false));
  SetEnvironmentVariableW(kPool, L"near");
  const fs::path former = fs::current_path();
  fs::current_path(folder.Path());
  plugin.Start([](DialogDriver& dialog) { EXPECT_TRUE(dialog.WaitUntilConnected()); });
  fs::current_path(former);
  EXPECT_EQ(simulator::LoadPool(folder / "near").slots.size(), 20U);
}

TEST_F(Activation, PlaysTheScenarioOfTheEnvironment) {
  WriteFile(folder / "few.json", R"({"slots": 3, "players": 1})");
  SetEnvironmentVariableW(kScenario, (folder / "few.json").c_str());
  HostedPlugin plugin(DocumentOf(BusyPicture(8, 8), false));
  plugin.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.WaitUntil("three slots are listed", [&] { return dialog.Slots().size() == 3; });
  });
}

TEST_F(Activation, PlaysTheScenarioBesideThePool) {
  WriteFile(folder / "pool.scenario.json", R"({"slots": 7})");
  HostedPlugin plugin(DocumentOf(BusyPicture(8, 8), false));
  plugin.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.WaitUntil("seven slots are listed", [&] { return dialog.Slots().size() == 7; });
  });
}

TEST_F(Activation, KeepsThePoolInTheUsersDataByDefault) {
  SetEnvironmentVariableW(kPool, nullptr);
  std::array<wchar_t, 1024> former{};
  GetEnvironmentVariableW(L"LOCALAPPDATA", former.data(), static_cast<DWORD>(former.size()));
  SetEnvironmentVariableW(L"LOCALAPPDATA", folder.Path().c_str());
  {
    HostedPlugin plugin(DocumentOf(picture, true));
    plugin.Start(ExportToSlot5);
  }
  SetEnvironmentVariableW(L"LOCALAPPDATA", former.data());
  EXPECT_TRUE(simulator::LoadPool(folder / "Mixdecks" / "switcher-pool").slots.at(4).has_value());
}

TEST_F(Activation, SaysWhyItCannotServe) {
  WriteFile(folder / "bad.json", "{");
  SetEnvironmentVariableW(kScenario, (folder / "bad.json").c_str());
  HostedPlugin plugin(DocumentOf(BusyPicture(8, 8), false));
  plugin.Start([](DialogDriver& dialog) { ExpectServiceBox(dialog, nullptr); });
  std::ifstream report(folder / "simulator-error.txt");
  std::string text;
  std::getline(report, text);
  EXPECT_NE(text.find("bad.json"), std::string::npos) << text;
}

TEST_F(Activation, IsGoneAfterItsUnregistration) {
  EXPECT_EQ(Regsvr32(L"/s /u"), 0U);
  HostedPlugin plugin(DocumentOf(BusyPicture(8, 8), false));
  const std::int16_t result =
      plugin.Start([](DialogDriver& dialog) { ExpectServiceBox(dialog, nullptr); });
  EXPECT_EQ(result, kHostResultDone);
}

}  // namespace
}  // namespace mixdecks::e2e
