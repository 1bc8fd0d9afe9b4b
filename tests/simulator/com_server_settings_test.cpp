// Where the COM server finds its pool, and what it leaves beside it.
#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/com_server_settings_win.h"
#include "simulator/pool_neighbours.h"
#include "tests/simulator/temporary_folder.h"

namespace mixdecks::simulator {
namespace {

namespace fs = std::filesystem;
using test::ReadText;
using test::WriteText;

class ComServerSettings : public testing::Test {
 protected:
  void SetUp() override {
    SetEnvironmentVariableW(L"MIXDECKS_SIMULATOR_POOL", (folder_ / "pool").c_str());
    SetEnvironmentVariableW(L"MIXDECKS_SIMULATOR_SCENARIO", nullptr);
  }
  void TearDown() override { SetEnvironmentVariableW(L"MIXDECKS_SIMULATOR_POOL", nullptr); }

  const test::TemporaryFolder folder_;
  const fs::path failure_ = folder_ / "simulator-error.txt";
  const fs::path violations_ = folder_ / "simulator-violations.txt";
};

TEST_F(ComServerSettings, TellBesideThePool) {
  ReportFailure("no luck");
  EXPECT_EQ(ReadText(failure_), "no luck\r\n");
  const std::string violations[] = {"one", "two"};
  ReportViolations(violations);
  EXPECT_EQ(ReadText(violations_), "one\r\ntwo\r\n");
}

TEST_F(ComServerSettings, ForgetWhatTheyToldWhenAllIsWell) {
  WriteText(failure_, "of yesterday");
  WriteText(violations_, "of yesterday");
  EXPECT_NE(MakeConfiguredSimulator(), nullptr);
  EXPECT_FALSE(fs::exists(failure_));
  EXPECT_FALSE(fs::exists(violations_));
}

TEST_F(ComServerSettings, KeepWhatTheyToldWhileItIsNot) {
  WriteText(failure_, "of yesterday");
  fs::create_directory(folder_ / "pool");
  WriteText(folder_ / "pool" / "letter.txt", "no pool");
  EXPECT_THROW(MakeConfiguredSimulator(), PoolError);
  EXPECT_EQ(ReadText(failure_), "of yesterday");
}

TEST_F(ComServerSettings, DoNotMindAReportThatSomebodyReads) {
  WriteText(failure_, "of yesterday");
  const HANDLE reader = CreateFileW(failure_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  EXPECT_NE(MakeConfiguredSimulator(), nullptr);
  CloseHandle(reader);
}

TEST_F(ComServerSettings, TakeAPoolWrittenWithItsSeparator) {
  const fs::path written = folder_ / "pool" / "";
  SetEnvironmentVariableW(L"MIXDECKS_SIMULATOR_POOL", written.c_str());
  WriteText(folder_ / "pool.scenario.json", R"({"slots": 3})");
  EXPECT_EQ(MakeConfiguredSimulator()->Contents().slots.size(), 3u);
  EXPECT_EQ(NeighboursOf(written).failure, failure_);
}

}  // namespace
}  // namespace mixdecks::simulator
