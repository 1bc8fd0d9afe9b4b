// What only the built command as a process can show: exit codes, standard input, Ctrl-C, and being
// killed at any moment.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "simulator/pool.h"
#include "tests/tools/child_process.h"
#include "tests/tools/command_bench.h"

namespace mixdecks {
namespace {

using test::Bytes;
using test::ChildProcess;
using testing::HasSubstr;

class ProcessTest : public testing::Test {
 protected:
  std::vector<std::string> ExportWords(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> words = {"export", picture_, "--pool", bench_.Pool()};
    words.insert(words.end(), more.begin(), more.end());
    return words;
  }
  std::string Errors() const { return test::ReadText(bench_.Path("errors")); }
  /// Waits until a started export has opened its pool.
  void WaitForPool() const {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!std::filesystem::exists(bench_.Pool() + "/pool.json")) {
      ASSERT_LT(std::chrono::steady_clock::now(), limit) << "no pool: " << Errors();
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }

  test::CommandBench bench_;
  std::string picture_ = bench_.Write("one.ppm", test::PnmFile('6', 2, 2, Bytes(12, 99)));
};

TEST_F(ProcessTest, EndsWithItsExitCodes) {
  EXPECT_EQ(ChildProcess(ExportWords({"--mode", "ntsc"}), "", "", "").Wait().exitCode, 0);
  EXPECT_EQ(ChildProcess({"export", "missing.png"}, "", "", "").Wait().exitCode, 1);
  EXPECT_EQ(ChildProcess({"export"}, "", "", "").Wait().exitCode, 2);
}

TEST_F(ProcessTest, ReadsStandardInput) {
  ChildProcess process({"export", "-", "--pool", bench_.Pool(), "--mode", "ntsc"}, picture_,
                       bench_.Path("output"), bench_.Path("errors"));
  EXPECT_EQ(process.Wait().exitCode, 0) << Errors();
  EXPECT_THAT(test::ReadText(bench_.Path("output")), HasSubstr("Exported \"still\""));
}

TEST_F(ProcessTest, ClosesInOrderOnCtrlC) {
  const std::string scenario = bench_.Write(
      "slow.json", R"({"mode": "ntsc", "connectDelay": 600000, "uploadTime": 600000})");
  ChildProcess process(ExportWords({"--scenario", scenario}), "", "", bench_.Path("errors"));
  WaitForPool();
  process.Signal(SIGINT);
  EXPECT_EQ(process.Wait().exitCode, 130);
  EXPECT_THAT(Errors(), HasSubstr("interrupted while"));
  bench_.ExpectWholePool();
  EXPECT_EQ(ChildProcess(ExportWords(), "", "", "").Wait().exitCode, 0);
}

TEST_F(ProcessTest, KeepsTwoExportsOutOfOnePool) {
  const std::string scenario = bench_.Write("slow.json", R"({"uploadTime": 600000})");
  ChildProcess first(ExportWords({"--scenario", scenario, "--mode", "ntsc"}), "", "", "");
  WaitForPool();
  ChildProcess second(ExportWords(), "", "", bench_.Path("errors"));
  EXPECT_EQ(second.Wait().exitCode, 1);
  EXPECT_THAT(Errors(), HasSubstr("in use"));
}

TEST_F(ProcessTest, LeavesAWholePoolWhenItIsKilledAtAnyMoment) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  ASSERT_EQ(ChildProcess(ExportWords({"--mode", "ntsc"}), "", "", "").Wait().exitCode, 0);
  unsigned killed = 0;
  for (int i = 0; i < 25; ++i) {
    ChildProcess process(ExportWords({"--name", std::to_string(i)}), "", "", "");
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 120'000));
    process.Signal(SIGKILL);
    if (process.Wait().signal == SIGKILL) ++killed;
    bench_.ExpectWholePool();
  }
  EXPECT_GT(killed, 0u);
  EXPECT_EQ(ChildProcess(ExportWords(), "", "", "").Wait().exitCode, 0);
}

}  // namespace
}  // namespace mixdecks
