// What other stations and the equipment do, where it is out of range, too late or impossible.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/four_character_code.h"
#include "tests/simulator/sample_frames.h"
#include "tests/simulator/temporary_folder.h"
#include "tests/simulator/test_client.h"

namespace mixdecks::simulator {
namespace {

using test::GreyFrame;
using test::kOtherSmallMode;
using test::kSmallMode;
using test::TemporaryFolder;
using test::TestClient;
using testing::HasSubstr;
using testing::IsEmpty;

Scenario Small() {
  Scenario scenario;
  scenario.mode = kSmallMode;
  scenario.slots = 3;
  return scenario;
}

TEST(Station, StoresFramesOfTheModesSizeAlone) {
  SwitcherSimulator simulator(Small());
  std::vector<std::uint8_t> frame = GreyFrame(kSmallMode, 100);
  frame.pop_back();
  EXPECT_THROW(simulator.StoreStill(0, u"", frame), PoolError);
  frame.resize(frame.size() + 2);
  EXPECT_THROW(simulator.StoreStill(0, u"", frame), PoolError);
  EXPECT_EQ(simulator.Contents().slots[0], std::nullopt);
}

TEST(Station, ReachesNoSlotThatDoesNotExist) {
  SwitcherSimulator simulator(Small());
  simulator.StoreStill(3, u"", GreyFrame(kSmallMode, 100));
  simulator.RenameStill(0xFFFFFFFF, u"");
  simulator.ClearStill(3);
  EXPECT_THAT(simulator.Frame(3), IsEmpty());
}

TEST(Station, ChangesToKnownModesAlone) {
  SwitcherSimulator simulator(Small());
  for (const std::uint32_t mode : {0U, FourCharacterCode("many"), 0xFFFFFFFF}) {
    simulator.ChangeVideoMode(mode);
    EXPECT_EQ(simulator.Contents().mode, kSmallMode);
  }
  simulator.ChangeVideoMode(kOtherSmallMode);
  EXPECT_EQ(simulator.Contents().mode, kOtherSmallMode);
}

TEST(Station, ComesTooLateAfterTheShutdown) {
  SwitcherSimulator simulator(Small());
  simulator.StoreStill(0, u"Kept", GreyFrame(kSmallMode, 100));
  const PoolContents contents = simulator.Contents();
  simulator.Shutdown();
  simulator.StoreStill(1, u"", GreyFrame(kSmallMode, 100));
  simulator.RenameStill(0, u"Renamed");
  simulator.ClearStill(0);
  simulator.ChangeVideoMode(kOtherSmallMode);
  EXPECT_EQ(simulator.Contents(), contents);
  ITMKSwitcherDiscovery* discovery = nullptr;
  EXPECT_EQ(simulator.CreateDiscovery(&discovery), kResultFail);
  EXPECT_EQ(discovery, nullptr);
}

TEST(Station, IsNoBusinessOfTheClientWhenTheDiskRefuses) {
  const TemporaryFolder home;
  Scenario scenario = Small();
  scenario.script = {
      {.at = Point::kGetCount, .action = Action::kChangeMode, .mode = kOtherSmallMode},
      {.at = Point::kUploadBegun, .action = Action::kClear, .target = 0}};
  SwitcherSimulator simulator(scenario, home / "pool");
  simulator.StoreStill(0, u"Theirs", GreyFrame(kSmallMode, 100));
  const PoolContents contents = simulator.Contents();
  // A folder where a file is to be written.
  std::filesystem::create_directory(home / "pool" / "index.html.new");
  TestClient client(simulator);
  ASSERT_EQ(client.Connect(), kResultOk);
  std::uint32_t count = 0;
  EXPECT_EQ(client.stills->GetCount(&count), kResultOk);
  EXPECT_EQ(client.Upload(1, u"Ours", GreyFrame(kSmallMode, 200)), "fail");
  EXPECT_EQ(simulator.Contents(), contents);
  EXPECT_THAT(simulator.PoolFailure(), HasSubstr("index.html.new: cannot be written"));
  EXPECT_THROW(simulator.ClearStill(0), PoolError);
  client.Close();
  simulator.Shutdown();
  EXPECT_THAT(simulator.Violations(), IsEmpty());
}

}  // namespace
}  // namespace mixdecks::simulator
