// The command with the built library: its real dialog, the registered simulator, one desktop.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>
// After it.
#include <objbase.h>

#include <filesystem>
#include <functional>
#include <thread>

#include <nlohmann/json.hpp>

#include "dialog/window_messages.h"
#include "tests/e2e/preferences_key.h"
#include "tests/tools/command_bench.h"
#include "tools/interrupt.h"
#include "tools/path_text.h"
#include "tools/plugin_host/dialog_windows.h"
#include "transfer/service_contract.h"

namespace mixdecks {
namespace {

using test::Bytes;
using test::CommandBench;
using test::CommandResult;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kLibrary = "Mixdecks.8bp";

/// Exit code of the system's registration program for the simulator.
DWORD Regsvr32(std::wstring arguments) {
  std::wstring command = L"regsvr32 " + arguments + L" MixdecksSwitcherSim.dll";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process)) {
    return ~DWORD{0};
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = ~DWORD{0};
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return code;
}

/// Somebody at the dialog of the thread that makes this: works once it is connected.
class AtTheDialog {
 public:
  AtTheDialog(bool (*isTheDialog)(HWND), std::function<void(HWND)> work)
      : thread_([thread = GetCurrentThreadId(), isTheDialog, work = std::move(work)] {
          const ULONGLONG limit = GetTickCount64() + 30'000;
          while (GetTickCount64() < limit) {
            for (const HWND window : DialogsOfThread(thread)) {
              const bool ready = isTheDialog != IsExportDialog ||
                                 WindowText(window) == u"ORVA Switcher Media Pool";
              if (isTheDialog(window) && ready) return work(window);
            }
            Sleep(5);
          }
          ADD_FAILURE() << "the dialog never came";
          SetInterruptRequested(true);
        }) {}
  ~AtTheDialog() { thread_.join(); }
  AtTheDialog(const AtTheDialog&) = delete;
  AtTheDialog& operator=(const AtTheDialog&) = delete;

 private:
  std::thread thread_;
};

class PluginCommandTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { ASSERT_EQ(Regsvr32(L"/s"), 0u); }
  static void TearDownTestSuite() { EXPECT_EQ(Regsvr32(L"/s /u"), 0u); }

  void SetUp() override {
    e2e::DeletePreferencesKey();
    SetEnvironmentVariableW(L"MIXDECKS_SIMULATOR_SCENARIO", nullptr);
    SetInterruptRequested(false);
  }
  void TearDown() override {
    SetInterruptRequested(false);
    EXPECT_EQ(GetModuleHandleW(L"Mixdecks.8bp"), nullptr) << "the library was unloaded";
  }

  /// `mixdecks export --plugin LIBRARY WORDS…` with a small picture.
  CommandResult Run(std::vector<std::string> words) {
    words.insert(words.begin(), {picture_, "--plugin", kLibrary});
    return bench_.Export(words);
  }
  CommandResult Press(std::vector<std::string> words) {
    words.push_back("--press-export");
    return Run(words);
  }
  CommandResult PressInScenario(std::string_view scenario, std::vector<std::string> words = {}) {
    words.insert(words.end(), {"--scenario", bench_.Write("scenario.json", scenario)});
    return Press(words);
  }

  CommandBench bench_;
  std::string picture_ = bench_.Write("one.ppm", test::PnmFile('6', 2, 2, Bytes(12, 99)));
};

TEST_F(PluginCommandTest, ExportsTheFrameThatItsOwnCodeExports) {
  const Bytes rgba = {255, 0, 0, 255, 0, 255, 0, 128, 0, 0, 255, 64, 9, 200, 77, 0};
  Bytes samples;
  for (int i = 0; i < 720 * 486 / 4; ++i)
    samples.insert(samples.end(), rgba.begin(), rgba.end());
  picture_ = bench_.Write("rgba.png", test::PngFile(720, 486, test::kPngRgba, 8, samples));
  const std::string scenario = bench_.Write("ntsc.json", R"({"mode": "ntsc"})");
  const CommandResult real = Press({"--slot", "3", "--player", "2", "--name", "Zwölf",
                                    "--no-premultiply", "--json", "--scenario", scenario});
  ASSERT_EQ(real.exitCode, 0) << real.err;
  const nlohmann::json report = nlohmann::json::parse(real.out);
  EXPECT_EQ(report["slot"], 3);
  EXPECT_EQ(report["player"], 2);
  EXPECT_EQ(report["shown"], true);
  EXPECT_EQ(report["name"], "Zwölf");
  EXPECT_EQ(report["premultiply"], false);
  const Bytes frame = bench_.Frame(3);

  const CommandResult own = bench_.Export({picture_, "--slot", "4", "--no-premultiply"});
  ASSERT_EQ(own.exitCode, 0) << own.err;
  EXPECT_TRUE(frame == bench_.Frame(4));

  const CommandResult again = Press({"--slot", "3", "--json"});
  ASSERT_EQ(again.exitCode, 0) << again.err;
  EXPECT_EQ(nlohmann::json::parse(again.out)["replaced"], "Zwölf");
  EXPECT_EQ(nlohmann::json::parse(again.out)["name"], "rgba");
  EXPECT_EQ(nlohmann::json::parse(again.out)["premultiply"], true);
}

