// Scenario files: what they say, and what is said about those that cannot be read.
#include "simulator/scenario.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/four_character_code.h"
#include "tests/simulator/temporary_folder.h"

namespace mixdecks::simulator {
namespace {

using std::chrono::milliseconds;
using test::TemporaryFolder;

std::string MessageFor(std::string_view json) {
  try {
    ParseScenario(json, "fault.json");
  } catch (const ScenarioError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(Scenario, OfNothingIsTheDefault) {
  const Scenario scenario = ParseScenario("{}", "empty.json");
  EXPECT_EQ(scenario.slots, std::nullopt);
  EXPECT_EQ(scenario.players, std::nullopt);
  EXPECT_EQ(scenario.mode, std::nullopt);
  EXPECT_EQ(scenario.service, ServicePresence::kPresent);
  EXPECT_EQ(scenario.uploadTime, milliseconds(0));
  EXPECT_TRUE(scenario.addresses.empty());
  EXPECT_TRUE(scenario.script.empty());
}

TEST(Scenario, SaysAllOfTheEquipment) {
  const Scenario scenario = ParseScenario(R"({
    "slots": 5, "players": 0, "mode": "4H59", "reportedMode": "zzzz",
    "addresses": ["10.0.0.1", "10.0.0.2"], "rowPadding": 64, "connectDelay": 1500,
    "refuseDelay": 20, "lockDelay": 30, "uploadTime": 400, "service": "null"})",
                                          "full.json");
  EXPECT_EQ(scenario.slots, 5u);
  EXPECT_EQ(scenario.players, 0u);
  EXPECT_EQ(scenario.mode, FourCharacterCode("4H59"));
  EXPECT_EQ(scenario.reportedMode, FourCharacterCode("zzzz"));
  EXPECT_EQ(scenario.addresses, (std::vector<std::u16string>{u"10.0.0.1", u"10.0.0.2"}));
  EXPECT_EQ(scenario.rowPadding, 64u);
  EXPECT_EQ(scenario.connectDelay, milliseconds(1500));
  EXPECT_EQ(scenario.refuseDelay, milliseconds(20));
  EXPECT_EQ(scenario.lockDelay, milliseconds(30));
  EXPECT_EQ(scenario.uploadTime, milliseconds(400));
  EXPECT_EQ(scenario.service, ServicePresence::kNull);
}

TEST(Scenario, CountsSlotsAndPlayersFromOne) {
  const Scenario scenario = ParseScenario(R"({"slots": 8, "script": [
    {"at": "GetName", "slot": 7, "do": "fail"},
    {"at": "Next", "player": 1, "do": "disconnect"},
    {"at": "UploadHalfway", "do": "rename", "target": 8, "name": "Ren\u00e9"}]})",
                                          "s.json");
  ASSERT_EQ(scenario.script.size(), 3u);
  EXPECT_EQ(scenario.script[0].at, Point::kGetName);
  EXPECT_EQ(scenario.script[0].number, 6u);
  EXPECT_EQ(scenario.script[0].action, Action::kFail);
  EXPECT_EQ(scenario.script[0].call, 1u);
  EXPECT_EQ(scenario.script[0].times, 1u);
  EXPECT_EQ(scenario.script[1].number, 0u);
  EXPECT_EQ(scenario.script[2].target, 7u);
  EXPECT_EQ(scenario.script[2].name, u"Ren\u00e9");
}

TEST(Scenario, SaysWhenAndHowOften) {
  const Scenario scenario = ParseScenario(R"({"script": [
    {"at": "ConnectTo", "do": "fail", "reason": "cfif", "times": 2},
    {"at": "GetVideoMode", "call": 2, "do": "mode", "mode": "ntsc", "times": "always"},
    {"at": "NotifyStills", "event": "cmpt", "do": "wait", "ms": 12}]})",
                                          "s.json");
  EXPECT_EQ(scenario.script[0].reason, FourCharacterCode("cfif"));
  EXPECT_EQ(scenario.script[0].times, 2u);
  EXPECT_EQ(scenario.script[1].call, 2u);
  EXPECT_EQ(scenario.script[1].times, ScriptStep::kAlways);
  EXPECT_EQ(scenario.script[1].mode, FourCharacterCode("ntsc"));
  EXPECT_EQ(scenario.script[2].event, FourCharacterCode("cmpt"));
  EXPECT_EQ(scenario.script[2].wait, milliseconds(12));
}

TEST(Scenario, KnowsEveryPoint) {
  for (const PointInfo& info : Points()) {
    const std::string json =
        R"({"script": [{"at": ")" + std::string(info.name) + R"(", "do": "disconnect"}]})";
    EXPECT_EQ(ParseScenario(json, "s.json").script[0].at, info.point) << info.name;
  }
}

struct Refusal {
  const char* json;
  const char* message;  ///< what the message begins with
};

class RefusedScenario : public testing::TestWithParam<Refusal> {};

