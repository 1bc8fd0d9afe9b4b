// Everything that a switcher can do wrong, each through a scenario file: what the user is told, and
// that the pool stays whole, nothing hangs, and the rules between plug-in and switcher are kept.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "simulator/pool.h"
#include "simulator/scenario.h"
#include "simulator/unicode.h"
#include "tests/tools/command_bench.h"
#include "tools/path_text.h"

namespace mixdecks {
namespace {

using test::CommandBench;
using test::CommandResult;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kExportFailed = "An error occured during export.";
constexpr const char* kNoMode =
    "Unable to export an image of this format. RGB 8/16 Bit Required. Resize the image to be less "
    "than or equal to the current switcher resolution";
constexpr const char* kServiceMissing =
    "Your Mixdecks installation is missing some components, please try re-installing the "
    "Tollenmark ORVA Software.";
constexpr const char* kKeptSilent = "the switcher did not take the still";
constexpr const char* kNotAccepted = "it did not accept the connection and gave no reason";

struct Fault {
  const char* name;
  /// Members of the scenario, or one step of its script.
  const char* scenario;
  int exitCode = 1;
  /// What is told: on standard error, or on standard output after a success.
  const char* told = "";
  const char* timeout = "60";
};

void PrintTo(const Fault& fault, std::ostream* stream) {
  *stream << fault.name;
}

std::string ScenarioText(const std::string& scenario) {
  if (scenario.starts_with("{")) return scenario;
  return R"({"mode": "ntsc", "slots": 3, "script": [{)" + scenario + "}]}";
}

/// A small picture, a pool, and a switcher that plays a scenario.
class FaultySwitcher {
 public:
  explicit FaultySwitcher(const std::string& scenario) {
    bench_.Write("scenario.json", ScenarioText(scenario));
  }

  const CommandBench& Bench() const noexcept { return bench_; }
  CommandResult Export(std::vector<std::string> words) const {
    words.insert(words.begin(), picture_);
    return bench_.Export(words);
  }
  CommandResult ExportWithFault(std::vector<std::string> words) const {
    words.insert(words.begin(), {"--scenario", bench_.Path("scenario.json")});
    return Export(words);
  }