TEST_F(PluginCommandTest, TypesTheAddress) {
  const CommandResult result =
      PressInScenario(R"({"mode": "ntsc", "addresses": ["10.0.0.7"]})", {"--address", "10.0.0.7"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(e2e::ReadTextPreference(L"Address"), u"10.0.0.7");
}

TEST_F(PluginCommandTest, TakesAPictureOfTheDialog) {
  const CommandResult result =
      PressInScenario(R"({"mode": "ntsc"})", {"--screenshot", bench_.Path("dialog.png")});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_THAT(test::ReadText(bench_.Path("dialog.png")), testing::StartsWith("\x89PNG"));
  const CommandResult unwritable = PressInScenario(
      R"({"mode": "ntsc"})", {"--screenshot", bench_.Path("no such folder/dialog.png")});
  EXPECT_EQ(unwritable.exitCode, 0) << unwritable.err;
  EXPECT_THAT(unwritable.err, AllOf(HasSubstr("warning"), HasSubstr("dialog.png")));
}

struct ToldFailure {
  const char* name;
  const char* scenario;
  int exitCode;
  const char* told;
  const char* timeout = "60";
};

void PrintTo(const ToldFailure& failure, std::ostream* stream) {
  *stream << failure.name;
}

class ToldFailureTest : public PluginCommandTest,
                        public testing::WithParamInterface<ToldFailure> {};

TEST_P(ToldFailureTest, IsReadFromTheScreen) {
  const ToldFailure& failure = GetParam();
  const CommandResult result = PressInScenario(
      failure.scenario, {"--player", "3", "--slot", "4", "--timeout", failure.timeout});
  EXPECT_EQ(result.exitCode, failure.exitCode) << result.out << result.err;
  EXPECT_THAT(result.err, HasSubstr(failure.told));
  EXPECT_EQ(result.out, "");
  bench_.ExpectWholePool();
}

INSTANTIATE_TEST_SUITE_P(
    Each, ToldFailureTest,
    testing::Values(
        ToldFailure{"VideoModeFails", R"({"script": [{"at": "GetVideoMode", "do": "fail"}]})", 1,
                    "Unable to export an image of this format."},
        ToldFailure{"CreateFrameFails",
                    R"({"mode": "ntsc", "script": [{"at": "CreateFrame", "do": "fail"}]})", 1,
                    "An error occured during export."},
        ToldFailure{"UploadFails",
                    R"({"mode": "ntsc", "script": [{"at": "UploadHalfway", "do": "fail"}]})", 1,
                    "the switcher did not take the still"},
        ToldFailure{"SoftwareTooOld",
                    R"({"script": [{"at": "ConnectTo", "do": "fail", "reason": "cfif"}]})", 1,
                    "Please connect the switcher via USB and run the ORVA Switcher Utility"},
        ToldFailure{"FewSlots", R"({"slots": 3})", 2, "the switcher has 3 slots"},
        ToldFailure{"FewPlayers", R"({"players": 2})", 2, "the switcher has 2 media players"},
        ToldFailure{"ConnectsTooSlowly", R"({"connectDelay": 1500})", 1,
                    "no end within 0.3 s of connecting", "0.3"},
        ToldFailure{"UploadsTooSlowly", R"({"mode": "ntsc", "uploadTime": 600000})", 1,
                    "no end within 2 s of exporting", "2"}),
    [](const auto& failure) { return std::string(failure.param.name); });

TEST_F(PluginCommandTest, TellsOfAMissingService) {
  const CommandResult result = PressInScenario(R"({"service": "null"})");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("Your Mixdecks installation is missing some components"),
                                HasSubstr("regsvr32 MixdecksSwitcherSim.dll")));
}

/// The user's way out of a message box and the dialog under it.
void CloseAll(HWND window) {
  const DWORD thread = GetWindowThreadProcessId(window, nullptr);
  for (std::vector<HWND> open{window}; !open.empty(); open = DialogsOfThread(thread)) {
    for (const HWND each : open)
      PostButton(each, kCloseButton);
    Sleep(5);
  }
}

TEST_F(PluginCommandTest, TellsWhyTheRegisteredSimulatorCannotServe) {
  const std::filesystem::path report = PathOf(bench_.Path("simulator-error.txt"));
  std::filesystem::create_directory(PathOf(bench_.Pool()));
  const std::string letter = bench_.Write("pool/letter.txt", "to somebody");
  const auto toldWhy = AllOf(HasSubstr("the registered simulator cannot serve"),
                             HasSubstr("pool: the folder holds other files and no pool"),
                             Not(HasSubstr("regsvr32")));
  const CommandResult pressed = Press({});
  EXPECT_EQ(pressed.exitCode, 1);
  EXPECT_THAT(pressed.err, toldWhy);
  {
    const AtTheDialog user([](HWND window) { return AsMessageBox(window).has_value(); }, CloseAll);
    const CommandResult byHand = Run({});
    EXPECT_EQ(byHand.exitCode, 1);
    EXPECT_THAT(byHand.err, toldWhy);
  }
  EXPECT_TRUE(std::filesystem::exists(report));
  std::filesystem::remove(PathOf(letter));
  EXPECT_EQ(PressInScenario(R"({"mode": "ntsc"})").exitCode, 0);
  EXPECT_FALSE(std::filesystem::exists(report));
}