TEST_P(RefusedScenario, TellsFileAndKeyAndWhatIsAllowed) {
  EXPECT_EQ(MessageFor(GetParam().json).substr(0, std::string(GetParam().message).size()),
            GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedScenario,
    testing::Values(
        Refusal{"", "fault.json: parse error at line 1, column 1"},
        Refusal{"{\n\"slots\": 3,,", "fault.json: parse error at line 2, column 12"},
        Refusal{"[]", "fault.json: must be an object, { … }"},
        Refusal{R"({"slotz": 3})",
                "fault.json: unknown key \"slotz\"; allowed here: slots, players, "},
        Refusal{R"({"slots": 1, "slots": 2})", "fault.json: the key \"slots\" comes twice"},
        Refusal{R"({"slots": -1})", "fault.json: slots: must be a whole number from 0 to 999"},
        Refusal{R"({"slots": 1.5})", "fault.json: slots: must be a whole number from 0 to 999"},
        Refusal{R"({"slots": 1000})", "fault.json: slots: must be a whole number from 0 to 999"},
        Refusal{R"({"slots": "5"})", "fault.json: slots: must be a whole number from 0 to 999"},
        Refusal{R"({"slots": 18446744073709551615})", "fault.json: slots: must be a whole number"},
        Refusal{R"({"players": 33})", "fault.json: players: must be a whole number from 0 to 32"},
        Refusal{R"({"mode": "1080"})", "fault.json: mode: must be one of ntsc, pall, ntsA, "},
        Refusal{R"({"mode": 5})", "fault.json: mode: must be a text in quotes"},
        Refusal{R"({"reportedMode": "toolong"})",
                "fault.json: reportedMode: must be a code of four ASCII characters"},
        Refusal{R"({"addresses": "1.2.3.4"})", "fault.json: addresses: must be a list, [ … ]"},
        Refusal{R"({"addresses": [4]})", "fault.json: addresses: each must be a text in quotes"},
        Refusal{R"({"service": "gone"})",
                "fault.json: service: must be one of present, absent, null"},
        Refusal{R"({"uploadTime": 600001})",
                "fault.json: uploadTime: must be a whole number from 0 to 600000"},
        Refusal{R"({"script": {}})", "fault.json: script: must be a list, [ … ]"},
        Refusal{R"({"script": [3]})", "fault.json: script[1]: must be an object, { … }"},
        Refusal{R"({"script": [{"do": "fail"}]})",
                "fault.json: script[1]: \"at\" is missing; it is a text"},
        Refusal{R"({"script": [{"at": "Getname", "do": "fail"}]})",
                "fault.json: script[1]: at: must be one of ConnectTo, Connected, QueryMediaPool, "},
        Refusal{R"({"script": [{"at": "GetName"}]})",
                "fault.json: script[1]: \"do\" is missing; it is a text"},
        Refusal{R"({"script": [{"at": "GetName", "do": "explode"}]})",
                "fault.json: script[1]: do: must be one of fail, cancel, disconnect, rename, "},
        Refusal{R"({"script": [{"at": "Unlock", "do": "fail"}]})",
                "fault.json: script[1]: do: Unlock cannot fail"},
        Refusal{R"({"script": [{"at": "LockGranted", "do": "fail"}]})",
                "fault.json: script[1]: do: LockGranted cannot fail"},
        Refusal{R"({"script": [{"at": "Lock", "do": "cancel"}]})",
                "fault.json: script[1]: do: only an upload can be cancelled, at UploadBegun, "},
        Refusal{
            R"({"script": [{"at": "Lock", "do": "fail", "reason": "cfif"}]})",
            "fault.json: script[1]: unknown key \"reason\"; allowed here: at, do, slot, call, "},
        Refusal{R"({"script": [{"at": "GetCount", "slot": 1, "do": "fail"}]})",
                "fault.json: script[1]: unknown key \"slot\"; allowed here: at, do, call, times"},
        Refusal{R"({"script": [{"at": "GetName", "slot": 0, "do": "fail"}]})",
                "fault.json: script[1]: slot: must be a whole number from 1 to 999"},
        Refusal{R"({"slots": 4, "script": [{"at": "GetName", "slot": 5, "do": "fail"}]})",
                "fault.json: script[1]: slot: must be a whole number from 1 to 4"},
        Refusal{R"({"script": [{"at": "GetName", "do": "fail", "times": "often"}]})",
                "fault.json: script[1]: times: must be a whole number or \"always\""},
        Refusal{R"({"script": [{"at": "GetName", "do": "fail", "call": 0}]})",
                "fault.json: script[1]: call: must be a whole number from 1 to 1000000"},
        Refusal{R"({"script": [{"at": "GetName", "do": "rename", "target": 2}]})",
                "fault.json: script[1]: \"name\" is missing; it is a text"},
        Refusal{R"({"script": [{"at": "GetName", "do": "mode", "mode": "none"}]})",
                "fault.json: script[1]: mode: must be one of ntsc"},
        Refusal{R"({"script": [{"at": "GetName", "do": "wait"}]})",
                "fault.json: script[1]: \"ms\" is missing; it is a whole number"},
        Refusal{R"({"script": [{"at": "NotifyStills", "event": "completed", "do": "wait"}]})",
                "fault.json: script[1]: event: must be a code of four ASCII characters"}));

TEST(Scenario, IsRefusedWhenItIsNestedBeyondReason) {
  const std::string deep = R"({"script": )" + std::string(200'000, '[');
  EXPECT_EQ(MessageFor(deep).substr(0, 23), "fault.json: parse error");
}

TEST(Scenario, ComesFromAFile) {
  const TemporaryFolder folder;
  test::WriteText(folder / "two.json", "\xEF\xBB\xBF{\"slots\": 2}");
  EXPECT_EQ(LoadScenario(folder / "two.json").slots, 2u) << "with a byte order mark";
}

TEST(Scenario, OfAFileThatCannotBeReadIsRefused) {
  const TemporaryFolder folder;
  for (const char* name : {"missing.json", "."}) {
    try {
      LoadScenario(folder / name);
      ADD_FAILURE() << name << " was read";
    } catch (const ScenarioError& error) {
      EXPECT_NE(std::string(error.what()).find(": cannot be read: "), std::string::npos)
          << error.what();
    }
  }
}

}  // namespace
}  // namespace mixdecks::simulator