 private:
  CommandBench bench_;
  std::string picture_ = bench_.Write("one.ppm", test::PnmFile('6', 2, 2, test::Bytes(12, 99)));
};

class ExportFaultTest : public testing::TestWithParam<Fault> {};

TEST_P(ExportFaultTest, IsToldAndLeavesEverythingWhole) {
  const Fault& fault = GetParam();
  const FaultySwitcher switcher(fault.scenario);
  const CommandResult before =
      switcher.Export({"--name", "before", "--slot", "2", "--mode", "ntsc"});
  ASSERT_EQ(before.exitCode, 0) << before.err;
  const test::Bytes untouched = switcher.Bench().Frame(2);

  const CommandResult result =
      switcher.ExportWithFault({"--player", "1", "--timeout", fault.timeout});
  EXPECT_EQ(result.exitCode, fault.exitCode) << result.out << result.err;
  EXPECT_THAT(fault.exitCode == 0 ? result.out : result.err, HasSubstr(fault.told));
  EXPECT_THAT(result.err, Not(HasSubstr("internal fault")));
  switcher.Bench().ExpectWholePool();
  EXPECT_EQ(switcher.Bench().Frame(2), untouched);

  const CommandResult after = switcher.Export({"--name", "after", "--mode", "ntsc"});
  EXPECT_EQ(after.exitCode, 0) << after.err;
}

constexpr Fault kFaults[] = {
    // The service and the connection.
    {"NoService", R"({"service": "absent"})", 1, kServiceMissing},
    {"NullService", R"({"service": "null"})", 1, kServiceMissing},
    {"ConnectToFails", R"("at": "ConnectTo", "do": "fail")", 1, kNotAccepted},
    {"ConnectToFailsForFirmware", R"("at": "ConnectTo", "do": "fail", "reason": "cfif")", 1,
     "connect it via USB and run the ORVA Switcher Utility"},
    {"ConnectToFailsForAReason", R"("at": "ConnectTo", "do": "fail", "reason": "busy")", 1,
     "with reason 'busy'"},
    {"FailsAndThenHangs",
     R"({"script": [{"at": "ConnectTo", "do": "fail"},
                    {"at": "ConnectTo", "do": "wait", "ms": 600000, "call": 2}]})",
     1, kNotAccepted},
    {"OtherAddress", R"({"addresses": ["10.0.0.1"]})", 1, kNotAccepted},
    {"QueryMediaPoolFails", R"("at": "QueryMediaPool", "do": "fail")", 1, kNotAccepted},
    {"GetStillsFails", R"("at": "GetStills", "do": "fail")", 1, kNotAccepted},
    {"GetCountFails", R"("at": "GetCount", "do": "fail")", 1, kNotAccepted},
    {"CreateIteratorFails", R"("at": "CreateIterator", "do": "fail")", 1, kNotAccepted},
    {"NoPlayers", R"({"players": 0})", 2, "the switcher has 0 media players"},
    {"NextFails", R"("at": "Next", "do": "fail")", 2, "the switcher has 0 media players"},
    {"IsValidFails", R"("at": "IsValid", "do": "fail", "times": "always")", 0, "Exported"},
    {"GetNameFails", R"("at": "GetName", "do": "fail", "times": "always")", 0, "Exported"},
    // The frame and its way to the switcher.
    {"FirstVideoModeFails", R"("at": "GetVideoMode", "do": "fail")", 1, kNoMode},
    {"SecondVideoModeFails", R"("at": "GetVideoMode", "do": "fail", "call": 2)", 1, kNoMode},
    {"UnknownModeRefused", R"({"mode": "ntsc", "reportedMode": "what"})", 1, kExportFailed},
    {"UnknownModeTaken", R"({"mode": "10i9", "reportedMode": "what"})", 0, "1920 x 1080"},
    {"ModeChangesBeforeFrame", R"("at": "CreateFrame", "do": "mode", "mode": "10i9")", 1,
     kExportFailed},
    {"CreateFrameFails", R"("at": "CreateFrame", "do": "fail")", 1, kExportFailed},
    {"GetBytesFails", R"("at": "GetBytes", "do": "fail")", 1, kExportFailed},
    {"QueryStillsLockFails", R"("at": "QueryStillsLock", "do": "fail")", 1, kKeptSilent},
    {"LockFails", R"("at": "Lock", "do": "fail")", 1, kKeptSilent},
    {"SetPictureFails", R"("at": "SetPicture", "do": "fail")", 1, "--timeout", "1"},
    {"SetSourceFails", R"("at": "SetSource", "do": "fail")", 0, "1 did not take the still"},
    // The upload.
    {"UploadFailsAtOnce", R"("at": "UploadBegun", "do": "fail")", 1, kKeptSilent},
    {"UploadFailsHalfway", R"("at": "UploadHalfway", "do": "fail")", 1, kKeptSilent},
    {"UploadFailsAtItsEnd", R"("at": "UploadReceived", "do": "fail")", 1, kKeptSilent},
    {"UploadCancelledAtOnce", R"("at": "UploadBegun", "do": "cancel")", 1, kKeptSilent},
    {"UploadCancelledHalfway", R"("at": "UploadHalfway", "do": "cancel")", 1, kKeptSilent},
    {"UploadCancelledAtItsEnd", R"("at": "UploadReceived", "do": "cancel")", 1, kKeptSilent},
    {"RenamedMeanwhile",
     R"("at": "UploadHalfway", "do": "rename", "target": 3, "name": "another station")", 0,
     "Exported"},
    {"ClearedMeanwhile", R"("at": "GetVideoMode", "do": "clear", "target": 1)", 0, "Exported"},
    // A switcher that takes its time.
    {"SlowButWithinTime",
     R"({"mode": "ntsc", "connectDelay": 30, "lockDelay": 30, "uploadTime": 30})", 0, "Exported"},
    {"ConnectsTooSlowly", R"({"connectDelay": 600000})", 1,
     "no end within 0.3 s of connecting to the switcher", "0.3"},
    {"LocksTooSlowly", R"({"mode": "ntsc", "lockDelay": 600000})", 1,
     "no end within 2 s of exporting", "2"},
    {"UploadsTooSlowly", R"({"mode": "ntsc", "uploadTime": 600000})", 1,
     "no end within 2 s of exporting", "2"},
    {"WorkerHeldUp", R"("at": "GetVideoMode", "do": "wait", "ms": 600000)", 1,
     "no end within 2 s of exporting", "2"},
    {"EnumerationHeldUp", R"("at": "GetCount", "do": "wait", "ms": 600000)", 1,
     "no end within 2 s of connecting", "2"},
};

std::string NameOf(const testing::TestParamInfo<Fault>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Every, ExportFaultTest, testing::ValuesIn(kFaults), NameOf);