TEST_F(PluginCommandTest, TellsOfBrokenRules) {
  const std::string scenario = bench_.Write("ntsc.json", R"({"mode": "ntsc"})");
  const AtTheDialog clumsyUser(IsExportDialog, [](HWND dialog) {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    ITMKSwitcherDiscovery* discovery = nullptr;
    EXPECT_EQ(
        CoCreateInstance(reinterpret_cast<const GUID&>(kSwitcherDiscoveryClass), nullptr,
                         CLSCTX_INPROC_SERVER, reinterpret_cast<const GUID&>(kSwitcherDiscoveryId),
                         reinterpret_cast<void**>(&discovery)),
        S_OK);
    if (discovery != nullptr) {
      discovery->ConnectTo(nullptr, nullptr, nullptr);
      discovery->Release();
    }
    CoUninitialize();
    PressButton(dialog, kExportButton);
  });
  const CommandResult result = Run({"--scenario", scenario});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.err, HasSubstr("internal fault: ConnectTo: called with a null pointer"));
}

TEST_F(PluginCommandTest, RefusesFilesThatAreNotTheLibrary) {
  const std::pair<std::string, const char*> files[] = {
      {bench_.Path("none.8bp"), "there is no such file"},
      {bench_.Path(""), "it is a folder"},
      {picture_, "it is no library for 64-bit Windows"},
      {"MixdecksSwitcherSim.dll", "it has no function MixdecksExportMain"},
  };
  for (const auto& [file, told] : files) {
    const CommandResult result = bench_.Export({picture_, "--plugin", file});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr(told), HasSubstr("give the path of Mixdecks.8bp")));
  }
}

TEST_F(PluginCommandTest, RefusesOptionsThatDoNotGoTogether) {
  EXPECT_THAT(bench_.Export({picture_, "--press-export"}).err, HasSubstr("need a library"));
  EXPECT_THAT(bench_.Export({"--about"}).err, HasSubstr("need a library"));
  const CommandResult screenshot =
      bench_.Export({picture_, "--screenshot", bench_.Path("dialog.png")});
  EXPECT_EQ(screenshot.exitCode, 2);
  EXPECT_THAT(screenshot.err, HasSubstr("--press-export, too"));
  const CommandResult mode = Press({"--mode", "10i9"});
  EXPECT_EQ(mode.exitCode, 2);
  EXPECT_THAT(mode.err, HasSubstr("--scenario"));
  EXPECT_THAT(bench_.Export({"--plugin", kLibrary}).err, HasSubstr("IMAGE is required"));
}

TEST_F(PluginCommandTest, LetsThePluginRefuseOtherModesThanRgb) {
  picture_ = bench_.Write("grey.pgm", test::PnmFile('5', 2, 2, Bytes(4, 99)));
  const CommandResult result = Press({});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("-30201"), HasSubstr("greyscale")));
}

TEST_F(PluginCommandTest, LeavesTheDialogToItsUser) {
  const std::string scenario = bench_.Write("ntsc.json", R"({"mode": "ntsc"})");
  const AtTheDialog user(IsExportDialog, [](HWND dialog) {
    PasteOver(dialog, kNameEdit, u"by hand");
    ChooseRadio(dialog, kAfterExportRadios, kMediaPlayer1Radio);
    PressButton(dialog, kExportButton);
  });
  const CommandResult result = Run({"--scenario", scenario});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_THAT(result.out,
              AllOf(HasSubstr("Exported \"by hand\" to slot 1"), HasSubstr("1 shows the still")));
}

TEST_F(PluginCommandTest, TellsThatTheUserExportedNothing) {
  const AtTheDialog user(IsExportDialog, [](HWND dialog) { PostButton(dialog, kCloseButton); });
  const CommandResult result = Run({});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.err, HasSubstr("no still came into the pool"));
}

TEST_F(PluginCommandTest, ClosesTheDialogOnCtrlC) {
  const AtTheDialog user(IsExportDialog, [](HWND) { SetInterruptRequested(true); });
  const CommandResult result = Run({});
  EXPECT_EQ(result.exitCode, 130);
  EXPECT_THAT(result.err, HasSubstr("interrupted"));
}

TEST_F(PluginCommandTest, ShowsTheAboutBox) {
  const AtTheDialog user(IsAboutBox, [](HWND about) {
    EXPECT_EQ(ControlText(about, kAboutVersion), u"Version 1.0");
    PostMessageW(about, WM_LBUTTONDOWN, 0, 0);
  });
  const CommandResult result = bench_.Run({"export", "--plugin", kLibrary, "--about"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(result.out, "");
}

}  // namespace
}  // namespace mixdecks