TEST(ExportFaults, ASwitcherMayHaveNoSlotsAtAll) {
  const FaultySwitcher switcher(R"({"slots": 0})");
  const CommandResult result = switcher.ExportWithFault({});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.err, HasSubstr("the switcher has 0 slots"));
}

TEST(ExportFaults, TellsWhyThePoolCannotKeepTheStill) {
  const FaultySwitcher switcher("{}");
  ASSERT_EQ(switcher.Export({"--name", "before", "--mode", "ntsc"}).exitCode, 0);
  // Folders where files are to be written.
  const std::filesystem::path staged = PathOf(switcher.Bench().Pool()) / "slot-02.ay10.new";
  std::filesystem::create_directories(staged / "in the way");
  const CommandResult result = switcher.Export({"--slot", "2", "--json"});
  EXPECT_EQ(result.exitCode, 1);
  const nlohmann::json error = nlohmann::json::parse(result.out)["error"];
  EXPECT_EQ(error["what"], simulator::PathText(staged));
  EXPECT_THAT(error["why"].get<std::string>(), testing::StartsWith("cannot be written: "));
  EXPECT_THAT(error["remedy"].get<std::string>(),
              HasSubstr("free some space or choose another --pool"));
  switcher.Bench().ExpectWholePool();
}

/// The scenarios that a document shows, in order.
std::vector<std::string> ScenariosIn(const std::string& document) {
  constexpr std::string_view kFence = "```json\n";
  std::vector<std::string> scenarios;
  for (std::size_t at = document.find(kFence); at != std::string::npos;
       at = document.find(kFence, at)) {
    at += kFence.size();
    scenarios.push_back(document.substr(at, document.find("```", at) - at));
  }
  return scenarios;
}

TEST(ExportFaults, PlaysTheScenariosOfTheDocument) {
  const std::vector<std::string> scenarios =
      ScenariosIn(test::ReadText(MIXDECKS_SOURCE_DIR "/docs/simulator.md"));
  ASSERT_GE(scenarios.size(), 3u);
  const FaultySwitcher first(scenarios[0]);
  EXPECT_EQ(first.ExportWithFault({}).exitCode, 0);
  EXPECT_THAT(first.ExportWithFault({"--slot", "3"}).err, HasSubstr("it disconnected while"));
  for (const std::string& scenario : scenarios)
    EXPECT_NO_THROW(simulator::ParseScenario(scenario, "document")) << scenario;
}

/// A point at which the switcher goes away, and whether the still can be in the pool by then.
struct Departure {
  const char* point;
  bool mayBeDone = false;
};

void PrintTo(const Departure& departure, std::ostream* stream) {
  *stream << departure.point;
}

class DisconnectTest : public testing::TestWithParam<Departure> {};

TEST_P(DisconnectTest, EndsTheExportAtOnceAndLeavesEverythingWhole) {
  const FaultySwitcher switcher(std::string("\"at\": \"") + GetParam().point +
                                "\", \"do\": \"disconnect\"");
  const bool needsPlayer = std::string_view(GetParam().point) == "SetSource";
  const CommandResult result = switcher.ExportWithFault(
      needsPlayer ? std::vector<std::string>{"--player", "1"} : std::vector<std::string>());
  const bool done = GetParam().mayBeDone && result.exitCode == 0;
  EXPECT_TRUE(done || result.exitCode == 1) << result.exitCode << result.out << result.err;
  EXPECT_THAT(result.err, Not(HasSubstr("internal fault")));
  EXPECT_THAT(result.err, Not(HasSubstr("--timeout")));
  switcher.Bench().ExpectWholePool();
  EXPECT_EQ(switcher.Export({}).exitCode, 0);
}

INSTANTIATE_TEST_SUITE_P(
    At, DisconnectTest,
    testing::Values(Departure{"QueryMediaPool"}, Departure{"GetStills"}, Departure{"GetCount"},
                    Departure{"CreateIterator"}, Departure{"Next"}, Departure{"AddCallback"},
                    Departure{"IsValid"}, Departure{"GetName"}, Departure{"GetVideoMode"},
                    Departure{"CreateFrame"}, Departure{"GetBytes"}, Departure{"QueryStillsLock"},
                    Departure{"Lock"}, Departure{"LockGranted"}, Departure{"SetPicture"},
                    Departure{"LockedReturned", true}, Departure{"UploadBegun"},
                    Departure{"UploadHalfway"}, Departure{"UploadReceived"},
                    Departure{"NotifyStills", true}, Departure{"SetSource", true}),
    [](const auto& departure) { return std::string(departure.param.point); });

}  // namespace
}  // namespace mixdecks
